// SPDX-License-Identifier: MIT
#include "engine/clsGrid.h"

#include <algorithm>
#include <string>

#include "diagnostics/ErrorHandling.h"
#include "engine/CellText.h"
#include "engine/EngineRun.h"
#include "engine/Geometry.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "settings/Conversions.h"

namespace {

std::uint8_t ValueOfText(const std::string& text) {
    if (text.empty()) return 0;
    return text.size() == 1 ? static_cast<std::uint8_t>(Global::IntegerOf(text)) : Conversions::ToByte(text);
}

// One bit for each of the 27 units; those of the cell.
constexpr Global::EngineArray<std::uint32_t, 82> MakeUnitBits() {
    Global::EngineArray<std::uint32_t, 82> bits;
    for (int cell = 1; cell <= 81; ++cell) {
        const auto [row, col, box] = Global::unitsOf[cell];
        bits[cell] = 1U << (row - 1) | 1U << (col + 8) | 1U << (box + 17);
    }
    return bits;
}

constexpr Global::EngineArray<std::uint32_t, 82> unitBits = MakeUnitBits();

}  // namespace

clsGrid::clsGrid() {
    for (int index = 1; index <= 81; ++index) {
        clsCell& cell = *Cells(index);
        cell.GridIndex(static_cast<std::uint8_t>(index));
        cell.Row(static_cast<std::uint8_t>(Global::RowOf(index)));
        cell.Col(static_cast<std::uint8_t>(Global::ColOf(index)));
        cell.SubGrid(static_cast<std::uint8_t>(Global::BoxOf(index)));
    }
}

void clsGrid::NoAutoMask(bool flag) {
    noAutoMask_ = flag;
    ManageAvails();
}

clsCell* clsGrid::Cells(int index) {
    return index < 1 || index > 81 ? nullptr : &cells_[static_cast<std::size_t>(index - 1)];
}

const clsCell* clsGrid::Cells(int index) const {
    return index < 1 || index > 81 ? nullptr : &cells_[static_cast<std::size_t>(index - 1)];
}

bool clsGrid::Modified() const {
    return std::any_of(cells_.begin(), cells_.end(), [](const clsCell& cell) { return cell.Modified(); });
}

void clsGrid::Modified(bool flag) {
    for (clsCell& cell : cells_) cell.Modified(flag);
}

bool clsGrid::Complete() const {
    return solved_ ||
           std::none_of(cells_.begin(), cells_.end(), [](const clsCell& cell) { return cell.Value() == 0; });
}

bool clsGrid::Verified() const {
    Global::EngineArray<std::uint32_t, 256> unitsWith;  // by value
    for (int index = 1; index <= 81; ++index) {
        const std::uint8_t value = Cells(index)->Value();
        if (value == 0 || (unitsWith[value] & unitBits[index]) != 0) return false;
        unitsWith[value] |= unitBits[index];
    }
    return true;
}

bool clsGrid::SolveGrid(platform::ProgressWindow* progress) {
    return Trap("clsGrid", "SolveGrid", [this, progress] {
        RangeClass puzzle;
        RangeClass working;
        for (const clsCell& cell : cells_) {
            if (cell.Locked()) puzzle.Cells(cell.Row(), cell.Col()).Value = std::to_string(cell.Value());
        }
        Global::EngineRun(puzzle, working, progress).SolveFromRanges();
        for (clsCell& cell : cells_) cell.Value(ValueOfText(working.Cells(cell.Row(), cell.Col()).Value));
        ManageAvails();
        solved_ = Verified();
        return false;
    });
}

bool clsGrid::CreateGrid(platform::ProgressWindow* progress) {
    return Trap("clsGrid", "CreateGrid", [this, progress] {
        RangeClass puzzle;
        RangeClass working;
        if (!Global::EngineRun(puzzle, working, progress).CreateGrid()) return false;
        for (clsCell& cell : cells_) {
            cell.Value(ValueOfText(working.Cells(cell.Row(), cell.Col()).Value));
            cell.Locked(puzzle.Cells(cell.Row(), cell.Col()).Locked);
        }
        ManageAvails();
        solved_ = true;
        return true;
    });
}

void clsGrid::ManageAvails() {
    Global::EngineArray<std::uint32_t, 256> unitsWith;  // by value
    if (!noAutoMask_)
        for (int index = 1; index <= 81; ++index) unitsWith[Cells(index)->Value()] |= unitBits[index];
    for (int index = 1; index <= 81; ++index) {
        unsigned available = 0;
        for (int k = 1; k <= 9; ++k) available |= (unitsWith[k] & unitBits[index]) == 0 ? 1U << k : 0U;
        Cells(index)->Avails(available);
    }
}

void clsGrid::CopyFrom(const clsGrid& source) {
    Trap("clsGrid", "CopyFrom", [this, &source] {
        for (int index = 1; index <= 81; ++index) {
            const clsCell& from = *source.Cells(index);
            clsCell& to = *Cells(index);
            to.Value(from.Value());
            to.Locked(from.Locked());
            to.Modified(from.Modified());
            for (int k = 1; k <= 9; ++k) to.Inhib(k, from.Inhib(k));
        }
        ManageAvails();
    });
}
