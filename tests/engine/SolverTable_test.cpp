#include <algorithm>
#include <random>

#include "EngineSupport.h"
#include "engine/Tables.h"

using namespace Global;

namespace {

// The table without anything kept beside it: each question is answered by a scan.
struct PlainTable : GridShape {
    using Unit = int (*)(int);  // of a cell
    int entry[82][10]{};
    int boxDigit[10][10]{};
    int passes = 0;

    PlainTable() {
        for (int n = 0; n < 820; ++n) entry[n / 10][n % 10] = n % 10;
        for (int n = 0; n < 100; ++n) boxDigit[n / 10][n % 10] = -(n % 10);
    }
    void Exclude(Unit unitOf, int unit, int digit) {
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit) entry[cell][digit] = -digit;
    }
    void Place(int cell, int digit) {
        for (int k = 1; k <= 9; ++k) entry[cell][k] = -k;
        entry[cell][0] = boxDigit[Box(cell)][digit] = digit;
    }
    void PlaceAndExclude(int cell, int digit) {
        Place(cell, digit);
        for (const Unit unitOf : {Row, Col, Box}) Exclude(unitOf, unitOf(cell), digit);
    }
    bool HasEmptyCell() const {
        return std::any_of(entry + 1, entry + 82, [](const int* row) { return row[0] == 0; });
    }
    std::vector<int> Candidates(int cell) const {
        std::vector<int> digits;
        for (int k = 1; k <= 9; ++k)
            if (entry[cell][k] > 0) digits.push_back(k);
        return digits;
    }
    // The cells of the unit that have the digit in column k.
    std::vector<int> Cells(Unit unitOf, int unit, int k, int digit) const {
        std::vector<int> cells;
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit && entry[cell][k] == digit) cells.push_back(cell);
        return cells;
    }
    // The cell and the digit; 0 and 0 when there is none.
    std::pair<int, int> Single() const {
        for (int cell = 1; cell <= 81; ++cell)
            if (const auto digits = Candidates(cell); digits.size() == 1) return {cell, digits[0]};
        for (int n = 9; n < 90; ++n)
            if (const auto places = Cells(Box, n / 9, n % 9 + 1, n % 9 + 1); places.size() == 1)
                return {places[0], n % 9 + 1};
        return {};
    }
    std::vector<int> Tied() const {
        std::vector<int> tied;
        for (std::size_t fewest = 1; fewest <= 9 && tied.empty(); ++fewest)
            for (int cell = 1; cell <= 81; ++cell)
                if (Candidates(cell).size() == fewest) tied.push_back(cell);
        return tied;
    }
    bool Allowed(int cell, int digit) const {
        for (int line = 1; line <= 9; ++line) {
            const bool besideRow = line != Row(cell) && BandOf(line) == BandOf(Row(cell));
            const bool besideCol = line != Col(cell) && BandOf(line) == BandOf(Col(cell));
            if (besideRow && Cells(Row, line, digit, digit).size() >= 2) return true;
            if (besideCol && !Cells(Col, line, digit, digit).empty()) return true;
        }
        return false;
    }
    bool AnyAllowed(int cell) const {
        const auto digits = Candidates(cell);
        return std::any_of(digits.begin(), digits.end(), [&](int digit) { return Allowed(cell, digit); });
    }
    static int Take(std::vector<int>& numbers) {
        const auto taken = numbers.begin() + RandomBetween(1, static_cast<int>(numbers.size())) - 1;
        const int number = *taken;
        return numbers.erase(taken), number;
    }
    bool Attempt() {
        for (int cell = 1; cell <= 81; ++cell)
            if (const int digit = entry[cell][0]; digit != 0) PlaceAndExclude(cell, digit);
        for (; HasEmptyCell(); ++passes) {
            auto [cell, digit] = Single();
            if (cell == 0) {
                std::vector<int> tied = Tied();
                if (tied.empty()) return ++passes, false;
                const bool moves =
                    std::any_of(tied.begin(), tied.end(), [this](int n) { return AnyAllowed(n); });
                cell = Take(tied);
                for (auto rest = Candidates(cell); !rest.empty();)
                    if (const int next = Take(rest); digit == 0 && Allowed(cell, next)) digit = next;
                if (!moves) return ++passes, true;
            }
            if (digit != 0) PlaceAndExclude(cell, digit);
        }
        return true;
    }
    void ExpectEngineToAgree() const {
        for (int cell = 1; cell <= 81; ++cell) {
            ASSERT_EQ(std::tuple((RowOf(cell) - 1) * 9 + ColOf(cell), BoxOf(cell)),
                      std::tuple(cell, Box(cell)));
            for (int k = 0; k <= 9; ++k) ASSERT_EQ(TableEntry(cell, k), entry[cell][k]) << cell << " " << k;
            ASSERT_EQ(CandidateCount(cell), Candidates(cell).size()) << cell;
        }
        for (int n = 9; n < 90; ++n) {
            const int unit = n / 9, digit = n % 9 + 1, cell = n - 8;
            ASSERT_EQ((BandOf(unit) - 1) * 3 + StackOf(unit), unit);
            ASSERT_EQ(BoxDigitEntry(unit, digit), boxDigit[unit][digit]);
            ASSERT_EQ(RowHasTwoPlaces(unit, digit), Cells(Row, unit, digit, digit).size() >= 2);
            ASSERT_EQ(ColHasPlace(unit, digit), !Cells(Col, unit, digit, digit).empty());
            ASSERT_EQ(GuessAllowed(cell, digit), Allowed(cell, digit)) << cell << " " << digit;
        }
    }
};

