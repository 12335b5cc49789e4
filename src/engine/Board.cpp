// SPDX-License-Identifier: MIT
#include "engine/Board.h"

#include <bit>
#include <cassert>

namespace Global {

namespace {

CellSet PeersOfAll(CellSet cells) {
    CellSet peers;
    cells.ForEach([&peers](int cell) { peers |= cellSets.peers[cell]; });
    return peers;
}

}  // namespace

Board::Board() : open_(CellsWhere([](int) { return true; })) {
    for (int digit = 1; digit <= 9; ++digit) cells_[digit] = open_;
}

unsigned Board::Candidates(int cell) const {
    const CellSet alone = CellSet::Of(cell) & open_;
    unsigned candidates = 0;
    for (int digit = 1; digit <= 9; ++digit) candidates |= (cells_[digit] & alone).Empty() ? 0U : 1U << digit;
    return candidates;
}

void Board::Fill(int cell, int digit) {
    const CellSet alone = CellSet::Of(cell);
    for (int other = 1; other <= 9; ++other) cells_[other] -= alone;
    if (digit == 0) {
        open_ |= alone;
    } else {
        cells_[digit] |= alone;
        open_ -= alone;
    }
    assert(IsConsistent());
}

void Board::FillAndExclude(int cell, int digit) {
    Fill(cell, digit);
    Exclude(cellSets.peers[cell], digit);
}

void Board::ExcludeHolders() {
    for (int digit = 1; digit <= 9; ++digit) Exclude(PeersOfAll(Holders(digit)), digit);
}

bool Board::HasClash() const {
    bool clash = false;
    for (int digit = 1; digit <= 9; ++digit) clash |= !(PeersOfAll(Holders(digit)) & Holders(digit)).Empty();
    return clash;
}

bool Board::FillSingles() {
    for (int digit = 1; digit <= 9; ++digit) assert((PeersOfAll(Holders(digit)) & Places(digit)).Empty());
    EngineArray<CellSet, 10> singles;  // by digit
    while (!Full()) {
        CellSet some, several;  // cells with at least one, at least two digits
        CellSet::Words emptyBoxes{};
        for (int digit = 1; digit <= 9; ++digit) {
            const CellSet cells = cells_[digit];
            several |= some & cells;
            some |= cells;
            singles[digit] = cells.AloneInBox();
            emptyBoxes |= cells.EmptyBoxes();
        }
        // The guards are no cells, but one question answers both.
        if (!(CellSet{emptyBoxes} | (open_ - some)).Empty()) return false;

        const CellSet naked = open_ - several;
        CellSet filled;
        for (int digit = 1; digit <= 9; ++digit) {
            singles[digit] = (singles[digit] & open_) | (cells_[digit] & naked);
            if (singles[digit].Empty()) continue;
            // A single must not be the cell of another digit's single, nor a peer of another one of its own
            // digit.
            const CellSet taken = filled | PeersOfAll(singles[digit]);
            if (!(singles[digit] & taken).Empty()) return false;
            cells_[digit] -= taken;
            filled |= singles[digit];
        }
        if (filled.Empty()) break;
        open_ -= filled;
        for (int digit = 1; digit <= 9; ++digit) cells_[digit] -= filled - singles[digit];
    }
    assert(IsConsistent());
    return true;
}

CellSet Board::CellsWithOneCandidate() const {
    CellSet some, several;
    for (int digit = 1; digit <= 9; ++digit) {
        several |= some & cells_[digit];
        some |= cells_[digit];
    }
    return (some - several) & open_;
}

CellSet Board::CellsWithFewestCandidates() const {
    // The number of candidates of each cell in binary, one set for each bit, lowest first.
    EngineArray<CellSet, 4> counts;
    for (int digit = 1; digit <= 9; ++digit) {
        CellSet carry = Places(digit);
        for (CellSet& bits : counts.entries) {
            const CellSet before = bits;
            bits = before ^ carry;
            carry &= before;
        }
    }
    // From the highest bit down the cells without it, if there are any.
    CellSet fewest = counts[0] | counts[1] | counts[2] | counts[3];
    for (int bit = 3; bit >= 0; --bit)
        if (const CellSet fewer = fewest - counts[bit]; !fewer.Empty()) fewest = fewer;
    return fewest;
}

bool Board::GuessAllowed(int cell, int digit) const {
    const CellUnits units = unitsOf[cell];
    for (int step = 1; step <= 2; ++step)
        if (RowHasTwoPlaces(NeighbourLine(units.row, step), digit) ||
            ColHasPlace(NeighbourLine(units.col, step), digit))
            return true;
    return false;
}

bool Board::AnyGuessAllowed() const {
    bool allowed = false;
    CellsWithFewestCandidates().ForEach([this, &allowed](int cell) {
        for (unsigned rest = Candidates(cell); rest != 0; rest &= rest - 1)
            allowed = allowed || GuessAllowed(cell, std::countr_zero(rest));
    });
    return allowed;
}

bool Board::IsConsistent() const {
    CellSet held, twice;
    for (int digit = 1; digit <= 9; ++digit) {
        twice |= held & Holders(digit);
        held |= Holders(digit);
    }
    return twice.Empty() && (held | open_).Size() == 81;
}

}  // namespace Global
