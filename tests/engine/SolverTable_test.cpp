// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <random>
#include <set>

#include "EngineSupport.h"

using namespace Global;

namespace {

// The table and an attempt by the plain rules: every question is answered by a scan, one digit goes down in
// each pass.
struct PlainTable : GridShape {
    using Unit = int (*)(int);  // of a cell
    int value[82]{}, draws = 0;
    bool candidate[82][10]{}, placed[10][10]{};  // placed: box, digit
    int drawsAtContradiction = -1;

    PlainTable() {
        for (auto& cell : candidate) std::fill(cell + 1, cell + 10, true);
    }
    void Exclude(Unit unitOf, int unit, int digit) {
        for (int cell = 1; cell <= 81; ++cell)
            if (unitOf(cell) == unit) candidate[cell][digit] = false;
    }
    void Place(int cell, int digit) {
        std::fill(candidate[cell], candidate[cell] + 10, false);
        value[cell] = digit;
        placed[Box(cell)][digit] = true;
    }
    void PlaceAndExclude(int cell, int digit) {
        Place(cell, digit);
        for (const Unit unitOf : {Row, Col, Box}) Exclude(unitOf, unitOf(cell), digit);
    }
    int Count(int cell) const { return int(std::count(candidate[cell] + 1, candidate[cell] + 10, true)); }
    int Places(Unit unitOf, int unit, int digit) const {
        int count = 0;
        for (int cell = 1; cell <= 81; ++cell) count += unitOf(cell) == unit && candidate[cell][digit];
        return count;
    }
    bool Full() const { return std::count(value + 1, value + 82, 0) == 0; }
    bool Allowed(int cell, int digit) const {
        const auto beside = [&](Unit line, int step) {
            return Places(line, (line(cell) - 1) / 3 * 3 + (line(cell) - 1 + step) % 3 + 1, digit);
        };
        return beside(Row, 1) >= 2 || beside(Row, 2) >= 2 || beside(Col, 1) + beside(Col, 2) > 0;
    }
    int Take(std::vector<int>& numbers) {
        const double share = numbers.size() == 1 ? 0 : (++draws, NextRandom());
        const auto taken = numbers.begin() + int(share * double(numbers.size()));
        const int number = *taken;
        numbers.erase(taken);
        return number;
    }
    // The first naked single in cell order, else the first digit with one place in a box; 0 if there is none.
    std::pair<int, int> Single() const {
        const auto firstOf = [](const bool* from) { return int(std::find(from, from + 9, true) - from) + 1; };
        for (int cell = 1; cell <= 81; ++cell)
            if (Count(cell) == 1) return {cell, firstOf(candidate[cell] + 1)};
        int places[10][10]{}, last[10][10]{};
        for (int n = 9; n < 9 * 82; ++n)
            if (const int cell = n / 9, digit = n % 9 + 1; candidate[cell][digit])
                ++places[Box(cell)][digit], last[Box(cell)][digit] = cell;
        for (int n = 9; n < 90; ++n)
            if (places[n / 9][n % 9 + 1] == 1) return {last[n / 9][n % 9 + 1], n % 9 + 1};
        return {};
    }
    // An empty cell without candidate, or a digit that a box neither holds nor can take.
    bool Contradicts() const {
        bool taken[10][10]{};
        for (int cell = 1; cell <= 81; ++cell) {
            if (value[cell] == 0 && Count(cell) == 0) return true;
            taken[Box(cell)][value[cell]] = true;
            for (int k = 1; k <= 9; ++k) taken[Box(cell)][k] |= candidate[cell][k];
        }
        return std::any_of(taken + 1, taken + 10,
                           [](const bool* box) { return std::count(box + 1, box + 10, true) < 9; });
    }
    // False: no empty cell has a candidate, or none of the tied ones has one that is allowed. Notes the first
    // contradiction on the way.
    bool Attempt() {
        for (int cell = 1; cell <= 81; ++cell)
            if (value[cell] != 0) PlaceAndExclude(cell, value[cell]);
        while (!Full()) {
            if (drawsAtContradiction < 0 && Contradicts()) drawsAtContradiction = draws;
            auto [cell, digit] = Single();
            if (cell == 0) {
                std::vector<int> tied;
                int fewest = 10;
                for (int other = 1; other <= 81; ++other) {
                    const int count = Count(other);
                    if (count == 0 || count > fewest) continue;
                    if (count < fewest) tied.clear();
                    fewest = count;
                    tied.push_back(other);
                }
                bool moves = false;
                for (const int other : tied)
                    for (int k = 1; k <= 9; ++k) moves |= candidate[other][k] && Allowed(other, k);
                if (tied.empty()) return false;
                cell = Take(tied);
                std::vector<int> rest;
                for (int k = 1; k <= 9; ++k)
                    if (candidate[cell][k]) rest.push_back(k);
                while (!rest.empty())
                    if (const int next = Take(rest); digit == 0 && Allowed(cell, next)) digit = next;
                if (!moves) return false;
            }
            if (digit != 0) PlaceAndExclude(cell, digit);
        }
        return true;
    }
    bool SameAsEngine() const {
        for (int cell = 1; cell <= 81; ++cell) {
            if (TableEntry(cell, 0) != value[cell]) return false;
            for (int k = 1; k <= 9; ++k)
                if (TableEntry(cell, k) != (candidate[cell][k] ? k : -k)) return false;
        }
        return true;
    }
    void ExpectTheSameAnswers() const {
        EXPECT_TRUE(SameAsEngine());
        EXPECT_EQ(HasEmptyCell(), !Full());
        int digit = 0;
        const int single = FindSingle(digit);
        EXPECT_EQ(std::pair(single, single == 0 ? 0 : digit), Single());
        for (int n = 9; n < 90; ++n) {
            const int unit = n / 9, k = n % 9 + 1, cell = n - 8;
            ASSERT_EQ(CandidateCount(cell), Count(cell)) << cell;
            ASSERT_EQ(GuessAllowed(cell, k), Allowed(cell, k)) << cell << " " << k;
            ASSERT_EQ((BandOf(unit) - 1) * 3 + StackOf(unit), unit);
            ASSERT_EQ(BoxDigitEntry(unit, k), placed[unit][k] ? k : -k) << unit;
            ASSERT_EQ(RowHasTwoPlaces(unit, k), Places(Row, unit, k) >= 2);
            ASSERT_EQ(ColHasPlace(unit, k), Places(Col, unit, k) > 0);
        }
    }
};

enum class Kind { Empty, Singles, Guesses, ManySolutions, Contradictory, Anything };

void PrintTo(Kind kind, std::ostream* out) {
    constexpr const char* names[] = {"Empty",         "Singles",       "Guesses",
                                     "ManySolutions", "Contradictory", "Anything"};
    *out << names[static_cast<std::size_t>(kind)];
}

struct SolverTable : RunTest, testing::WithParamInterface<Kind> {
    int Draw(int last) { return static_cast<int>(random() % static_cast<unsigned>(last)) + 1; }
    // A puzzle of the kind with its digits renamed and its rows or columns turned over.
    std::string Givens() {
        std::string text = emptyGrid, names = "123456789";
        const std::string& model = GetParam() == Kind::Singles ? easyPuzzle : guessPuzzle;
        if (GetParam() == Kind::Empty) return text;
        std::shuffle(names.begin(), names.end(), random);
        const bool turned = Draw(2) == 1;
        for (int cell = 1; cell <= 81; ++cell)
            if (const int digit = At(model, turned ? 82 - cell : cell); digit != 0)
                text = With(text, std::size_t(cell), names[std::size_t(digit) - 1] - '0');
        const auto cell = std::size_t(Draw(81));
        if (GetParam() == Kind::Contradictory) text = With(text, cell, Draw(9));
        for (int n = Draw(25); GetParam() == Kind::ManySolutions && n > 0; --n)
            text = With(text, std::size_t(Draw(81)), 0);
        return text;
    }
    // The same on both tables; anything anywhere, also in filled cells. A digit 0 leaves its cell empty.
    void Scribble(PlainTable& plain, int steps) {
        for (int step = 0; step < steps; ++step) {
            const int kind = Draw(5), cell = Draw(81), unit = Draw(9), digit = Draw(9);
            const int placing = step == 9 ? 0 : digit;
            if (kind < 3) PlaceDigit(cell, placing), plain.Place(cell, placing);
            if (kind == 3) ExcludeInRow(unit, digit), plain.Exclude(GridShape::Row, unit, digit);
            if (kind == 4) ExcludeInCol(unit, digit), plain.Exclude(GridShape::Col, unit, digit);
            if (kind == 5) ExcludeInBox(unit, digit), plain.Exclude(GridShape::Box, unit, digit);
        }
    }
    // After the first attempt the run comes to the same end as attempts by the plain rules.
    void ExpectRunToAgree(const PlainTable& loaded, std::uint64_t seed) {
        host.seed = seed;
        host.AnswerAlways(MessageButton::No);
        const bool solved = run.SolveFromRanges();
        PlainTable plain;
        bool ended = false;
        int attempts = 0;
        while (attempts < 20 && !ended) {
            plain = loaded;
            Reseed(seed + std::uint64_t(++attempts));
            ended = plain.Attempt();
        }
        ASSERT_EQ(solved, ended);
        ASSERT_EQ(host.seed, seed + std::uint64_t(attempts));
        for (int cell = 1; solved && cell <= 81; ++cell)
            ASSERT_EQ(working.Cells(Row(cell), Col(cell)).Value, std::to_string(plain.value[cell]));
    }
    const std::string guessPuzzle =
        "600070050070100900300000007050700006002000400800005010900000002006002030030010004";
    std::mt19937 random{static_cast<unsigned>(GetParam())};
    using MessageButton = platform::MessageButton;
};

}  // namespace

