// What the grid window asks of files and of the engine.

#include "diagnostics/ErrorHandling.h"
#include "document/BusyGuard.h"
#include "document/CellState.h"
#include "document/GridFile.h"
#include "document/MainFrame.h"
#include "document/ctrlCell.h"
#include "document/wGrid.h"
#include "engine/clsGrid.h"
#include "platform/Host.h"

bool wGrid::SaveFile(const QString& file) {
    if (file.isEmpty()) return false;
    return Trap("wGrid", "SaveFile", [&] {
        GridFileWriter writer;
        for (int i = 1; i <= 81; ++i) writer.Put(*grid_->Cells(i));
        if (!writer.Write(file.toStdString())) throw RuntimeError(ErrorNumber::FileAccess);
        grid_->Modified(false);
        return true;
    });
}

bool wGrid::LoadFile(const QString& file) {
    GridFileReader reader;
    if (!reader.Open(file.toStdString())) return false;
    const bool hidden = frame_.MasksHidden();
    for (int i = 1; i <= 81; ++i) {
        const CellState state = ParseRecord(reader.Record(i));
        ctrlCell& cell = ctrlCells(i);
        cell.Value(state.value);
        cell.Locked(state.locked);
        ApplyExclusionMask(*cell.mCell(), state.mask);
        cell.NoMask(hidden);
        cell.ManageMasks();
        cell.mCell()->Modified(false);
    }
    history_.Clear();
    UpdateGrid();
    return true;
}

bool wGrid::CreateGrid() {
    return Trap("wGrid", "CreateGrid", [this] {
        auto emptyGrid = std::make_unique<clsGrid>();
        emptyGrid->NoAutoMask(frame_.ManualMasks());
        for (ctrlCell* cell : cells_) cell->mCell(nullptr);
        grid_ = std::move(emptyGrid);
        BindCells();
        solvedCopy_ = std::make_unique<clsGrid>();
        if (!solvedCopy_->CreateGrid()) return false;
        for (int i = 1; i <= 81; ++i) {
            const clsCell& generated = *solvedCopy_->Cells(i);
            if (!generated.Locked()) continue;
            ctrlCells(i).Locked(true);
            ctrlCells(i).Value(generated.Value());
        }
        UpdateGrid();
        return true;
    });
}

void wGrid::SolveGrid() {
    Trap("wGrid", "SolveGrid", [this] {
        if (RefusedWhileBusy()) return;
        {
            const BusyGuard run(this);
            platform::TheHost().pointer->Shape(platform::PointerShape::Hourglass);
            grid_->SolveGrid();
        }
        UpdateGrid();
    });
}

std::int16_t wGrid::TestGrid() {
    return Trap("wGrid", "TestGrid", [this]() -> std::int16_t {
        if (RefusedWhileBusy()) return 0;
        if (!solvedCopy_) solvedCopy_ = std::make_unique<clsGrid>();
        if (!solvedCopy_->Solved()) {
            for (int i = 1; i <= 81; ++i) {
                solvedCopy_->Cells(i)->Value(grid_->Cells(i)->Value());
                solvedCopy_->Cells(i)->Locked(grid_->Cells(i)->Locked());
            }
            const BusyGuard run(this);
            platform::TheHost().pointer->Shape(platform::PointerShape::Hourglass);
            solvedCopy_->SolveGrid();
        }
        // A grid without a solution has no wrong values either: the count stays 0.
        std::int16_t wrong = 0;
        if (!solvedCopy_->Solved()) return wrong;
        for (int i = 1; i <= 81; ++i) {
            const std::uint8_t value = grid_->Cells(i)->Value();
            if (value != 0 && value != solvedCopy_->Cells(i)->Value()) ++wrong;
        }
        return wrong;
    });
}
