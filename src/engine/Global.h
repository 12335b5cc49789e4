// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

// The engine's solve table with its elementary rules; EngineRun.h has the search and the generator that work
// on it. Module state, on the user-interface thread. Nothing here traps errors: a failure reaches the caller.
// Every index is checked against its table and raises error 9 out of bounds.
namespace Global {

// ---- Geometry. Cells 1..81 row-major; rows, columns, boxes 1..9.
int RowOf(int cell);
int ColOf(int cell);
int BandOf(int n);   // band of row n, or box row of box n: 1..3
int StackOf(int n);  // box column of box n: 1..3
int BoxOf(int cell);
int BoxCellIndex(int box, int position);  // position 1..9, row-major inside the box

// ---- Tables.
//
// Solve table, signed 16-bit, by cell 0..81 (0 unused) and k 0..9:
//   k = 0     the digit in the cell, 0 while it is empty
//   k = 1..9  +k while digit k is a candidate of the cell, -k once it is excluded
// Box-digit table, signed 16-bit, (box 0..9, digit 0..9): -d until digit d is placed in the box, then +d.
std::int16_t TableEntry(int cell, int k);
std::int16_t BoxDigitEntry(int box, int digit);

void ResetTable();
void ExcludeInRow(int row, int digit);
void ExcludeInCol(int col, int digit);
void ExcludeInBox(int box, int digit);
// Excludes every candidate of the cell and puts the digit into it. The row, the column and the box are the
// caller's business.
void PlaceDigit(int cell, int digit);

bool HasEmptyCell();
int CandidateCount(int cell);  // 0 for a filled cell
int CountInRow(int row, int digit);
int CountInCol(int col, int digit);
// The cell holds the digit, which stands in its row or column once more.
bool IsDuplicate(int cell, int digit);
// At least two cells of the row, at least one cell of the column, can still take the digit. The thresholds
// differ on purpose.
bool RowHasTwoPlaces(int row, int digit);
bool ColHasPlace(int col, int digit);
bool GuessAllowed(int cell, int digit);

// The first naked single in cell order, else the first hidden single by box, then digit; 0 if there is
// none. Hidden singles of rows and columns are not looked for.
int FindSingle(int& digit);
// One of the empty cells with the fewest candidates, drawn at random; 0 when no empty cell has any.
int ChooseGuessCell();

struct CandidateList {
    std::array<std::int16_t, 9> digits{};
    int count = 0;
};
CandidateList ShuffleCandidates(int cell);

// ---- Random numbers.
void Reseed();  // from the host's seed source
void Reseed(std::uint64_t seed);
float NextRandom();               // n * 2^-24, 0 <= n < 2^24: below 1 always
int RandomBetween(int a, int b);  // a..b; a, and nothing drawn, when b <= a

// ---- What a run does with the tables alone.

// False, and a message about the first clash, when a digit stands twice in a row, column or box.
bool TestGivens();
void SeedBoxes();
void FillBox(int box);

}  // namespace Global
