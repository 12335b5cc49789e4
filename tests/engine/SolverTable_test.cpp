#include <map>
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
    int value[82]{}, passes = 0;
    std::vector<Numbers> candidates = std::vector(82, Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9});
    Numbers placed[10];  // in a box

    void Exclude(Unit unitOf, int unit, int digit) {
        for (const int cell : Places(unitOf, unit, digit)) candidates[cell].erase(digit);
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
    bool Allowed(int cell, int digit) const {
        const auto beside = [&](Unit line, int step) {
            return Places(line, (line(cell) - 1) / 3 * 3 + (line(cell) - 1 + step) % 3 + 1, digit).size();
        };
        return beside(Row, 1) >= 2 || beside(Row, 2) >= 2 || beside(Col, 1) + beside(Col, 2) > 0;
    }
    static int Take(Numbers& numbers) {
        const double share = numbers.size() == 1 ? 0 : NextRandom();
        const auto position = static_cast<int>(share * static_cast<double>(numbers.size()));
        return numbers.extract(std::next(numbers.begin(), position)).value();
    }
    // The cell and the digit; a digit 0 when the cell drawn among the tied has none that is allowed.
    std::pair<int, int> Move(Numbers tied) const {
        int cell = *tied.begin(), digit = 0;
        if (candidates[cell].size() == 1) return {cell, *candidates[cell].begin()};
        for (int n = 9; n < 90; ++n)
            if (Numbers at = Places(Box, n / 9, n % 9 + 1); at.size() == 1) return {*at.begin(), n % 9 + 1};
        cell = Take(tied);
        for (Numbers rest = candidates[cell]; !rest.empty();)
            if (const int next = Take(rest); digit == 0 && Allowed(cell, next)) digit = next;
        return {cell, digit};
    }
    bool Attempt(int lastPass) {
        for (int cell = 1; cell <= 81; ++cell)
            if (value[cell] != 0) PlaceAndExclude(cell, value[cell]);
        while (std::count(value + 1, value + 82, 0) > 0) {
            if (++passes == lastPass) return true;
            std::map<std::size_t, Numbers> byCount;
            for (int cell = 1; cell <= 81; ++cell) byCount[candidates[cell].size()].insert(cell);
            const auto fewest = byCount.upper_bound(0);
            if (fewest == byCount.end()) return false;
            const auto [cell, digit] = Move(fewest->second);
            bool moves = digit != 0;
            for (const int other : fewest->second)
                for (const int k : candidates[other]) moves = moves || Allowed(other, k);
            if (!moves) return true;
            if (digit != 0) PlaceAndExclude(cell, digit);
        }
        return true;
    }
    void ExpectEngineToAgree() const {
        const auto sign = [](const Numbers& numbers, int k) { return numbers.count(k) == 1 ? k : -k; };
        for (int n = 9; n < 90; ++n) {
            const int unit = n / 9, digit = n % 9 + 1, cell = n - 8;
            ASSERT_EQ(TableEntry(cell, 0), value[cell]);
            for (int k = 1; k <= 9; ++k) ASSERT_EQ(TableEntry(cell, k), sign(candidates[cell], k)) << cell;
            ASSERT_EQ(CandidateCount(cell), candidates[cell].size()) << cell;
            ASSERT_EQ(GuessAllowed(cell, digit), Allowed(cell, digit)) << cell << " " << digit;
            ASSERT_EQ((BandOf(unit) - 1) * 3 + StackOf(unit), unit);
            ASSERT_EQ(BoxDigitEntry(unit, digit), sign(placed[unit], digit)) << unit;
            ASSERT_EQ(RowHasTwoPlaces(unit, digit), Places(Row, unit, digit).size() >= 2);
            ASSERT_EQ(ColHasPlace(unit, digit), !Places(Col, unit, digit).empty());
        }
    }
};

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
            const int placed = step == 9 ? 0 : digit;
            if (kind == 1) PlaceDigit(cell, placed), plain.Place(cell, placed);
            if (kind == 2) PlaceAndExclude(cell, digit), plain.PlaceAndExclude(cell, digit);
            if (kind == 3) ExcludeInRow(unit, digit), plain.Exclude(Row, unit, digit);
            if (kind == 4) ExcludeInCol(unit, digit), plain.Exclude(Col, unit, digit);
            if (kind == 5) ExcludeInBox(unit, digit), plain.Exclude(Box, unit, digit);
        }
        plain.ExpectEngineToAgree();
        // Readings at 10, 20, ... seconds: the limit, set at the first, has passed at the eighth.
        host.stepPerReading = std::chrono::seconds(round % 3 == 0 ? 10 : 0);
        host.yields = 0;
        Reseed(round);
        const bool ended = run.SolveAttempt();
        const float next = NextRandom();
        Reseed(round);
        ASSERT_EQ(ended, plain.Attempt(round % 3 == 0 ? 7 : 0)) << round;
        ASSERT_EQ(std::tuple(next, host.yields), std::tuple(NextRandom(), plain.passes)) << round;
        plain.ExpectEngineToAgree();
        ends.emplace(ended, HasEmptyCell());
    }
    EXPECT_EQ(ends.size(), 3U) << "not all of full, stopped and dead ends";
}

// Faults: memory beside a table or a sheet is written.
TEST_F(SolverTable, RefusesIndexesOutOfBounds) {
    for (const auto exclude : {ExcludeInRow, ExcludeInCol, ExcludeInBox})
        for (const int wrong : {0, 10}) EXPECT_ANY_THROW(exclude(wrong, 5)) << wrong;
    for (const int wrong : {0, 82}) EXPECT_ANY_THROW(PlaceDigit(wrong, 5)) << wrong;
    for (const int wrong : {-1, 10}) EXPECT_ANY_THROW(PlaceDigit(5, wrong)) << wrong;
}
