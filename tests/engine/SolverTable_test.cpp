#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "EngineSupport.h"
#include "engine/Tables.h"

using namespace Global;

namespace {

// The table without anything kept beside it: each question is answered by a scan.
struct PlainTable {
    int entry[82][10]{};
    int boxDigit[10][10]{};

    PlainTable() {
        for (int cell = 1; cell <= 81; ++cell)
            for (int k = 0; k <= 9; ++k) entry[cell][k] = k;
        for (int box = 1; box <= 9; ++box)
            for (int digit = 1; digit <= 9; ++digit) boxDigit[box][digit] = -digit;
    }
    static int Row(int cell) { return (cell - 1) / 9 + 1; }
    static int Col(int cell) { return (cell - 1) % 9 + 1; }
    static int Box(int cell) { return (Row(cell) - 1) / 3 * 3 + (Col(cell) - 1) / 3 + 1; }

    void ExcludeWhere(int (*unitOf)(int), int unit, int digit) {
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit) entry[cell][digit] = -digit;
    }
    void Place(int cell, int digit) {
        for (int k = 1; k <= 9; ++k) entry[cell][k] = -k;
        entry[cell][0] = digit;
        boxDigit[Box(cell)][digit] = digit;
    }
    int Candidates(int cell) const {
        return static_cast<int>(
            std::count_if(entry[cell] + 1, entry[cell] + 10, [](int k) { return k > 0; }));
    }
    std::vector<int> Places(int (*unitOf)(int), int unit, int digit) const {
        std::vector<int> places;
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit && entry[cell][digit] == digit) places.push_back(cell);
        return places;
    }
    int Single(int& digit) const {
        for (int cell = 1; cell <= 81; ++cell)
            for (digit = 1; digit <= 9; ++digit)
                if (Candidates(cell) == 1 && entry[cell][0] == 0 && entry[cell][digit] > 0) return cell;
        for (int box = 1; box <= 9; ++box)
            for (digit = 1; digit <= 9; ++digit)
                if (const auto places = Places(Box, box, digit); places.size() == 1) return places[0];
        return 0;
    }
    std::set<int> Tied() const {
        std::map<int, std::set<int>> byCount;
        for (int cell = 1; cell <= 81; ++cell) byCount[Candidates(cell)].insert(cell);
        byCount.erase(0);
        return byCount.empty() ? std::set<int>{} : byCount.begin()->second;
    }
    bool Allowed(int cell, int digit) const {
        for (int line = 1; line <= 9; ++line) {
            const bool sameBand = (line - 1) / 3 == (Row(cell) - 1) / 3 && line != Row(cell);
            const bool sameStack = (line - 1) / 3 == (Col(cell) - 1) / 3 && line != Col(cell);
            if (sameBand && Places(Row, line, digit).size() >= 2) return true;
            if (sameStack && !Places(Col, line, digit).empty()) return true;
        }
        return false;
    }
};

void ExpectAgreement(const PlainTable& plain) {
    bool empty = false;
    for (int cell = 1; cell <= 81; ++cell) {
        for (int k = 0; k <= 9; ++k) ASSERT_EQ(TableEntry(cell, k), plain.entry[cell][k]) << cell << " " << k;
        ASSERT_EQ(CandidateCount(cell), plain.Candidates(cell)) << cell;
        empty = empty || plain.entry[cell][0] == 0;
    }
    ASSERT_EQ(HasEmptyCell(), empty);
    for (int unit = 1; unit <= 9; ++unit)
        for (int digit = 1; digit <= 9; ++digit) {
            ASSERT_EQ(BoxDigitEntry(unit, digit), plain.boxDigit[unit][digit]);
            ASSERT_EQ(RowHasTwoPlaces(unit, digit), plain.Places(PlainTable::Row, unit, digit).size() >= 2);
            ASSERT_EQ(ColHasPlace(unit, digit), !plain.Places(PlainTable::Col, unit, digit).empty());
            const int cell = unit * 9 - digit + 1;
            ASSERT_EQ(GuessAllowed(cell, digit), plain.Allowed(cell, digit)) << cell << " " << digit;
        }
    int digit = 0;
    int plainDigit = 0;
    const int single = FindSingle(digit);
    ASSERT_EQ(single, plain.Single(plainDigit));
    ASSERT_TRUE(single == 0 || digit == plainDigit);

    const std::set<int> tied = plain.Tied();
    const int guess = ChooseGuessCell();
    ASSERT_TRUE(tied.empty() ? guess == 0 : tied.count(guess) == 1) << guess;
    if (guess == 0) return;
    const CandidateList list = ShuffleCandidates(guess);
    const std::set<int> shuffled(list.digits.begin(), list.digits.begin() + list.count);
    ASSERT_EQ(static_cast<int>(shuffled.size()), plain.Candidates(guess));
    for (const int k : shuffled) ASSERT_GT(plain.entry[guess][k], 0);
}

}  // namespace