template <auto routine>
void Call(int first, int second) {
    if constexpr (std::is_invocable_v<decltype(routine), int, int>)
        routine(first, second);
    else
        routine(first);
}

}  // namespace

using SolverTable = RunTest;

// Faults: what is kept beside the table drifts away from it, an attempt that goes another way than the rules,
// ends too early or draws too often.
TEST_F(SolverTable, AndItsAttemptsAgreeWithPlainScans) {
    std::mt19937 random(7);
    const auto draw = [&random](unsigned last) { return static_cast<int>(random() % last) + 1; };
    int full = 0;
    int stuck = 0;
    for (unsigned round = 0; round < 600 && !HasFatalFailure(); ++round) {
        ResetTable();
        PlainTable plain;
        // Anything anywhere, also in filled cells; a digit 0 leaves its cell empty for good.
        for (unsigned step = 0; step < round % 60; ++step) {
            const int kind = draw(5), cell = draw(81), unit = draw(9), digit = draw(9);
            const int placed = step % 50 == 9 ? 0 : digit;
            if (kind == 1) PlaceDigit(cell, placed), plain.Place(cell, placed);
            if (kind == 2) PlaceAndExclude(cell, digit), plain.PlaceAndExclude(cell, digit);
            if (kind == 3) ExcludeInRow(unit, digit), plain.Exclude(Row, unit, digit);
            if (kind == 4) ExcludeInCol(unit, digit), plain.Exclude(Col, unit, digit);
            if (kind == 5) ExcludeInBox(unit, digit), plain.Exclude(Box, unit, digit);
        }
        plain.ExpectEngineToAgree();
        host.yields = 0;
        Reseed(round);
        const bool ended = run.SolveAttempt();
        const float next = NextRandom();
        Reseed(round);
        ASSERT_EQ(ended, plain.Attempt()) << round;
        ASSERT_EQ(std::tuple(next, host.yields), std::tuple(NextRandom(), plain.passes)) << round;
        plain.ExpectEngineToAgree();
        full += HasEmptyCell() ? 0 : 1;
        stuck += ended && HasEmptyCell() ? 1 : 0;
    }
    EXPECT_TRUE(full > 9 && stuck > 9 && full + stuck < 590) << full << " " << stuck;
}

// Faults: memory beside a table is read or written, or a refused call has changed something.
TEST_F(SolverTable, RefusesIndexesOutOfBoundsWithError9) {
    struct Refusal {
        int first, last, first2, last2;  // of either index
        std::vector<void (*)(int, int)> routines;
    };
    constexpr int any = -99;  // not checked
    const Refusal refusals[] = {
        {1, 81, any, any, {Call<RowOf>, Call<ColOf>, Call<BoxOf>}},
        {1, 81, any, any, {Call<CandidateCount>, Call<ShuffleCandidates>, Call<IsDuplicate>}},
        {1, 9, any, any, {Call<BandOf>, Call<StackOf>, Call<CountInRow>, Call<CountInCol>}},
        {0, 81, 0, 9, {Call<TableEntry>}},
        {0, 9, 0, 9, {Call<BoxDigitEntry>}},
        {1, 81, 0, 9, {PlaceDigit}},
        {1, 81, 1, 9, {PlaceAndExclude, Call<GuessAllowed>}},
        {1, 9, 1, 9, {Call<RowHasTwoPlaces>, Call<ColHasPlace>, Call<BoxCellIndex>}},
        {1, 9, 1, 9, {ExcludeInRow, ExcludeInCol, ExcludeInBox}},
    };
    ResetTable();
    for (const auto& [first, last, first2, last2, routines] : refusals)
        for (const auto routine : routines) {
            for (const int wrong : {first - 1, last + 1, -32768, 32767})
                EXPECT_EQ(ErrorOf([&] { routine(wrong, 5); }), 9)
                    << &routines - &refusals[0].routines << " " << wrong;
            for (const int wrong : {first2 - 1, last2 + 1})
                EXPECT_EQ(ErrorOf([&] { routine(5, wrong); }), last2 == any ? 0 : 9) << wrong;
        }
    PlainTable().ExpectEngineToAgree();
}

// Faults: a bound is passed or never reached, draws are wasted.
TEST_F(SolverTable, DrawsStayBetweenTheirBounds) {
    for (std::uint64_t seed = 0; seed < 20000; ++seed) {
        Reseed(seed);
        EXPECT_EQ(RandomBetween(4, 4) + RandomBetween(4, 2), 8);  // draws nothing
        const double share = NextRandom();
        ASSERT_TRUE(share >= 0 && share < 1);
        Reseed(seed);
        ASSERT_EQ(RandomBetween(-32768, 32767), static_cast<int>(share * 65536) - 32768);
    }
}
