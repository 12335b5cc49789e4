#include "document/GridDocument.h"

#include "diagnostics/ErrorHandling.h"
#include "document/GridFile.h"
#include "settings/FilesPaths.h"

void GridDocument::Path(const std::string& path) {
    path_ = path;
    caption_ = FilesPaths::NameOf(path);
}

bool GridDocument::IsComplete() const {
    for (int i = 1; i <= 81; ++i) {
        if (grid_.Cells(i)->Value() == 0) return false;
    }
    return true;
}

bool GridDocument::LoadFile(const std::string& file) {
    const auto states = ReadGridFile(file);
    if (!states) return false;
    for (int i = 1; i <= 81; ++i) ApplyState(Cell(i), (*states)[static_cast<std::size_t>(i - 1)]);
    grid_.Modified(false);
    history_.Clear();
    grid_.ManageAvails();
    return true;
}

bool GridDocument::SaveFile(const std::string& file) {
    GridStates states;
    for (int i = 1; i <= 81; ++i) states[static_cast<std::size_t>(i - 1)] = StateOf(Cell(i));
    if (!WriteGridFile(file, states)) return false;
    grid_.Modified(false);
    return true;
}

bool GridDocument::EnterValue(int index, int digit, const EntryModes& modes) {
    if (digit < 0 || digit > 9) throw RuntimeError(ErrorNumber::OutOfBounds);
    const clsCell& cell = Cell(index);
    if (cell.Locked() && !modes.initialisation) return false;
    if (digit != 0 && !modes.masksHidden && (!cell.Avail(digit) || cell.Inhib(digit))) return false;
    CellState after = StateOf(cell);
    after.value = static_cast<std::uint8_t>(digit);
    after.locked = modes.initialisation && digit != 0;
    Change(index, after);
    grid_.ManageAvails();
    return true;
}

void GridDocument::SwitchExclusion(int index, int digit) {
    if (digit < 0 || digit > 9) throw RuntimeError(ErrorNumber::OutOfBounds);
    CellState after = StateOf(Cell(index));
    after.mask = digit == 0 ? std::uint16_t{0} : static_cast<std::uint16_t>(after.mask ^ 1 << digit);
    Change(index, after);
}

int GridDocument::Undo() {
    const CellChange& change = history_.StepBack();
    return Restore(change.index, change.before);
}

int GridDocument::Redo() {
    const CellChange& change = history_.StepForward();
    return Restore(change.index, change.after);
}

void GridDocument::CopyFrom(const GridDocument& source) {
    for (int i = 1; i <= 81; ++i) ApplyState(Cell(i), StateOf(*source.grid_.Cells(i)));
    grid_.ManageAvails();
}

void GridDocument::Reinit() {
    for (int i = 1; i <= 81; ++i) {
        if (!Cell(i).Locked()) ApplyState(Cell(i), {});
    }
    grid_.ManageAvails();
}

bool GridDocument::CreateGrid(platform::ProgressWindow* progress) {
    auto generated = std::make_unique<clsGrid>();
    if (!generated->CreateGrid(progress)) return false;
    for (int i = 1; i <= 81; ++i) {
        const clsCell& from = *generated->Cells(i);
        ApplyState(Cell(i), from.Locked() ? CellState{from.Value(), true, 0} : CellState{});
    }
    solution_ = std::move(generated);
    grid_.ManageAvails();
    return true;
}

void GridDocument::SolveGrid(platform::ProgressWindow* progress) {
    grid_.SolveGrid(progress);
}

// The solution keeps the givens that it was solved from.
bool GridDocument::SolutionKnown() const {
    if (!solution_ || !solution_->Solved()) return false;
    for (int i = 1; i <= 81; ++i) {
        const clsCell& cell = *grid_.Cells(i);
        const clsCell& solved = *solution_->Cells(i);
        if (cell.Locked() != solved.Locked()) return false;
        if (cell.Locked() && cell.Value() != solved.Value()) return false;
    }
    return true;
}

void GridDocument::FindSolution(platform::ProgressWindow* progress) {
    solution_ = std::make_unique<clsGrid>();
    solution_->CopyFrom(grid_);
    solution_->SolveGrid(progress);
}

std::int16_t GridDocument::WrongValues() const {
    std::int16_t wrong = 0;
    if (!SolutionKnown()) return wrong;
    for (int i = 1; i <= 81; ++i) {
        const std::uint8_t value = grid_.Cells(i)->Value();
        if (value != 0 && value != solution_->Cells(i)->Value()) ++wrong;
    }
    return wrong;
}

clsCell& GridDocument::Cell(int index) {
    clsCell* cell = grid_.Cells(index);
    if (!cell) throw RuntimeError(ErrorNumber::OutOfBounds);
    return *cell;
}

void GridDocument::Change(int index, const CellState& after) {
    clsCell& cell = Cell(index);
    const CellState before = StateOf(cell);
    ApplyState(cell, after);
    history_.Register({index, before, after});
}

int GridDocument::Restore(int index, const CellState& state) {
    ApplyState(Cell(index), state);
    grid_.ManageAvails();
    return index;
}
