#pragma once

#include <QPointer>
#include <string>
#include <string_view>
#include <vector>

#include "document/CellState.h"
#include "document/MainFrame.h"
#include "document/ctrlCell.h"
#include "document/wGrid.h"
#include "engine/clsGrid.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// A main window's part without a main window: modes are plain fields, calls are recorded.
class FakeFrame : public MainFrame {
  public:
    bool InitialisationMode() const override { return false; }
    bool MasksHidden() const override { return hidden; }
    bool ManualMasks() const override { return manual; }
    ctrlCell* Cell() const override { return cell; }
    void Cell(ctrlCell* current) override { cell = current; }
    void cmdValue_Click(int index) override { entered.push_back(index); }
    void UpdateColors() override { ++refreshes; }
    void ShowDocument(const QString& path, const QString& caption) override {
        shown = (path + "|" + caption).toStdString();
    }

    bool hidden = false;
    bool manual = false;
    ctrlCell* cell = nullptr;
    std::vector<int> entered;
    int refreshes = 0;
    std::string shown;
};

// A full grid without a clash, by formula: cell 1 holds 1, cell 2 holds 2.
inline int SolutionAt(int index) {
    const int row = (index - 1) / 9;
    const int column = (index - 1) % 9;
    return (row * 3 + row / 3 + column) % 9 + 1;
}

// A shown grid window, closed without a question at the end.
class GridWindow : public testing::Test {
  protected:
    GridWindow() : grid(new wGrid(frame)) { grid->show(); }
    ~GridWindow() override { delete grid; }

    clsCell& Cell(int index) const { return *grid->Grid()->Cells(index); }
    // "value|locked|mask" of a cell.
    std::string State(int index) const { return RecordText(Cell(index)); }
    void Set(int index, std::string_view record) const {
        const CellState state = ParseRecord(record);
        grid->ctrlCells(index).Value(state.value);
        grid->ctrlCells(index).Locked(state.locked);
        ApplyExclusionMask(Cell(index), state.mask);
    }
    // Givens are the solution's digits, but for the cells first..last, which stay empty.
    void SetPuzzle(int first, int last) const {
        for (int i = 1; i <= 81; ++i) {
            if (i < first || i > last) Set(i, std::to_string(SolutionAt(i)) + "|1|0");
        }
        grid->UpdateGrid();
    }
    // Changes a cell as the palette does: the history gets the states around the change.
    void Enter(int index, std::string_view record) const {
        const std::string before = CellStateText(Cell(index));
        Set(index, record);
        grid->RegUndo(before + "|" + CellStateText(Cell(index)));
    }
    std::string LastBox() const { return host.boxes.empty() ? "" : host.boxes.back().text; }

    ScriptedHost host;
    FakeFrame frame;
    QPointer<wGrid> grid;
};
