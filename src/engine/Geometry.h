// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>

// The grid's shape. Cells are 1..81 row-major; rows, columns and boxes 1..9.
namespace Global {

// An array indexed by int, as cells, units and digits are; the bounds are asserted only: what comes from
// outside was checked before.
template <class T, int Size>
struct EngineArray {
    T entries[Size]{};
    constexpr T& operator[](int index) {
        assert(index >= 0 && index < Size);
        return entries[index];
    }
    constexpr const T& operator[](int index) const {
        assert(index >= 0 && index < Size);
        return entries[index];
    }
};

struct CellUnits {
    int row = 0;
    int col = 0;
    int box = 0;
};

constexpr EngineArray<CellUnits, 82> MakeUnits() {
    EngineArray<CellUnits, 82> units;
    for (int cell = 1; cell <= 81; ++cell) {
        const int row = (cell - 1) / 9 + 1;
        const int col = (cell - 1) % 9 + 1;
        units[cell] = {row, col, (row - 1) / 3 * 3 + (col - 1) / 3 + 1};
    }
    return units;
}

inline constexpr EngineArray<CellUnits, 82> unitsOf = MakeUnits();

// Position 1..9, row-major inside the box.
constexpr int CellOfBox(int box, int position) {
    const int row = (box - 1) / 3 * 3 + (position - 1) / 3;
    const int col = (box - 1) % 3 * 3 + (position - 1) % 3;
    return row * 9 + col + 1;
}

// One of the other two lines of the same three; step 1 or 2.
constexpr int NeighbourLine(int line, int step) {
    return (line - 1) / 3 * 3 + (line - 1 + step) % 3 + 1;
}

}  // namespace Global
