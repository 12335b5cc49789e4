// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

#include "engine/Geometry.h"

// Sets of cells, laid out for speed.
namespace Global {

// Box by box, ten bits for each:
//
//     bits     59..50  49..40  39..30  29..20  19..10   9..0
//     lower    box 6   box 5   box 4   box 3   box 2   box 1
//     upper                            box 9   box 8   box 7
//
// The lowest nine of the ten are the box's cells, row by row. The tenth, the guard, is in no set of cells: it
// takes the carry when all boxes are counted at once.
//
// Both words stand in one vector register, so that a set costs what a word costs.
struct CellSet {
    using Words = std::uint64_t __attribute__((vector_size(16)));
    Words words{};  // lower, upper

    static CellSet Of(int cell);

    bool Empty() const { return (words[0] | words[1]) == 0; }
    bool HasTwo() const { return Size() >= 2; }
    int Size() const { return std::popcount(words[0]) + std::popcount(words[1]); }

    // Calls visit(cell) for each member, box by box, inside the box row by row.
    template <class Visit>
    void ForEach(Visit visit) const;
    // The member at position 1..Size() in the order of the cells.
    int At(int position) const;

    // The members that stand alone in their box.
    CellSet AloneInBox() const {
        const Words others = words & WithoutFirst();
        // What is left in a box carries into its guard when 511 is added; the guard minus its box's lowest
        // bit is the box's nine cells.
        const Words crowded = (others + (guards - firsts)) & guards;
        return {words & ~(crowded - (crowded >> 9))};
    }
    // The guards of the boxes that have no member.
    Words EmptyBoxes() const { return guards & ~WithoutFirst(); }

    friend CellSet operator&(CellSet one, CellSet other) { return {one.words & other.words}; }
    friend CellSet operator|(CellSet one, CellSet other) { return {one.words | other.words}; }
    friend CellSet operator^(CellSet one, CellSet other) { return {one.words ^ other.words}; }
    friend CellSet operator-(CellSet one, CellSet other) { return {one.words & ~other.words}; }
    CellSet& operator|=(CellSet other) { return *this = *this | other; }
    CellSet& operator&=(CellSet other) { return *this = *this & other; }
    CellSet& operator-=(CellSet other) { return *this = *this - other; }

  private:
    static constexpr Words firsts{0x0004010040100401, 0x0000000000100401};  // the lowest bit of each box
    static constexpr Words guards{0x0004010040100401 << 9, 0x0000000000100401 << 9};

    // Takes the first member from each box. An empty box pays with its guard.
    Words WithoutFirst() const { return (words | guards) - firsts; }
};

template <class Belongs>
constexpr CellSet CellsWhere(Belongs belongs) {
    std::uint64_t lower = 0, upper = 0;
    for (int box = 1; box <= 9; ++box)
        for (int position = 1; position <= 9; ++position)
            if (belongs(CellOfBox(box, position)))
                (box <= 6 ? lower : upper) |= std::uint64_t{1} << ((box - 1) % 6 * 10 + position - 1);
    return CellSet{CellSet::Words{lower, upper}};
}

// Looked up, made by the compiler.
struct CellSets {
    EngineArray<CellSet, 82> alone;  // the cell itself
    EngineArray<CellSet, 82> peers;  // the cells that share a unit with it, itself not among them
    EngineArray<CellSet, 10> rows, cols, boxes;
    // The cell of a bit of `lower`, and from 64 on of `upper`.
    EngineArray<std::uint8_t, 128> cellOfBit;
};

constexpr CellSets MakeCellSets() {
    CellSets result;
    for (int cell = 1; cell <= 81; ++cell) {
        const CellUnits units = unitsOf[cell];
        result.alone[cell] = CellsWhere([=](int other) { return other == cell; });
        result.peers[cell] = CellsWhere([=](int other) {
            const CellUnits others = unitsOf[other];
            return other != cell &&
                   (others.row == units.row || others.col == units.col || others.box == units.box);
        });
    }
    for (int n = 0; n < 81; ++n) {
        const int box = n / 9 + 1;
        result.cellOfBit[(box <= 6 ? (box - 1) * 10 : 64 + (box - 7) * 10) + n % 9] =
            static_cast<std::uint8_t>(CellOfBox(box, n % 9 + 1));
    }
    for (int unit = 1; unit <= 9; ++unit) {
        result.rows[unit] = CellsWhere([=](int cell) { return unitsOf[cell].row == unit; });
        result.cols[unit] = CellsWhere([=](int cell) { return unitsOf[cell].col == unit; });
        result.boxes[unit] = CellsWhere([=](int cell) { return unitsOf[cell].box == unit; });
    }
    return result;
}

inline constexpr CellSets cellSets = MakeCellSets();

inline CellSet CellSet::Of(int cell) {
    return cellSets.alone[cell];
}

template <class Visit>
void CellSet::ForEach(Visit visit) const {
    for (std::uint64_t rest = words[0]; rest != 0; rest &= rest - 1)
        visit(int{cellSets.cellOfBit[std::countr_zero(rest)]});
    for (std::uint64_t rest = words[1]; rest != 0; rest &= rest - 1)
        visit(int{cellSets.cellOfBit[64 + std::countr_zero(rest)]});
}

inline int CellSet::At(int position) const {
    assert(position >= 1 && position <= Size());
    for (int row = 1; row <= 9; ++row) {
        const CellSet inRow = *this & cellSets.rows[row];
        // In one row the bits follow each other as the columns do.
        for (std::uint64_t rest = inRow.words[row <= 6 ? 0 : 1]; rest != 0; rest &= rest - 1)
            if (--position == 0) return cellSets.cellOfBit[std::countr_zero(rest) + (row <= 6 ? 0 : 64)];
    }
    return 0;
}

}  // namespace Global
