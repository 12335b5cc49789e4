#include <algorithm>

#include "EngineSupport.h"

using namespace Global;

namespace {

class SearchTest : public testing::Test {
  protected:
    // A cell with the text 0 stays empty and without a candidate, so that no attempt succeeds.
    void PuzzleWithoutSolution() {
        Fill(puzzle, FromText(uniquePuzzle));
        puzzle.Cells(1, 3).Value = "0";
    }
    // One seed is asked for in each attempt.
    int Attempts() const { return static_cast<int>(host.seed) - 1; }
    ScriptedHost host;
    RangeClass puzzle;
    RangeClass working;
};

constexpr std::string_view question =
    "Cette grille demande un certain temps pour être résolue. Voulez-vous continuer ?\r\r"
    "Pour plus d'informations, voir le menu Édition/Préférences, onglet Niveau\r"
    "et l'aide associée (appuyez sur F1 lorsque la boite de dialogue est affichée).";

// Cells (1, 1) and (2, 1) are tied, and no guess in them is allowed. More such cells below are allowed unless
// `alone`.
void LoadStuckTable(bool alone) {
    ResetTable();
    for (int digit = 3; digit <= 9; ++digit) ExcludeInCol(1, digit);
    for (const int digit : {1, 2}) {
        for (const int unit : {2, 3}) ExcludeInBox(unit, digit), ExcludeInCol(unit, digit);
        for (int row = 3; row <= (alone ? 9 : 3); ++row) ExcludeInRow(row, digit);
    }
}

}  // namespace

// Faults: a wrong solution, or a given changed on the way.
TEST_F(SearchTest, SolutionsAgreeWithTheExhaustiveSolver) {
    const ExhaustiveSolver oracle(FromText(uniquePuzzle));
    ASSERT_EQ(oracle.Solutions(), 1);
    host.AnswerAlways(platform::MessageButton::Yes);
    for (int run = 0; run < 100; ++run) {
        Fill(puzzle, FromText(uniquePuzzle));
        Fill(working, oracle.First());  // whatever stood there before plays no part
        Solve(puzzle, working);
        ASSERT_EQ(FromRange(working), oracle.First());
        ASSERT_EQ(FromRange(puzzle), oracle.First());
        Fill(puzzle, {});
        Solve(puzzle, working);
        ASSERT_TRUE(IsSolution(FromRange(working))) << "seed " << host.seed;
    }
}

// Faults: a clash that is missed, reported at another cell, or solved all the same.
TEST_F(SearchTest, ClashesNameTheFirstCellOfRowOrColumnThenOfBox) {
    // A 5 at row 3, column 7 and at this cell; the last pair clashes in a box only, and a row comes first.
    const std::pair<int, const char*> clashes[] = {{27, "3, Column 7"},
                                                   {70, "3, Column 7"},
                                                   {19, "3, Column 1"},
                                                   {17, "2, Column 8"},
                                                   {-17, "9, Column 1"}};
    for (const auto& [cell, named] : clashes) {
        Digits givens{};
        givens[24] = givens[Slot(std::abs(cell) - 1)] = 5;
        if (cell < 0) givens[72] = givens[80] = 5;
        Fill(puzzle, givens);
        host.Expect(platform::MessageButton::Ok);
        Solve(puzzle, working);
        EXPECT_EQ(host.boxes.back().text, std::string("Duplicate entry of Value 5 in Row ") + named);
        EXPECT_EQ(host.boxes.back().style, 48);
        EXPECT_EQ(FromRange(working), givens);
        EXPECT_EQ(FromRange(puzzle), givens);
    }
}

// Faults: a text from a file used as an index.
TEST_F(SearchTest, TextsThatAreNoDigitsEndTheRunWithTheirError) {
    Fill(puzzle, FromText(uniquePuzzle));
    for (const auto& [text, error] : {std::pair{"12", 9}, {"-1", 9}, {"abc", 13}, {"99999", 6}}) {
        puzzle.Cells(9, 9).Value = text;
        EXPECT_EQ(ErrorOf([this] { Solve(puzzle, working); }), error) << text;
    }
}

