#include <algorithm>
#include <set>

#include "EngineSupport.h"

using namespace Global;

namespace {

class GeneratorTest : public testing::Test {
  protected:
    void Level(const std::string& text) {
        host.WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\nLevelValue=" + text + "\r\n");
    }
    // How many givens the puzzle has; each must be the solution's digit, bold and locked.
    int CountGivens(int mostOfAKind) {
        std::array<int, 10> ofBox{};
        std::array<int, 10> ofDigit{};
        int givens = 0;
        for (int cell = 1; cell <= 81; ++cell) {
            const clsXlCellClass& given = puzzle.Cells(RowOf(cell), ColOf(cell));
            EXPECT_EQ(given.Font.Bold, given.Locked);
            EXPECT_EQ(given.Value, given.Locked ? working.Cells(RowOf(cell), ColOf(cell)).Value : "");
            if (!given.Locked) continue;
            ++givens;
            ++ofBox[Slot(BoxOf(cell))];
            ++ofDigit[Slot(given.Value[0] - '0')];
        }
        EXPECT_LE(*std::max_element(ofBox.begin(), ofBox.end()), mostOfAKind);
        EXPECT_LE(*std::max_element(ofDigit.begin(), ofDigit.end()), mostOfAKind);
        return givens;
    }

    ScriptedHost host;
    RangeClass puzzle;
    RangeClass working;
};

}  // namespace

// Faults: a grid that is no Sudoku, too many or too few givens, a puzzle that belongs to another solution.
TEST_F(GeneratorTest, EveryGridOfEveryLevelIsSound) {
    host.AnswerAlways(platform::MessageButton::Yes);
    for (const int level : {7, 6, 5, 4}) {
        Level(std::to_string(level));
        FakeProgress window;
        for (int run = 0; run < 250; ++run) {
            ASSERT_TRUE(CreateGrid(puzzle, working));
            const Digits solution = FromRange(working);
            ASSERT_TRUE(IsSolution(solution)) << "level " << level << " seed " << host.seed;
            const int givens = CountGivens(level - 1);
            ASSERT_TRUE(givens >= (level - 1) * 9 - 8 && givens <= (level - 1) * 9) << givens;
            const ExhaustiveSolver oracle(FromRange(puzzle));
            ASSERT_GE(oracle.Solutions(), 1);
            if (oracle.Solutions() > 1) continue;
            ASSERT_EQ(oracle.First(), solution);
            Solve(puzzle, working);
            ASSERT_EQ(FromRange(working), solution);
        }
        // A rejected try must not spoil the next ones: hardly any would be accepted then.
        EXPECT_LT(std::count(window.bar.begin(), window.bar.end(), 0.0), 250 * 120) << level;
    }
}

// Faults: boxes that hinder each other, a triple that never comes.
TEST_F(GeneratorTest, SeedsThreeIndependentBoxes) {
    std::set<std::set<int>> triples;
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        ResetTable();
        Reseed(seed);
        SeedBoxes();
        std::set<int> boxes;
        for (int box = 1; box <= 9; ++box)
            if (TableEntry(BoxCellIndex(box, 1), 0) != 0) boxes.insert(box);
        triples.insert(boxes);
    }
    EXPECT_EQ(triples,
              (std::set<std::set<int>>{{1, 5, 9}, {1, 6, 8}, {2, 4, 9}, {2, 6, 7}, {3, 4, 8}, {3, 5, 7}}));
}

// Faults: a level counted wrongly at its ends, a choice that never ends, a setting that writes beside a pool.
TEST_F(GeneratorTest, GivensFollowTheLevelAndAnUnknownOneIsMedium) {
    Fill(puzzle, FromText(uniquePuzzle));
    host.AnswerAlways(platform::MessageButton::Yes);
    Solve(puzzle, working);
    const std::vector<std::pair<std::string, int>> levels{{"2", 2},  {"3", 3},      {"9", 9},    {"1", 5},
                                                          {"10", 5}, {"-32768", 5}, {"32767", 5}};
    for (const auto& [text, level] : levels) {
        Level(text);
        std::set<int> counts;
        for (int run = 0; run < 100; ++run) {
            ChooseGivens();
            counts.insert(CountGivens(level - 1));
        }
        const int most = (level - 1) * 9;
        EXPECT_EQ(*counts.begin(), most - 8) << text;
        // Nearly full boxes often need a new choice, and then seldom get the highest number.
        EXPECT_TRUE(*counts.rbegin() == most || (level == 9 && *counts.rbegin() < most)) << text;
    }
    for (const auto& [text, error] : {std::pair{"abc", 13}, {"5x", 13}, {"99999", 6}}) {
        Level(text);
        EXPECT_EQ(ErrorOf(ChooseGivens), error) << text;
    }
}

// Faults: a solution with holes, a cancel taken for a failure.
TEST_F(GeneratorTest, AnAttemptStoppedByTheClockIsNoSolution) {
    host.stepPerReading = std::chrono::minutes(2);
    host.onYield = [this] {
        if (host.yields == 5) host.stepPerReading = {};
    };
    ASSERT_TRUE(CreateGrid(puzzle, working));
    EXPECT_GT(host.yields, 5);
    EXPECT_TRUE(IsSolution(FromRange(working)));
}

TEST_F(GeneratorTest, ACancelledRunIsNoFailureAndKeepsAFullSolution) {
    Level("4");
    host.AnswerAlways(platform::MessageButton::Yes);
    for (const int visibleFor : {0, 1, 2, 40}) {
        FakeProgress window(visibleFor);
        EXPECT_TRUE(CreateGrid(puzzle, working)) << visibleFor;
        EXPECT_LE(window.bar.size(), Slot(std::max(visibleFor, 1)));
        EXPECT_TRUE(IsSolution(FromRange(working))) << visibleFor;
    }
}
