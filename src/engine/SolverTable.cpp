#include <bit>
#include <cassert>

#include "engine/CellSet.h"
#include "engine/Global.h"
#include "engine/Tables.h"
#include "platform/Host.h"

namespace {

using Global::CellSet;
using Global::CellUnits;
using Global::EngineArray;
using Global::geometry;
using Global::Region;

constexpr unsigned allNine = 0x3FE;  // bits 1..9

// The tables, and beside them what they would answer to a recount. Invariant: bit k of candidates[cell]
// stands exactly while entry (cell, k) is +k, and everything from there down follows from those bits.
struct EngineTables {
    EngineArray<std::int16_t, 82 * 10> solve;  // cell + 82 * k
    EngineArray<std::int16_t, 100> boxDigits;  // box * 10 + digit
    int emptyCells = 81;

    EngineArray<std::uint16_t, 82> candidates;
    EngineArray<CellSet, 10> places;  // by digit: the cells that can take it
    // The number of candidates of each cell in binary, one set for each of its four digits, lowest first.
    EngineArray<CellSet, 4> counts;
    // By digit: the boxes where it has one place left, each as bit 3 * (stack - 1) of its band's word.
    EngineArray<CellSet, 10> boxSingles;
};

constexpr EngineTables MakeEmptyTables() {
    EngineTables result;
    for (int cell = 1; cell <= 81; ++cell) {
        for (int k = 0; k <= 9; ++k) result.solve[cell + 82 * k] = static_cast<std::int16_t>(k);
        for (int digit = 1; digit <= 9; ++digit) result.places[digit].Add(cell);
        result.candidates[cell] = allNine;
        result.counts[0].Add(cell);
        result.counts[3].Add(cell);
    }
    for (int box = 1; box <= 9; ++box)
        for (int digit = 1; digit <= 9; ++digit)
            result.boxDigits[box * 10 + digit] = static_cast<std::int16_t>(-digit);
    return result;
}

constexpr EngineTables emptyTables = MakeEmptyTables();

EngineTables tables = emptyTables;

std::uint64_t randomState = 0;

// Adds up three rows, then three columns, of all boxes of a band at once.
CellSet BoxesWithOnePlace(const CellSet& places) {
    constexpr std::uint32_t row = 0x1FF;
    constexpr std::uint32_t firstCols = 0x49;  // the first column of each box
    CellSet result;
    for (int band = 0; band < 4; ++band) {
        const std::uint32_t a = places.bands[band] & row;
        const std::uint32_t b = (places.bands[band] >> 9) & row;
        const std::uint32_t c = (places.bands[band] >> 18) & row;
        const std::uint32_t once = (a ^ b ^ c) & ~(a & b);
        const std::uint32_t more = (a & b) | (a & c) | (b & c);
        const std::uint32_t oneCol = (once ^ (once >> 1) ^ (once >> 2)) & ~(once & (once >> 1));
        result.bands[band] = oneCol & ~(more | (more >> 1) | (more >> 2)) & firstCols;
    }
    return result;
}

// The only routine that changes the sign of an entry of the solve table; its callers keep the sets.
void Exclude(int cell, int digit) {
    tables.solve[cell + 82 * digit] = static_cast<std::int16_t>(-digit);
    tables.candidates[cell] &= static_cast<std::uint16_t>(~(1U << digit));
}

void RemovePlaces(const CellSet& cells, int digit) {
    const CellSet left = tables.places[digit] - cells;
    tables.places[digit] = left;
    tables.boxSingles[digit] = BoxesWithOnePlace(left);
}

template <int Size>
void ExcludeInRegion(const Region<Size>& region, int digit) {
    // Takes one from the counts of all cells that lose the digit at once.
    CellSet borrow = tables.places[digit] & region.set;
    for (CellSet& bits : tables.counts.entries) {
        const CellSet before = bits;
        bits = before ^ borrow;
        borrow = borrow - before;
    }
    RemovePlaces(region.set, digit);
    for (const int cell : region.cells.entries) Exclude(cell, digit);
}

void ExcludeInCell(int cell, unsigned digits) {
    for (; digits != 0; digits &= digits - 1) {
        const int digit = std::countr_zero(digits);
        RemovePlaces(geometry.alone[cell], digit);
        Exclude(cell, digit);
    }
}

// Once every digit is excluded from the cell. ExcludeInCell leaves the counts to this.
void FillCell(int cell, int digit) {
    assert(tables.candidates[cell] == 0);
    for (CellSet& bits : tables.counts.entries) bits = bits - geometry.alone[cell];
    tables.emptyCells += (digit == 0 ? 1 : 0) - (tables.solve[cell] == 0 ? 1 : 0);
    tables.solve[cell] = static_cast<std::int16_t>(digit);
    tables.boxDigits[geometry.units[cell].box * 10 + digit] = static_cast<std::int16_t>(digit);
}

int CountValues(int firstCell, int step, int digit) {
    int count = 0;
    for (int n = 0; n < 9; ++n) count += tables.solve[firstCell + n * step] == digit ? 1 : 0;
    return count;
}

CellSet CellsWithOneCandidate() {
    return tables.counts[0] - tables.counts[1] - tables.counts[2] - tables.counts[3];
}

// Empty when no cell has a candidate.
CellSet CellsWithFewestCandidates() {
    CellSet fewest = tables.counts[0] | tables.counts[1] | tables.counts[2] | tables.counts[3];
    for (int bit = 3; bit >= 0; --bit)
        if (const CellSet fewer = fewest - tables.counts[bit]; !fewer.Empty()) fewest = fewer;
    return fewest;
}

constexpr bool HasTwoBits(unsigned bits) {
    return (bits & (bits - 1)) != 0;
}

unsigned PlacesInRow(int row, int digit) {
    return tables.places[digit].bands[(row - 1) / 3] & (0x1FFU << (row - 1) % 3 * 9);
}

unsigned PlacesInCol(int col, int digit) {
    const auto& bands = tables.places[digit].bands;
    return (bands[0] | bands[1] | bands[2]) & (0x40201U << (col - 1));
}

bool AllowsGuess(int cell, int digit) {
    const CellUnits& units = geometry.units[cell];
    return HasTwoBits(PlacesInRow(units.otherRows[0], digit)) ||
           HasTwoBits(PlacesInRow(units.otherRows[1], digit)) ||
           (PlacesInCol(units.otherCols[0], digit) | PlacesInCol(units.otherCols[1], digit)) != 0;
}

std::uint32_t Draw24Bits() {
    randomState += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = randomState;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 40);
}

}  // namespace

