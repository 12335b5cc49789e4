#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "document/UndoHistory.h"
#include "settings/ColorTable.h"

class MainFrame;
class clsGrid;
class ctrlCell;

// One open grid: its model, its 81 cell views, its lines and its history. Lives in a sub-window of the main
// window's area. Public routines report failures through ShowError and end with the default result.
class wGrid : public QWidget {
    Q_OBJECT

  public:
    // An empty grid. `frame` must outlive the window.
    explicit wGrid(MainFrame& frame, QWidget* parent = nullptr);
    ~wGrid() override;

    clsGrid* Grid() const { return grid_.get(); }

    // The file that the grid belongs to, empty for none. Writing it names the window after the file.
    QString Path() const { return path_; }
    void Path(const QString& path);
    QString Caption() const { return caption_; }
    void Caption(const QString& caption);

    bool NoAutoMask() const;
    void NoAutoMask(bool flag);

    // True when the whole file is on disk; only then the grid counts as not modified. An empty name is false
    // without a report.
    bool SaveFile(const QString& file);
    // True when all 81 records were applied. False when there is no such file or it cannot be read. A record
    // that does not convert throws its RuntimeError (6, 9 or 13); cells before it keep what was loaded.
    bool LoadFile(const QString& file);

    // Recomputes candidates and shows them, and the palette, again.
    void UpdateGrid();
    // Replaces the grid by the givens of a generated one; false, and an empty grid, when that failed. A
    // BusyGuard must be active.
    bool CreateGrid();
    void SolveGrid();
    // The number of values that differ from the solution of the givens; 0 when there is no solution.
    std::int16_t TestGrid();
    bool IsComplete() const;
    void CopyFrom(const wGrid& source, const QString& caption);
    // Empties every cell that is not locked, after a question.
    void Reinit();

    // History records are the cell state before and after a change, joined by "|".
    void RegUndo(const std::string& record);
    void Undo();
    void Redo();

    void PrintGrid();

    // ---- For the main window.
    void Form_Activate();
    void Form_Deactivate();
    // Recolours cells, lines and background.
    void SetColors(const ColorTable::Colors& colors);
    // Closing will ask nothing: the grid is thrown away.
    void Discard() { discarded_ = true; }
    // Asks about unsaved changes. False: the window must stay open.
    bool AskBeforeUnload();
    // The keyboard goes to the current cell.
    void SetFocus();

    // The view of cell 1..81. Error 9 out of bounds.
    ctrlCell& ctrlCells(int index) const;
    ctrlCell* CurrentCell() const { return currentCell_; }

  signals:
    // The window is about to go for good.
    void Unloading(wGrid* grid);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Form_Load();
    void Form_Resize();
    void BindCells();
    bool Form_QueryUnload();
    bool SaveOnUnload();

    void ctrlCells_Click(int index);
    void ctrlCells_KeyDown(int index, int keyCode);
    void ctrlCells_Keypress(int index, int keyAscii);
    void MoveTo(int index);

    void Apply(const std::string& record, int firstField);

    MainFrame& frame_;
    // The views listen to the cells of the model: they go first.
    std::unique_ptr<clsGrid> grid_;
    std::unique_ptr<clsGrid> solvedCopy_;
    std::array<ctrlCell*, 81> cells_{};
    std::array<QWidget*, 10> picV_{};
    std::array<QWidget*, 10> picH_{};
    ctrlCell* currentCell_ = nullptr;
    UndoHistory history_;
    QString path_;
    QString caption_;
    bool discarded_ = false;
};
