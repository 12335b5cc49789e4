// SPDX-License-Identifier: MIT
#include "document/GridDocument.h"

#include <array>

#include "diagnostics/ErrorHandling.h"
#include "document/GridFile.h"
#include "settings/FilesPaths.h"

void GridDocument::Path(const std::string& path) {
    path_ = path;
    caption_ = FilesPaths::NameOf(path);
    Changed();
}

void GridDocument::Caption(const std::string& caption) {
    caption_ = caption;
    Changed();
}

GridStanding GridDocument::Standing() const {
    GridStanding standing{0, false};
    std::array<unsigned, 30> seen{};  // the digits met in rows 1..9, columns 11..19, boxes 21..29
    for (int i = 1; i <= 81; ++i) {
        const clsCell& cell = *grid_.Cells(i);
        if (cell.Value() == 0) {
            ++standing.emptyCells;
            continue;
        }
        const unsigned digit = 1U << cell.Value();
        for (const int unit : {int{cell.Row()}, 10 + cell.Col(), 20 + cell.SubGrid()}) {
            unsigned& met = seen[static_cast<std::size_t>(unit)];
            if ((met & digit) != 0) standing.digitsRepeat = true;
            met |= digit;
        }
    }
    return standing;
}

bool GridDocument::LoadFile(const std::string& file) {
    platform::FileStamp stamp;
    const auto states = ReadGridFile(file, stamp);
    if (!states) return false;
    stamp_ = stamp;
    written_ = false;
    Replace(*states);
    grid_.Modified(false);
    history_.MarkSaved();
    return true;
}

// The first save of a grid is followed by a second one at once. Where that finds what the first has put on
// disk nobody waits for the disk again.
bool GridDocument::SaveFile(const std::string& file) {
    const GridStates states = States();
    if (!(written_ && HoldsStates(file, states, *stamp_))) {
        platform::FileStamp stamp;
        if (!WriteGridFile(file, states, stamp)) return false;
        stamp_ = stamp;
        written_ = true;
    }
    grid_.Modified(false);
    history_.MarkSaved();
    Changed();
    return true;
}

bool GridDocument::FileChanged() const {
    const auto found = platform::FileStamp::Of(path_);
    return found && found != stamp_;
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

void GridDocument::RegUndo(const std::string& record) {
    const CellChange change = ParseChange(record);
    history_.Register({&change, 1});
    Changed();
}

int GridDocument::Undo() {
    return Restored(history_.StepBack(), &CellChange::before);
}

int GridDocument::Redo() {
    return Restored(history_.StepForward(), &CellChange::after);
}

GridText::Values GridDocument::Values() const {
    GridText::Values values{};
    for (int i = 1; i <= 81; ++i) values[static_cast<std::size_t>(i - 1)] = grid_.Cells(i)->Value();
    return values;
}

void GridDocument::Become(const GridText::Values& givens) {
    GridStates states;
    for (std::size_t i = 0; i < givens.size(); ++i) states[i] = {givens[i], givens[i] != 0, 0};
    Replace(states);
    grid_.Modified(true);
}

void GridDocument::CopyFrom(const GridDocument& source) {
    Replace(source.States());
}

void GridDocument::Reinit() {
    const GridStates before = States();
    for (int i = 1; i <= 81; ++i) {
        if (!Cell(i).Locked()) ApplyState(Cell(i), {});
    }
    grid_.ManageAvails();
    RecordSince(before);
}

GridSnapshot GridDocument::Snapshot() const {
    return {path_, caption_, stamp_, States(), history_};
}

void GridDocument::Resume(GridSnapshot snapshot) {
    path_ = std::move(snapshot.path);
    caption_ = std::move(snapshot.caption);
    stamp_ = snapshot.stamp;
    written_ = false;
    Replace(snapshot.states);
    history_ = std::move(snapshot.history);
    grid_.Modified(true);
    Changed();
}

bool GridDocument::CreateGrid(platform::ProgressWindow* progress) {
    auto generated = std::make_unique<clsGrid>();
    if (!generated->CreateGrid(progress)) return false;
    GridStates givens;
    for (int i = 1; i <= 81; ++i) {
        const clsCell& from = *generated->Cells(i);
        if (from.Locked()) givens[static_cast<std::size_t>(i - 1)] = {from.Value(), true, 0};
    }
    Replace(givens);
    solution_ = std::move(generated);
    return true;
}

void GridDocument::SolveGrid(platform::ProgressWindow* progress) {
    const GridStates before = States();
    grid_.SolveGrid(progress);
    RecordSince(before);
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

GridStates GridDocument::States() const {
    GridStates states;
    for (int i = 1; i <= 81; ++i) states[static_cast<std::size_t>(i - 1)] = StateOf(*grid_.Cells(i));
    return states;
}

void GridDocument::Change(int index, const CellState& after) {
    clsCell& cell = Cell(index);
    const CellChange change{index, StateOf(cell), after};
    history_.Register({&change, 1});  // may lack the memory, so it goes first
    ApplyState(cell, after);
    Changed();
}

void GridDocument::RecordSince(const GridStates& before) {
    std::vector<CellChange> step;
    for (int i = 1; i <= 81; ++i) {
        const CellState& old = before[static_cast<std::size_t>(i - 1)];
        const CellState now = StateOf(Cell(i));
        if (now != old) step.push_back({i, old, now});
    }
    history_.Register(step);
    Changed();
}

void GridDocument::Replace(const GridStates& states) {
    for (int i = 1; i <= 81; ++i) ApplyState(Cell(i), states[static_cast<std::size_t>(i - 1)]);
    grid_.ManageAvails();
    history_ = {};
    history_.ForgetSaved();
    Changed();
}

int GridDocument::Restored(HistoryStep step, CellState CellChange::*state) {
    for (const CellChange& change : step) ApplyState(Cell(change.index), change.*state);
    grid_.ManageAvails();
    if (history_.AtSaved()) grid_.Modified(false);
    Changed();
    return step.size() == 1 ? step.front().index : 0;
}

void GridDocument::Changed() const {
    if (changed_) changed_();
}
