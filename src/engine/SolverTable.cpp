// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>
#include <cassert>

#include "engine/Board.h"
#include "engine/Global.h"
#include "engine/Tables.h"

namespace {

using Global::Board;
using Global::CellSet;
using Global::CellUnits;
using Global::EngineArray;
using Global::unitsOf;

using SolveTable = EngineArray<std::int16_t, 82 * 10>;  // cell + 82 * k
using BoxDigits = EngineArray<std::int16_t, 100>;       // box * 10 + digit

// sign 1: every digit is a candidate everywhere; -1: no digit is.
constexpr SolveTable MakeTable(int sign) {
    SolveTable made;
    for (int cell = 1; cell <= 81; ++cell)
        for (int k = 1; k <= 9; ++k) made[cell + 82 * k] = static_cast<std::int16_t>(sign * k);
    return made;
}

constexpr BoxDigits MakeBoxDigits() {
    BoxDigits made;
    for (int box = 1; box <= 9; ++box)
        for (int digit = 1; digit <= 9; ++digit) made[box * 10 + digit] = static_cast<std::int16_t>(-digit);
    return made;
}

constexpr SolveTable allCandidates = MakeTable(1);
constexpr SolveTable noCandidate = MakeTable(-1);
constexpr BoxDigits noDigitPlaced = MakeBoxDigits();

SolveTable solveTable = allCandidates;
BoxDigits boxDigits = noDigitPlaced;
// The table once more, as the search wants it: scanning the table for it would cost as much as an attempt.
Board tableBoard;

// The routines that change the table change the board alike.
[[maybe_unused]] bool TableAndBoardAgree() {
    for (int cell = 1; cell <= 81; ++cell) {
        const unsigned candidates = tableBoard.Candidates(cell);
        const int value = solveTable[cell];
        if (tableBoard.IsOpen(cell) != (value == 0)) return false;
        if (value != 0 && (tableBoard.Holders(value) & CellSet::Of(cell)).Empty()) return false;
        for (int k = 1; k <= 9; ++k)
            if (solveTable[cell + 82 * k] != ((candidates >> k & 1) != 0 ? k : -k)) return false;
    }
    return true;
}

void PutDigit(int cell, int digit) {
    solveTable[cell] = static_cast<std::int16_t>(digit);
    boxDigits[unitsOf[cell].box * 10 + digit] = static_cast<std::int16_t>(digit);
}

void ExcludeInUnit(int unit, int digit, int CellUnits::*member) {
    Global::CheckIndex(unit, 1, 9);
    Global::CheckIndex(digit, 1, 9);
    CellSet cells;
    for (int cell = 1; cell <= 81; ++cell) {
        if (unitsOf[cell].*member != unit) continue;
        solveTable[cell + 82 * digit] = static_cast<std::int16_t>(-digit);
        cells |= CellSet::Of(cell);
    }
    tableBoard.Exclude(cells, digit);
    assert(TableAndBoardAgree());
}

int CountValues(int unit, int digit, int CellUnits::*member) {
    Global::CheckIndex(unit, 1, 9);
    int count = 0;
    for (int cell = 1; cell <= 81; ++cell)
        count += unitsOf[cell].*member == unit && solveTable[cell] == digit ? 1 : 0;
    return count;
}

}  // namespace