// Faults: what is kept beside the table drifts away from it.
TEST(TableBesideItsCounts, AgreesWithAScanAfterEveryStep) {
    std::mt19937 random(7);
    const auto draw = [&random](int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random);
    };
    for (int round = 0; round < 60; ++round) {
        ResetTable();
        PlainTable plain;
        ExpectAgreement(plain);
        // Sound rounds follow the rules; the others place anywhere, also in filled cells, and the digit 0.
        const bool sound = round % 3 == 0;
        Reseed(static_cast<std::uint64_t>(round));
        for (int step = 0; step < 90 && !HasFatalFailure(); ++step) {
            const int cell = sound ? ChooseGuessCell() : draw(1, 81);
            if (cell == 0) break;
            const int digit = sound ? ShuffleCandidates(cell).digits[0] : draw(1, 9);
            const int unit = draw(1, 9);
            const int kind = sound ? 0 : draw(1, 4);
            if (kind == 0) PlaceAndExclude(cell, digit);
            if (kind == 1) PlaceDigit(cell, step % 9 == 0 ? 0 : digit);
            if (kind == 2) ExcludeInRow(unit, digit);
            if (kind == 3) ExcludeInCol(unit, digit);
            if (kind == 4) ExcludeInBox(unit, digit);
            if (kind <= 1) plain.Place(cell, kind == 1 && step % 9 == 0 ? 0 : digit);
            using Unit = int (*)(int);
            for (const auto& [which, unitOf] :
                 {std::pair<int, Unit>{2, PlainTable::Row}, {3, PlainTable::Col}, {4, PlainTable::Box}})
                if (kind == 0 || kind == which)
                    plain.ExcludeWhere(unitOf, kind == 0 ? unitOf(cell) : unit, digit);
            ExpectAgreement(plain);
        }
    }
}

// Faults: memory beside a table is read or written, or a refused call has changed something.
TEST(TableIndexes, OutOfBoundsAreError9) {
    using Routine = void (*)(int, int);
    struct Refusal {
        Routine routine;
        int first, last;    // of the first index
        int first2, last2;  // of the second one
    };
    constexpr Refusal refusals[] = {
        {[](int cell, int) { RowOf(cell), ColOf(cell); }, 1, 81, -99, 999},
        {[](int cell, int) { BoxOf(cell); }, 1, 81, -99, 999},
        {[](int cell, int) { CandidateCount(cell); }, 1, 81, -99, 999},
        {[](int cell, int) { ShuffleCandidates(cell); }, 1, 81, -99, 999},
        {[](int cell, int digit) { IsDuplicate(cell, digit); }, 1, 81, -99, 999},
        {[](int row, int digit) { CountInRow(row, digit); }, 1, 9, -99, 999},
        {[](int col, int digit) { CountInCol(col, digit); }, 1, 9, -99, 999},
        {[](int cell, int k) { TableEntry(cell, k); }, 0, 81, 0, 9},
        {[](int box, int digit) { BoxDigitEntry(box, digit); }, 0, 9, 0, 9},
        {[](int cell, int digit) { GuessAllowed(cell, digit); }, 1, 81, 1, 9},
        {[](int row, int digit) { RowHasTwoPlaces(row, digit); }, 1, 9, 1, 9},
        {[](int col, int digit) { ColHasPlace(col, digit); }, 1, 9, 1, 9},
        {[](int box, int position) { BoxCellIndex(box, position); }, 1, 9, 1, 9},
        {PlaceDigit, 1, 81, 0, 9},
        {ExcludeInRow, 1, 9, 1, 9},
        {ExcludeInCol, 1, 9, 1, 9},
        {ExcludeInBox, 1, 9, 1, 9},
    };
    ResetTable();
    for (const Refusal& refusal : refusals) {
        const auto number = &refusal - refusals;
        for (const int wrong : {refusal.first - 1, refusal.last + 1, -32768, 32767})
            EXPECT_EQ(ErrorOf([&] { refusal.routine(wrong, 5); }), 9) << number << " " << wrong;
        for (const int wrong : {refusal.first2 - 1, refusal.last2 + 1})
            EXPECT_EQ(ErrorOf([&] { refusal.routine(5, wrong); }), refusal.last2 == 9 ? 9 : 0) << number;
    }
    ExpectAgreement(PlainTable());
}

// Faults: a bound is passed or never reached, some choices come more often, draws are wasted.
TEST(RandomDraws, StayBetweenTheirBounds) {
    for (std::uint64_t seed = 0; seed < 20000; ++seed) {
        Reseed(seed);
        EXPECT_EQ(RandomBetween(4, 4) + RandomBetween(4, 2), 8);  // draws nothing
        const double share = NextRandom();
        ASSERT_LT(share, 1.0);
        Reseed(seed);
        ASSERT_EQ(RandomBetween(-32768, 32767), static_cast<int>(share * 65536) - 32768);
    }
}

TEST(RandomDraws, MakeEveryChoiceEquallyLikely) {
    ResetTable();
    for (int digit = 1; digit <= 5; ++digit) ExcludeInBox(3, digit);  // nine tied cells, four candidates each
    std::array<int, 82> cells{};
    std::array<std::array<int, 10>, 4> digits{};
    for (std::uint64_t seed = 0; seed < 9000; ++seed) {
        Reseed(seed);
        const int cell = ChooseGuessCell();
        ++cells[Slot(cell)];
        const CandidateList list = ShuffleCandidates(cell);
        for (std::size_t n = 0; n < 4; ++n) ++digits[n][Slot(list.digits[n])];
    }
    for (int position = 1; position <= 9; ++position)
        EXPECT_NEAR(cells[Slot(BoxCellIndex(3, position))], 1000, 150);
    for (const auto& counts : digits)
        for (std::size_t digit = 6; digit <= 9; ++digit) EXPECT_NEAR(counts[digit], 2250, 200);
}
