#include "engine/clsGrid.h"

#include <set>

#include "EngineSupport.h"

namespace {

void FillGrid(clsGrid& grid, const Digits& digits, bool locked) {
    for (int index = 1; index <= 81; ++index) {
        grid.Cells(index)->Value(static_cast<std::uint8_t>(digits[Slot(index - 1)]));
        grid.Cells(index)->Locked(locked && digits[Slot(index - 1)] != 0);
    }
}

Digits FromGrid(const clsGrid& grid) {
    Digits digits{};
    for (int index = 1; index <= 81; ++index) digits[Slot(index - 1)] = grid.Cells(index)->Value();
    return digits;
}

constexpr std::string_view rowsAndColumnsOnly =
    "123456789234567891345678912456789123567891234678912345789123456891234567912345678";

class GridEngine : public testing::Test {
  protected:
    void Option(const std::string& line) {
        host.WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\n" + line);
    }
    ScriptedHost host;
    clsGrid grid;
};

}  // namespace

// Faults: a view that is not told, a question about changes that were none, a file's value cut down.
TEST(CellChanges, AreRaisedByEveryAssignmentAndMarkedOnlyByADifference) {
    clsCell cell;
    std::vector<int> raised;
    cell.OnChange([&raised](std::uint8_t value) { raised.push_back(value); });
    cell.Value(0);
    cell.Avail(4, false);
    cell.Inhib(4, false);
    cell.Locked(false);
    for (const int wrong : {0, 10, -1, 200}) {
        cell.Avail(wrong, true);
        cell.Inhib(wrong, true);
        EXPECT_FALSE(cell.Avail(wrong) || cell.Inhib(wrong));
    }
    EXPECT_FALSE(cell.Modified());
    const std::vector<std::function<void()>> changes{[&] { cell.Value(200); }, [&] { cell.Inhib(4, true); },
                                                     [&] { cell.Locked(true); }};
    for (const auto& change : changes) {
        change();
        EXPECT_TRUE(cell.Modified());
        cell.Modified(false);
    }
    EXPECT_EQ(raised, (std::vector<int>{0, 200}));
    EXPECT_EQ(cell.Value(), 200);
}

// Faults: a wrong grid praised as right, cells numbered wrongly.
TEST(GridAnswers, AFullGridIsCompleteButVerifiedOnlyWithoutAClash) {
    clsGrid grid;
    EXPECT_FALSE(grid.Complete() || grid.Verified());
    FillGrid(grid, FromText(rowsAndColumnsOnly), false);
    EXPECT_TRUE(grid.Complete() && !grid.Verified());
    FillGrid(grid, ExhaustiveSolver(FromText(uniquePuzzle)).First(), false);
    EXPECT_TRUE(grid.Verified());
    grid.Cells(81)->Value(0);
    EXPECT_FALSE(grid.Complete() || grid.Verified());
}

TEST(GridAnswers, CandidatesAreWhatNoOtherValueTakes) {
    clsGrid grid;
    grid.Cells(34)->Value(7);
    grid.Cells(40)->Value(200);
    grid.ManageAvails();
    // Row 4, column 7 and box 6, the cell itself among them.
    const std::set<int> taken{28, 29, 30, 31, 32, 33, 34, 35, 36, 7, 16,
                              25, 43, 52, 61, 70, 79, 44, 45, 53, 54};
    for (int index = 1; index <= 81; ++index) {
        EXPECT_EQ(grid.Cells(index)->Avail(7), taken.count(index) == 0) << index;
        EXPECT_TRUE(grid.Cells(index)->Avail(8));
    }
    grid.NoAutoMask(true);
    EXPECT_TRUE(grid.Cells(34)->Avail(7));
    grid.NoAutoMask(false);
    EXPECT_FALSE(grid.Cells(34)->Avail(7));
    EXPECT_EQ(grid.Cells(0), nullptr);
    EXPECT_EQ(grid.Cells(82), nullptr);
}

