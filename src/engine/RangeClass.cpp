// SPDX-License-Identifier: MIT
#include "engine/RangeClass.h"

#include "engine/Tables.h"

namespace {

std::size_t RangeSlot(int row, int col) {
    Global::CheckIndex(row, 1, 9);
    Global::CheckIndex(col, 1, 9);
    return static_cast<std::size_t>((row - 1) * 9 + col - 1);
}

}  // namespace

void clsXlCellClass::Copy(clsXlCellClass& target) const {
    Font.Copy(target.Font);
    target.Locked = Locked;
    target.Value = Value;
}

clsXlCellClass& RangeClass::Cells(int row, int col) {
    return cells_[RangeSlot(row, col)];
}

const clsXlCellClass& RangeClass::Cells(int row, int col) const {
    return cells_[RangeSlot(row, col)];
}

void RangeClass::ClearContents() {
    for (clsXlCellClass& cell : cells_) cell.Value.clear();
}

void RangeClass::Copy(RangeClass& target) const {
    for (std::size_t slot = 0; slot < cells_.size(); ++slot) cells_[slot].Copy(target.cells_[slot]);
}
