#include <algorithm>
#include <random>
#include <set>

#include "EngineSupport.h"
#include "engine/Tables.h"

using namespace Global;

namespace {

// The table without anything kept beside it: each question is answered by a scan.
struct PlainTable : GridShape {
    using Unit = int (*)(int);  // of a cell
    using Numbers = std::set<int>;
    int value[82]{};
    Numbers candidates[82];
    Numbers placed[10];  // in a box
    int passes = 0;

    PlainTable() { std::fill(candidates + 1, candidates + 82, Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9}); }
    void Exclude(Unit unitOf, int unit, int digit) {
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit) candidates[cell].erase(digit);
    }
    void Place(int cell, int digit) {
        candidates[cell].clear();
        value[cell] = digit;
        placed[Box(cell)].insert(digit);
    }
    void PlaceAndExclude(int cell, int digit) {
        Place(cell, digit);
        for (const Unit unitOf : {Row, Col, Box}) Exclude(unitOf, unitOf(cell), digit);
    }
    // The cells of the unit that can take the digit.
    Numbers Places(Unit unitOf, int unit, int digit) const {
        Numbers places;
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit && candidates[cell].count(digit) == 1) places.insert(cell);
        return places;
    }
    // The cell and the digit; 0 and 0 when there is none.
    std::pair<int, int> Single() const {
        for (int cell = 1; cell <= 81; ++cell)
            if (candidates[cell].size() == 1) return {cell, *candidates[cell].begin()};
        for (int box = 1; box <= 9; ++box)
            for (int digit = 1; digit <= 9; ++digit)
                if (const Numbers at = Places(Box, box, digit); at.size() == 1) return {*at.begin(), digit};
        return {};
    }
    Numbers Tied() const {
        Numbers tied;
        for (std::size_t fewest = 1; fewest <= 9 && tied.empty(); ++fewest)
            for (int cell = 1; cell <= 81; ++cell)
                if (candidates[cell].size() == fewest) tied.insert(cell);
        return tied;
    }
    bool Allowed(int cell, int digit) const {
        const auto beside = [&](Unit unitOf, int step) {
            const int line = unitOf(cell) - 1;
            return Places(unitOf, line / 3 * 3 + (line + step) % 3 + 1, digit).size();
        };
        return beside(Row, 1) >= 2 || beside(Row, 2) >= 2 || beside(Col, 1) + beside(Col, 2) > 0;
    }
    static int Take(Numbers& numbers) {
        const int position = RandomBetween(1, static_cast<int>(numbers.size()));
        return numbers.extract(std::next(numbers.begin(), position - 1)).value();
    }
    bool Attempt() {
        for (int cell = 1; cell <= 81; ++cell)
            if (value[cell] != 0) PlaceAndExclude(cell, value[cell]);
        while (std::count(value + 1, value + 82, 0) > 0) {
            ++passes;
            auto [cell, digit] = Single();
            if (cell == 0) {
                Numbers tied = Tied();
                if (tied.empty()) return false;
                bool moves = false;
                for (const int one : tied)
                    for (const int k : candidates[one]) moves = moves || Allowed(one, k);
                cell = Take(tied);
                for (Numbers rest = candidates[cell]; !rest.empty();)
                    if (const int next = Take(rest); digit == 0 && Allowed(cell, next)) digit = next;
                if (!moves) return true;
            }
            if (digit != 0) PlaceAndExclude(cell, digit);
        }
        return true;
    }
    void ExpectEngineToAgree() const {
        const auto sign = [](const Numbers& numbers, int k) { return numbers.count(k) == 1 ? k : -k; };
        for (int cell = 1; cell <= 81; ++cell) {
            ASSERT_EQ(TableEntry(cell, 0), value[cell]);
            for (int k = 1; k <= 9; ++k) ASSERT_EQ(TableEntry(cell, k), sign(candidates[cell], k)) << cell;
            ASSERT_EQ(CandidateCount(cell), candidates[cell].size()) << cell;
        }
        for (int n = 9; n < 90; ++n) {
            const int unit = n / 9, digit = n % 9 + 1, cell = n - 8;
            ASSERT_EQ((BandOf(unit) - 1) * 3 + StackOf(unit), unit);
            ASSERT_EQ(BoxDigitEntry(unit, digit), sign(placed[unit], digit)) << unit;
            ASSERT_EQ(RowHasTwoPlaces(unit, digit), Places(Row, unit, digit).size() >= 2);
            ASSERT_EQ(ColHasPlace(unit, digit), !Places(Col, unit, digit).empty());
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
// ends too early or draws too often, a draw beside its bounds.
TEST_F(SolverTable, AndItsAttemptsAgreeWithPlainScans) {
    std::mt19937 random(7);
    const auto draw = [&random](unsigned last) { return static_cast<int>(random() % last) + 1; };
    std::set<std::pair<bool, bool>> ends;
    for (unsigned round = 0; round < 600 && !HasFatalFailure(); ++round) {
        ResetTable();
        PlainTable plain;
        // Anything anywhere, also in filled cells; a digit 0 leaves its cell empty for good.
        for (unsigned step = 0; step < round % 40; ++step) {
            const int kind = draw(5), cell = draw(81), unit = draw(9), digit = draw(9);
            const int placed = step % 50 == 9 ? 0 : digit;
            if (kind == 1) PlaceDigit(cell, placed), plain.Place(cell, placed);
            if (kind == 2) PlaceAndExclude(cell, digit), plain.PlaceAndExclude(cell, digit);
            if (kind == 3) ExcludeInRow(unit, digit), plain.Exclude(Row, unit, digit);
            if (kind == 4) ExcludeInCol(unit, digit), plain.Exclude(Col, unit, digit);
            if (kind == 5) ExcludeInBox(unit, digit), plain.Exclude(Box, unit, digit);
        }
        plain.ExpectEngineToAgree();
        Reseed(round);
        EXPECT_EQ(RandomBetween(4, 4) + RandomBetween(4, 2), 8);  // draws nothing
        const float share = NextRandom();
        Reseed(round);
        ASSERT_EQ(RandomBetween(-32768, 32767), static_cast<int>(share * 65536) - 32768);
        host.yields = 0;
        Reseed(round);
        const bool ended = run.SolveAttempt();
        const float next = NextRandom();
        Reseed(round);
        ASSERT_EQ(ended, plain.Attempt()) << round;
        ASSERT_EQ(std::tuple(next, host.yields), std::tuple(NextRandom(), plain.passes)) << round;
        plain.ExpectEngineToAgree();
        ends.emplace(ended, HasEmptyCell());
    }
    EXPECT_EQ(ends.size(), 3U) << "not all of full, stopped and dead ends";
}

// Faults: memory beside a table is read or written, or a refused call has changed something.
TEST_F(SolverTable, RefusesIndexesOutOfBoundsWithError9) {
    struct Refusal {
        int first, last, first2, last2;  // of either index; 0, 0 when the second is not checked
        std::vector<void (*)(int, int)> routines;
    };
    const Refusal refusals[] = {
        {1, 81, 0, 0, {Call<RowOf>, Call<ColOf>, Call<BoxOf>, Call<CandidateCount>, Call<ShuffleCandidates>}},
        {1, 81, 0, 0, {Call<IsDuplicate>}},
        {1, 9, 0, 0, {Call<BandOf>, Call<StackOf>, Call<CountInRow>, Call<CountInCol>}},
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
                EXPECT_EQ(ErrorOf([&] { routine(wrong, 5); }), 9) << last << " " << wrong;
            for (const int wrong : {first2 - 1, last2 + 1})
                EXPECT_EQ(ErrorOf([&] { routine(5, wrong); }), last2 == 0 ? 0 : 9) << wrong;
        }
    PlainTable().ExpectEngineToAgree();
}