// Faults: a search that goes another way than the rules, draws too often, ends too early or too late, calls
// half a grid solved, or cuts an attempt short that could have ended well; a table that drifts away from the
// sets beside it.
TEST_P(SolverTable, AndItsAttemptsAgreeWithThePlainRules) {
    std::set<bool> ends;
    const char* const asked = std::getenv("NINARIX_ORACLE_ROUNDS");
    const std::uint64_t rounds = asked ? std::stoul(asked) : 1000;
    for (std::uint64_t round = 0; round < rounds; ++round) {
        ResetTable();
        PlainTable plain;
        const std::string givens = Givens();
        if (GetParam() == Kind::Anything) {
            Scribble(plain, int(round % 40));
            if (round < 300) plain.ExpectTheSameAnswers();
        } else {
            for (int cell = 1; cell <= 81; ++cell)
                if (const int digit = At(givens, cell); digit != 0)
                    PlaceDigit(cell, digit), plain.Place(cell, digit);
        }
        const PlainTable loaded = plain;

        Reseed(round);
        const bool plainEnded = plain.Attempt();
        const bool contradiction = plain.drawsAtContradiction >= 0;
        Reseed(round);
        for (int n = contradiction ? plain.drawsAtContradiction : plain.draws; n > 0; --n) NextRandom();
        const float next = NextRandom();

        Reseed(round);
        const bool ended = run.SolveAttempt();
        ASSERT_EQ(ended, plainEnded && !contradiction) << round;
        ASSERT_EQ(NextRandom(), next) << round;
        ASSERT_EQ(HasEmptyCell(), !ended) << round;
        ASSERT_TRUE(contradiction || plain.SameAsEngine()) << round;
        // The plain rules cannot fill a grid either in which a contradiction has shown.
        const bool clash = GetParam() == Kind::Anything || GetParam() == Kind::Contradictory;
        ASSERT_TRUE(!contradiction || !plain.Full() || clash) << round;
        ends.insert(ended);
        if (round % 20 != 0 || clash || GetParam() == Kind::Empty) continue;
        Puzzle(givens);
        ExpectRunToAgree(loaded, round * 64);
    }
    EXPECT_EQ(ends.size(), GetParam() == Kind::Singles ? 1U : 2U) << "only one kind of end was met";
}

