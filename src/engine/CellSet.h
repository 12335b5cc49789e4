#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

// Sets of cells and the grid's shape, laid out for speed. Cells are 1..81 row-major, units and digits 1..9.
namespace Global {

// An array indexed by int, as digits and cells are; the bounds are asserted only: what comes from outside
// was checked before.
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

// A set of cells, one word for each band of three rows: bit (cell - 1) % 27 of word (cell - 1) / 27. The
// fourth word stays 0; with it four words are one vector register.
struct CellSet {
    std::uint32_t bands[4]{};

    constexpr void Add(int cell) { bands[(cell - 1) / 27] |= 1U << (cell - 1) % 27; }
    constexpr bool Empty() const { return (bands[0] | bands[1] | bands[2]) == 0; }
    constexpr int Size() const { return std::popcount(UpperBands()) + std::popcount(bands[2]); }
    // In cell order, position 1..Size(); First() is At(1).
    constexpr int At(int position) const {
        const std::uint64_t upper = UpperBands();
        const int upperSize = std::popcount(upper);
        if (position <= upperSize) return NthBit(upper, position) + 1;
        return NthBit(bands[2], position - upperSize) + 55;
    }
    constexpr int First() const {
        assert(!Empty());
        const std::uint64_t upper = UpperBands();
        return upper != 0 ? std::countr_zero(upper) + 1 : std::countr_zero(bands[2]) + 55;
    }

    // Word by word: op(band of one, band of other).
    template <class Op>
    static constexpr CellSet Combine(const CellSet& one, const CellSet& other, Op op) {
        CellSet result;
        for (int band = 0; band < 4; ++band) result.bands[band] = op(one.bands[band], other.bands[band]);
        return result;
    }
    friend constexpr CellSet operator&(const CellSet& one, const CellSet& other) {
        return Combine(one, other, [](std::uint32_t a, std::uint32_t b) { return a & b; });
    }
    friend constexpr CellSet operator|(const CellSet& one, const CellSet& other) {
        return Combine(one, other, [](std::uint32_t a, std::uint32_t b) { return a | b; });
    }
    friend constexpr CellSet operator^(const CellSet& one, const CellSet& other) {
        return Combine(one, other, [](std::uint32_t a, std::uint32_t b) { return a ^ b; });
    }
    friend constexpr CellSet operator-(const CellSet& one, const CellSet& other) {
        return Combine(one, other, [](std::uint32_t a, std::uint32_t b) { return a & ~b; });
    }

  private:
    constexpr std::uint64_t UpperBands() const { return bands[0] | std::uint64_t{bands[1]} << 27; }
    static constexpr int NthBit(std::uint64_t bits, int n) {
        while (--n > 0) bits &= bits - 1;
        return std::countr_zero(bits);
    }
};

// Cells that are excluded together, as a set and one by one.
template <int Size>
struct Region {
    CellSet set;
    EngineArray<std::uint8_t, Size> cells;
};

struct CellUnits {
    int row = 0;
    int col = 0;
    int box = 0;
    int otherRows[2] = {};  // of the band
    int otherCols[2] = {};  // of the stack
};

// Everything about the grid's shape that is looked up by cell, by unit or by unit and position.
struct Geometry {
    EngineArray<CellUnits, 82> units;
    EngineArray<Region<9>, 10> rows, cols, boxes;
    EngineArray<Region<21>, 82> reach;  // the cell and all that share a unit with it
    EngineArray<CellSet, 82> alone;
};

template <int Size, class Belongs>
constexpr Region<Size> MakeRegion(Belongs belongs) {
    Region<Size> region;
    int count = 0;
    for (int cell = 1; cell <= 81; ++cell)
        if (belongs(cell)) {
            region.set.Add(cell);
            region.cells[count++] = static_cast<std::uint8_t>(cell);
        }
    return region;
}

// One of the other two lines of the same three.
constexpr int Neighbour(int line, int step) {
    return (line - 1) / 3 * 3 + (line - 1 + step) % 3 + 1;
}

constexpr Geometry MakeGeometry() {
    Geometry result;
    auto& units = result.units;
    for (int cell = 1; cell <= 81; ++cell) {
        const int row = (cell - 1) / 9 + 1;
        const int col = (cell - 1) % 9 + 1;
        const int box = (row - 1) / 3 * 3 + (col - 1) / 3 + 1;
        units[cell] = {
            row, col, box, {Neighbour(row, 1), Neighbour(row, 2)}, {Neighbour(col, 1), Neighbour(col, 2)}};
    }
    for (int unit = 1; unit <= 9; ++unit) {
        result.rows[unit] = MakeRegion<9>([&](int cell) { return units[cell].row == unit; });
        result.cols[unit] = MakeRegion<9>([&](int cell) { return units[cell].col == unit; });
        result.boxes[unit] = MakeRegion<9>([&](int cell) { return units[cell].box == unit; });
    }
    for (int cell = 1; cell <= 81; ++cell) {
        result.alone[cell].Add(cell);
        result.reach[cell] = MakeRegion<21>([&](int other) {
            return units[cell].row == units[other].row || units[cell].col == units[other].col ||
                   units[cell].box == units[other].box;
        });
    }
    return result;
}

inline constexpr Geometry geometry = MakeGeometry();

}  // namespace Global