namespace Global {

int RowOf(int cell) {
    CheckIndex(cell, 1, 81);
    return unitsOf[cell].row;
}

int ColOf(int cell) {
    CheckIndex(cell, 1, 81);
    return unitsOf[cell].col;
}

int BandOf(int n) {
    CheckIndex(n, 1, 9);
    return (n + 2) / 3;
}

int StackOf(int n) {
    CheckIndex(n, 1, 9);
    return (n - 1) % 3 + 1;
}

int BoxOf(int cell) {
    CheckIndex(cell, 1, 81);
    return unitsOf[cell].box;
}

int BoxCellIndex(int box, int position) {
    CheckIndex(box, 1, 9);
    CheckIndex(position, 1, 9);
    return CellOfBox(box, position);
}

std::int16_t TableEntry(int cell, int k) {
    CheckIndex(cell, 0, 81);
    CheckIndex(k, 0, 9);
    return solveTable[cell + 82 * k];
}

std::int16_t BoxDigitEntry(int box, int digit) {
    CheckIndex(box, 0, 9);
    CheckIndex(digit, 0, 9);
    return boxDigits[box * 10 + digit];
}

const Board& TableAsBoard() {
    return tableBoard;
}

void StoreBoard(const Board& searched) {
    tableBoard = searched;
    solveTable = noCandidate;
    for (int digit = 1; digit <= 9; ++digit) {
        tableBoard.Holders(digit).ForEach([digit](int cell) { PutDigit(cell, digit); });
        tableBoard.Places(digit).ForEach(
            [digit](int cell) { solveTable[cell + 82 * digit] = static_cast<std::int16_t>(digit); });
    }
    assert(TableAndBoardAgree());
}

void ResetTable() {
    solveTable = allCandidates;
    boxDigits = noDigitPlaced;
    tableBoard = Board();
    assert(TableAndBoardAgree());
}

void ExcludeInRow(int row, int digit) {
    ExcludeInUnit(row, digit, &CellUnits::row);
}

void ExcludeInCol(int col, int digit) {
    ExcludeInUnit(col, digit, &CellUnits::col);
}

void ExcludeInBox(int box, int digit) {
    ExcludeInUnit(box, digit, &CellUnits::box);
}

void PlaceDigit(int cell, int digit) {
    CheckIndex(cell, 1, 81);
    // A given may be 0: its cell then stays empty for good, without a candidate.
    CheckIndex(digit, 0, 9);
    for (int k = 1; k <= 9; ++k) solveTable[cell + 82 * k] = static_cast<std::int16_t>(-k);
    PutDigit(cell, digit);
    tableBoard.Fill(cell, digit);
    assert(TableAndBoardAgree());
}

bool HasEmptyCell() {
    return !tableBoard.Full();
}

int CandidateCount(int cell) {
    CheckIndex(cell, 1, 81);
    return std::popcount(tableBoard.Candidates(cell));
}

int CountInRow(int row, int digit) {
    return CountValues(row, digit, &CellUnits::row);
}

int CountInCol(int col, int digit) {
    return CountValues(col, digit, &CellUnits::col);
}

bool IsDuplicate(int cell, int digit) {
    return CountInCol(ColOf(cell), digit) + CountInRow(RowOf(cell), digit) >= 3;
}

bool RowHasTwoPlaces(int row, int digit) {
    CheckIndex(row, 1, 9);
    CheckIndex(digit, 1, 9);
    return tableBoard.RowHasTwoPlaces(row, digit);
}

bool ColHasPlace(int col, int digit) {
    CheckIndex(col, 1, 9);
    CheckIndex(digit, 1, 9);
    return tableBoard.ColHasPlace(col, digit);
}

bool GuessAllowed(int cell, int digit) {
    CheckIndex(cell, 1, 81);
    CheckIndex(digit, 1, 9);
    return tableBoard.GuessAllowed(cell, digit);
}

int FindSingle(int& digit) {
    if (const CellSet naked = tableBoard.CellsWithOneCandidate(); !naked.Empty()) {
        const int cell = naked.At(1);
        digit = std::countr_zero(tableBoard.Candidates(cell));
        return cell;
    }
    for (int box = 1; box <= 9; ++box)
        for (digit = 1; digit <= 9; ++digit)
            if (const CellSet places = tableBoard.Places(digit) & cellSets.boxes[box]; places.Size() == 1)
                return places.At(1);
    return 0;
}

int ChooseGuessCell() {
    return ChooseGuessCell(tableBoard);
}

int ChooseGuessCell(const Board& searched) {
    const CellSet tied = searched.CellsWithFewestCandidates();
    return tied.Empty() ? 0 : tied.At(RandomBetween(1, tied.Size()));
}

CandidateList ShuffleCandidates(int cell) {
    CheckIndex(cell, 1, 81);
    return ShuffleCandidates(tableBoard, cell);
}

CandidateList ShuffleCandidates(const Board& searched, int cell) {
    CandidateList candidates;
    for (unsigned rest = searched.Candidates(cell); rest != 0; rest &= rest - 1)
        candidates.digits[static_cast<std::size_t>(candidates.count++)] =
            static_cast<std::int16_t>(std::countr_zero(rest));
    return Shuffled(candidates);
}

CandidateList Shuffled(CandidateList list) {
    CandidateList result;
    for (int left = list.count; left > 0; --left) {
        std::int16_t* const taken = list.digits.data() + RandomBetween(1, left) - 1;
        result.digits[static_cast<std::size_t>(result.count++)] = *taken;
        std::copy(taken + 1, list.digits.data() + left, taken);
    }
    return result;
}

}  // namespace Global