TEST(GridAnswers, ACopyTakesTheCellsAndKeepsItsOwnMaskMode) {
    clsGrid source;
    FillGrid(source, FromText(uniquePuzzle), true);
    source.Modified(false);
    source.Cells(3)->Inhib(2, true);
    clsGrid target;
    target.NoAutoMask(true);
    FillGrid(target, FromText(rowsAndColumnsOnly), true);
    target.CopyFrom(source);
    EXPECT_EQ(FromGrid(target), FromText(uniquePuzzle));
    EXPECT_TRUE(target.Cells(1)->Locked() && !target.Cells(3)->Locked());
    EXPECT_TRUE(target.Cells(3)->Inhib(2) && target.Cells(3)->Avail(5));
    EXPECT_FALSE(target.Cells(1)->Modified());
}

// Faults: values of the user taken for givens or kept, an outcome that says solved when it is not.
TEST_F(GridEngine, SolvesFromLockedCellsAlone) {
    host.AnswerAlways(platform::MessageButton::Yes);
    FillGrid(grid, FromText(uniquePuzzle), true);
    grid.Cells(3)->Value(5);  // clashes with the given beside it
    EXPECT_FALSE(grid.SolveGrid());
    EXPECT_TRUE(grid.Solved());
    EXPECT_EQ(FromGrid(grid), ExhaustiveSolver(FromText(uniquePuzzle)).First());
    EXPECT_FALSE(grid.Cells(3)->Avail(grid.Cells(3)->Value()));
}

TEST_F(GridEngine, LosesEveryOtherValueWhenItDoesNotSolve) {
    Digits givens = FromText(uniquePuzzle);
    const auto solve = [&] {
        FillGrid(grid, givens, true);
        grid.Cells(4)->Value(6);
        EXPECT_FALSE(grid.SolveGrid());
        EXPECT_FALSE(grid.Solved());
        EXPECT_EQ(FromGrid(grid), givens);
    };
    {
        FakeProgress hidden(0);
        solve();
    }
    host.answers = {platform::MessageButton::Ok, platform::MessageButton::No};
    givens[2] = 5;  // clashes with the given beside it
    solve();
    EXPECT_EQ(host.boxes.back().text, "Duplicate entry of Value 5 in Row 1, Column 1");
    givens[2] = 1;
    ASSERT_EQ(ExhaustiveSolver(givens).Solutions(), 0);
    solve();
}

// Faults: a failure that crosses the grid's border, is reported twice or leaves half a result.
TEST_F(GridEngine, FailuresAreReportedOnceAndChangeNothing) {
    FillGrid(grid, FromText(uniquePuzzle), true);
    grid.Cells(3)->Value(200);
    grid.Cells(3)->Locked(true);
    const Digits before = FromGrid(grid);
    Option("LevelValue=abc");
    host.answers = {platform::MessageButton::Ok, platform::MessageButton::Ok};
    EXPECT_FALSE(grid.SolveGrid() || grid.CreateGrid());
    ASSERT_EQ(host.boxes.size(), 2U);
    EXPECT_EQ(host.boxes[0].text.find("Error Nr 9 : "), 0U);
    EXPECT_NE(host.boxes[0].text.find("Module : clsGrid\r\nFunction : SolveGrid"), std::string::npos);
    EXPECT_EQ(host.boxes[1].text.find("Error Nr 13 : "), 0U);
    EXPECT_NE(host.boxes[1].text.find("Module : clsGrid\r\nFunction : CreateGrid"), std::string::npos);
    EXPECT_EQ(FromGrid(grid), before);
}

// Faults: the user's grid lost after a refusal, old locks left on a new grid.
TEST_F(GridEngine, AGeneratedGridReplacesEverythingAndADeclinedOneNothing) {
    FillGrid(grid, FromText(rowsAndColumnsOnly), true);
    Option("ResolLoop=-1");
    host.Expect(platform::MessageButton::No);
    EXPECT_FALSE(grid.CreateGrid());
    EXPECT_EQ(FromGrid(grid), FromText(rowsAndColumnsOnly));
    EXPECT_FALSE(grid.Solved());

    Option("LevelValue=7");
    host.AnswerAlways(platform::MessageButton::Yes);
    EXPECT_TRUE(grid.CreateGrid());
    EXPECT_TRUE(grid.Solved() && IsSolution(FromGrid(grid)));
    int locked = 0;
    for (int index = 1; index <= 81; ++index) locked += grid.Cells(index)->Locked() ? 1 : 0;
    EXPECT_TRUE(locked >= 46 && locked <= 54) << locked;
}