INSTANTIATE_TEST_SUITE_P(, SolverTable,
                         testing::Values(Kind::Empty, Kind::Singles, Kind::Guesses, Kind::ManySolutions,
                                         Kind::Contradictory, Kind::Anything),
                         [](const auto& kind) { return testing::PrintToString(kind.param); });

using SolverLimits = RunTest;

// Faults: a search that waits for its time limit, or for good, on a table that no guess can change.
TEST_F(SolverLimits, AStuckAttemptIsADeadEnd) {
    // Cells 1 and 10 can take 1 and 2, which no other cell can; lines clash, boxes do not.
    for (int box = 1; box <= 9; ++box)
        for (int position = 1; position <= 9; ++position) {
            const int digit = (position + 1) % 9 + 1;
            if (box > 1 || (digit != 3 && digit != 6))
                PlaceDigit(BoxCellIndex(box, position), box == 1 && digit < 3 ? digit * 3 : digit);
        }
    host.stepPerReading = std::chrono::seconds(1);
    EXPECT_FALSE(run.SolveAttempt());
    EXPECT_EQ(std::pair(CandidateCount(1), CandidateCount(10)), std::pair(2, 2));
}

// Faults: memory beside a table or a sheet is written.
TEST_F(SolverLimits, IndexesOutOfBoundsAreRefused) {
    for (const auto exclude : {ExcludeInRow, ExcludeInCol, ExcludeInBox})
        for (const int wrong : {0, 10}) EXPECT_ANY_THROW(exclude(wrong, 5)) << wrong;
    for (const int wrong : {0, 82}) EXPECT_ANY_THROW(PlaceDigit(wrong, 5)) << wrong;
    for (const int wrong : {-1, 10}) EXPECT_ANY_THROW(PlaceDigit(5, wrong)) << wrong;
}