// Faults: too many or too few attempts, a question that says or does something else.
TEST_F(SearchTest, TheUserIsAskedAfterTwentyAttemptsAndTwentyMoreForEachYes) {
    PuzzleWithoutSolution();
    host.answers = {platform::MessageButton::Yes, platform::MessageButton::No};
    FakeProgress window;
    Solve(puzzle, working);
    EXPECT_EQ(Attempts(), 40);
    ASSERT_EQ(host.boxes.size(), 2U);
    EXPECT_EQ(host.boxes[0].text, question);
    EXPECT_EQ(host.boxes[0].style, 52);
    EXPECT_EQ(host.boxes[0].helpContext, 240);
    EXPECT_EQ(FromRange(working), FromText(uniquePuzzle));
    EXPECT_EQ(FromRange(puzzle), FromText(uniquePuzzle));
    ASSERT_EQ(window.bar.size(), 41U);
    EXPECT_EQ(std::vector(window.bar.begin() + 19, window.bar.begin() + 22),
              (std::vector<double>{95, 100, 5}));
}

TEST_F(SearchTest, TheLimitFollowsTheSettingAtTheMomentOfTheRun) {
    PuzzleWithoutSolution();
    // 0.025 and 0.075 make 20.5 and 21.5.
    const std::vector<std::pair<std::string, int>> limits{
        {"1", 40}, {"3 tours", 80}, {"abc", 20}, {"0.025", 20}, {"0.075", 22}, {"-1", 0}, {"-9", 0}};
    for (const auto& [text, attempts] : limits) {
        host.WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\nResolLoop=" + text);
        host.Expect(platform::MessageButton::No);
        FakeProgress window;
        const int before = Attempts();
        Solve(puzzle, working);
        EXPECT_EQ(Attempts() - before, attempts) << text;
        for (const double percent : window.bar) EXPECT_TRUE(percent >= 0 && percent <= 100) << text;
    }
    host.WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\nResolLoop=2000");
    EXPECT_EQ(ErrorOf([this] { Solve(puzzle, working); }), 6);
}

TEST_F(SearchTest, AHiddenWindowEndsTheRunBeforeTheNextAttempt) {
    PuzzleWithoutSolution();
    for (const int visibleFor : {0, 1, 8}) {
        FakeProgress window(visibleFor);
        const int before = Attempts();
        Solve(puzzle, working);
        EXPECT_EQ(Attempts() - before, std::max(visibleFor - 1, 0));
        EXPECT_EQ(FromRange(working), FromText(uniquePuzzle));
        EXPECT_TRUE(SolveFromRanges());  // no failure, unlike a refusal
    }
    host.Expect(platform::MessageButton::No);
    EXPECT_FALSE(SolveFromRanges());
}

// Faults: an attempt without an end, or ended while it could still move.
TEST_F(SearchTest, AnAttemptStopsAfterOneMinuteWithTheCellsFilledSoFar) {
    // Readings at 10, 20, ... seconds: the limit, set at the first, has passed at the eighth.
    host.stepPerReading = std::chrono::seconds(10);
    Solve(puzzle, working);
    EXPECT_EQ(Attempts(), 1);
    EXPECT_EQ(host.yields, 7);
    const Digits filled = FromRange(working);
    EXPECT_EQ(std::count(filled.begin(), filled.end(), 0), 81 - 6);
}

TEST_F(SearchTest, AnAttemptStopsAtOnceWhenNoTiedCellHasAnAllowedGuess) {
    LoadStuckTable(true);
    EXPECT_TRUE(SolveAttempt());
    EXPECT_EQ(host.yields, 1);
    EXPECT_EQ(TableEntry(1, 0), 0);
}

TEST_F(SearchTest, AnAttemptGoesOnWhileAnotherTiedCellCanMove) {
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        LoadStuckTable(false);
        Reseed(seed);
        SolveAttempt();
        EXPECT_GT(CountInCol(1, 1) + CountInCol(1, 2), 0) << seed;
    }
}