namespace Global {

int RowOf(int cell) {
    CheckIndex(cell, 1, 81);
    return geometry.units[cell].row;
}

int ColOf(int cell) {
    CheckIndex(cell, 1, 81);
    return geometry.units[cell].col;
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
    return geometry.units[cell].box;
}

int BoxCellIndex(int box, int position) {
    CheckIndex(box, 1, 9);
    CheckIndex(position, 1, 9);
    return geometry.boxes[box].cells[position - 1];
}

std::int16_t TableEntry(int cell, int k) {
    CheckIndex(cell, 0, 81);
    CheckIndex(k, 0, 9);
    return tables.solve[cell + 82 * k];
}

std::int16_t BoxDigitEntry(int box, int digit) {
    CheckIndex(box, 0, 9);
    CheckIndex(digit, 0, 9);
    return tables.boxDigits[box * 10 + digit];
}

void ResetTable() {
    tables = emptyTables;
}

void ExcludeInRow(int row, int digit) {
    CheckIndex(row, 1, 9);
    CheckIndex(digit, 1, 9);
    ExcludeInRegion(geometry.rows[row], digit);
}

void ExcludeInCol(int col, int digit) {
    CheckIndex(col, 1, 9);
    CheckIndex(digit, 1, 9);
    ExcludeInRegion(geometry.cols[col], digit);
}

void ExcludeInBox(int box, int digit) {
    CheckIndex(box, 1, 9);
    CheckIndex(digit, 1, 9);
    ExcludeInRegion(geometry.boxes[box], digit);
}

void PlaceDigit(int cell, int digit) {
    CheckIndex(cell, 1, 81);
    // A locked cell may hold 0: it then stays empty for good, without a candidate.
    CheckIndex(digit, 0, 9);
    ExcludeInCell(cell, tables.candidates[cell]);
    FillCell(cell, digit);
}

void PlaceAndExclude(int cell, int digit) {
    CheckIndex(cell, 1, 81);
    CheckIndex(digit, 1, 9);
    ExcludeInCell(cell, tables.candidates[cell] & ~(1U << digit));
    ExcludeInRegion(geometry.reach[cell], digit);
    FillCell(cell, digit);
}

bool HasEmptyCell() {
    return tables.emptyCells > 0;
}

int CandidateCount(int cell) {
    CheckIndex(cell, 1, 81);
    return std::popcount(tables.candidates[cell]);
}

int CountInRow(int row, int digit) {
    CheckIndex(row, 1, 9);
    return CountValues((row - 1) * 9 + 1, 1, digit);
}

int CountInCol(int col, int digit) {
    CheckIndex(col, 1, 9);
    return CountValues(col, 9, digit);
}

bool IsDuplicate(int cell, int digit) {
    return CountInCol(ColOf(cell), digit) + CountInRow(RowOf(cell), digit) >= 3;
}

bool RowHasTwoPlaces(int row, int digit) {
    CheckIndex(row, 1, 9);
    CheckIndex(digit, 1, 9);
    return HasTwoBits(PlacesInRow(row, digit));
}

bool ColHasPlace(int col, int digit) {
    CheckIndex(col, 1, 9);
    CheckIndex(digit, 1, 9);
    return PlacesInCol(col, digit) != 0;
}

bool GuessAllowed(int cell, int digit) {
    CheckIndex(cell, 1, 81);
    CheckIndex(digit, 1, 9);
    return AllowsGuess(cell, digit);
}

bool AnyGuessAllowed() {
    const CellSet tied = CellsWithFewestCandidates();
    for (int position = tied.Size(); position > 0; --position) {
        const int cell = tied.At(position);
        for (unsigned rest = tables.candidates[cell]; rest != 0; rest &= rest - 1)
            if (AllowsGuess(cell, std::countr_zero(rest))) return true;
    }
    return false;
}

int FindSingle(int& digit) {
    if (const CellSet naked = CellsWithOneCandidate(); !naked.Empty()) {
        const int cell = naked.First();
        digit = std::countr_zero(tables.candidates[cell]);
        return cell;
    }
    CellSet boxes;
    for (int k = 1; k <= 9; ++k) boxes = boxes | tables.boxSingles[k];
    if (boxes.Empty()) return 0;
    const int firstCell = boxes.First();  // the upper left cell of the box
    const Region<9>& box = geometry.boxes[geometry.units[firstCell].box];
    CellSet first;
    first.Add(firstCell);
    for (digit = 1; (tables.boxSingles[digit] & first).Empty();) ++digit;
    return (tables.places[digit] & box.set).First();
}

int ChooseGuessCell() {
    const CellSet tied = CellsWithFewestCandidates();
    return tied.Empty() ? 0 : tied.At(RandomBetween(1, tied.Size()));
}

CandidateList ShuffleCandidates(int cell) {
    CheckIndex(cell, 1, 81);
    // Four bits for each candidate; taking one closes the gap.
    std::uint64_t left = 0;
    int count = 0;
    for (unsigned rest = tables.candidates[cell]; rest != 0; rest &= rest - 1)
        left |= static_cast<std::uint64_t>(std::countr_zero(rest)) << 4 * count++;

    CandidateList result;
    for (; count > 0; --count) {
        const int shift = 4 * (RandomBetween(1, count) - 1);
        const std::uint64_t before = left & ((std::uint64_t{1} << shift) - 1);
        result.digits[static_cast<std::size_t>(result.count++)] =
            static_cast<std::int16_t>((left >> shift) & 0xF);
        left = before | (left >> (shift + 4) << shift);
    }
    return result;
}

void Reseed() {
    Reseed(platform::TheHost().seeds->NextSeed());
}

void Reseed(std::uint64_t seed) {
    randomState = seed;
}

float NextRandom() {
    return static_cast<float>(Draw24Bits()) * 0x1p-24F;
}

int RandomBetween(int a, int b) {
    if (b <= a) return a;
    // In whole numbers, where no rounding can reach b + 1.
    const std::int64_t span = std::int64_t{b} - a + 1;
    return static_cast<int>(a + ((Draw24Bits() * span) >> 24));
}

}  // namespace Global
