// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>

#include "document/GridDocument.h"
#include "document/window/CellHolder.h"
#include "settings/ColorTable.h"

class MainFrame;
class ctrlCell;

// Shows one open grid: its 81 cell views and its lines. Passes on to the main window what is entered. Lives
// in a sub-window of the main window's area. Public routines report failures through ShowError and end with
// the default result.
class wGrid : public QWidget, private CellHolder {
    Q_OBJECT

  public:
    // Shows this document, and keeps it. `frame` must outlive the window.
    wGrid(MainFrame& frame, std::unique_ptr<GridDocument> document, QWidget* parent = nullptr);
    ~wGrid() override;

    GridDocument& Document() const { return *document_; }
    clsGrid* Grid() const { return &document_->Grid(); }

    // The file that the grid belongs to, empty for none. Writing it names the window after the file.
    QString Path() const;
    void Path(const QString& path);
    QString Caption() const;

    bool NoAutoMask() const { return document_->NoAutoMask(); }
    void NoAutoMask(bool flag);

    // True when the whole file is on disk; only then the grid counts as not modified. An empty name is false
    // without a report.
    bool SaveFile(const QString& file);
    // To the grid's own file; asks first when somebody else changed that meanwhile.
    bool SaveOwnFile();

    // Recomputes candidates and shows them, and the palette, again.
    void UpdateGrid();
    // Shows the cells, and the palette, as the document has them.
    void ShowCells();
    void SolveGrid();
    // The number of values that differ from the solution of the givens; 0 when there is no solution.
    std::int16_t TestGrid();
    // Empties every cell that is not locked, after a question.
    void Reinit();
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
    // The window was closed and only waits for the event loop to delete it. See OpenGrid.
    bool Closed() const { return closed_; }
    // The keyboard goes to the current cell, at first to cell 1.
    void SetFocus();
    ctrlCell& KeyboardCell() const { return *(currentCell_ ? currentCell_ : cells_.front()); }
    // The current cell shows that something was refused.
    void FlashRefusal();

    // The view of cell 1..81. Error 9 out of bounds.
    ctrlCell& ctrlCells(int index) const;
    ctrlCell* CurrentCell() const { return currentCell_; }

  signals:
    // The window was closed; it is no open grid from now on.
    void Unloading(wGrid* grid);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    // The Tab key leaves the grid for what comes next to it in the main window.
    bool focusNextPrevChild(bool next) override;

  private:
    void Form_Load();
    void Form_Resize();
    void LayOut();
    bool Form_QueryUnload();
    bool SaveOnUnload();
    void Unload();
    void ShowCaption();
    // The Tab key stops at the current cell of the active grid alone.
    void TabStop(bool on);

    void ctrlCells_Click(ctrlCell& clicked) override;
    void ctrlCells_KeyDown(ctrlCell& cell, int keyCode, int shift) override;
    void ctrlCells_Keypress(ctrlCell& cell, int keyAscii) override;
    void ctrlCells_CandidateChosen(ctrlCell& cell, int digit) override;
    // Moves by rows and columns, as far as the grid goes; 0 when it does not. With `toEmpty` on to the next
    // empty cell.
    int StepFrom(int index, int rows, int columns, bool toEmpty) const;
    void StepInHistory(bool possible, int (GridDocument::*step)(), const char* refusal);

    MainFrame& frame_;
    // The views listen to its cells: they go first.
    std::unique_ptr<GridDocument> document_;
    std::array<ctrlCell*, 81> cells_{};
    std::array<QWidget*, 10> picV_{};
    std::array<QWidget*, 10> picH_{};
    ctrlCell* currentCell_ = nullptr;
    bool discarded_ = false;
    bool closed_ = false;
    bool laidOut_ = false;  // in the present size
};
