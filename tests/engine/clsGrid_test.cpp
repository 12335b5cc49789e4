#include "engine/clsGrid.h"

#include "EngineSupport.h"

using platform::MessageButton;

namespace {

struct GridTest : EngineTest {
    static void Fill(clsGrid& grid, std::string_view text) {
        for (int cell = 1; cell <= 81; ++cell) {
            grid.Cells(cell)->Value(static_cast<std::uint8_t>(At(text, cell)));
            grid.Cells(cell)->Locked(At(text, cell) != 0);
        }
    }
    std::string Text(bool lockedOnly = false) const {
        std::string text;
        for (int cell = 1; cell <= 81; ++cell)
            text += std::to_string(lockedOnly && !grid.Cells(cell)->Locked() ? 0 : grid.Cells(cell)->Value());
        return text;
    }
    const std::string boxesClash =
        "123456789234567891345678912456789123567891234678912345789123456891234567912345678";
    clsGrid grid;
};

}  // namespace

// Faults: a view that is not told, a question about changes that were none, a file's value cut down.
TEST_F(GridTest, CellsRaiseEveryAssignmentAndMarkOnlyADifference) {
    clsCell cell;
    std::vector<int> raised;
    cell.OnChange([&raised](std::uint8_t value) { raised.push_back(value); });
    for (int k = 1; k <= 9; ++k) EXPECT_TRUE(cell.Avail(k) && !cell.Inhib(k));
    for (const int k : {0, 10, -1, 200, 4}) {
        cell.Avail(k, k != 4);
        cell.Inhib(k, k != 4);
        EXPECT_FALSE(cell.Avail(k) || cell.Inhib(k));
    }
    const std::function<void(bool)> changes[] = {[&](bool on) { cell.Value(on ? 200 : 0); },
                                                 [&](bool on) { cell.Inhib(9, on); },
                                                 [&](bool on) { cell.Locked(on); }};
    for (const auto& change : changes)
        for (const bool on : {false, true}) {
            change(on);
            EXPECT_EQ(cell.Modified(), on);
            cell.Modified(false);
        }
    EXPECT_EQ(raised, (std::vector<int>{0, 200}));
    EXPECT_TRUE(cell.Value() == 200 && cell.Inhib(9) && cell.Locked());
}

// Faults: a wrong grid praised as right, cells numbered wrongly, a change that is not seen.
TEST_F(GridTest, AnswersFromItsValues) {
    EXPECT_FALSE(grid.Complete() || grid.Verified() || grid.Modified());
    grid.Cells(34)->Value(7);
    grid.Cells(40)->Value(200);
    grid.ManageAvails();
    for (int n = 9; n < 9 * 82; ++n)
        EXPECT_EQ(grid.Cells(n / 9)->Avail(n % 9 + 1), n % 9 + 1 != 7 || !Meet(n / 9, 34)) << n;
    for (const bool manual : {true, false}) {
        grid.NoAutoMask(manual);
        EXPECT_EQ(grid.Cells(34)->Avail(7), manual);
    }
    Fill(grid, boxesClash);
    EXPECT_TRUE(grid.Complete() && !grid.Verified());
    grid.Modified(false);
    grid.Cells(81)->Value(0);
    EXPECT_TRUE(!grid.Complete() && grid.Modified());
    EXPECT_TRUE(grid.Cells(0) == nullptr && grid.Cells(82) == nullptr);
}

TEST_F(GridTest, ACopyTakesTheCellsAndKeepsItsOwnMaskMode) {
    clsGrid source;
    Fill(source, easyPuzzle);
    source.Modified(false);
    for (const int k : {1, 5, 9}) source.Cells(3)->Inhib(k, true);
    grid.NoAutoMask(true);
    Fill(grid, boxesClash);
    grid.CopyFrom(source);
    EXPECT_EQ(Text() + Text(true), easyPuzzle + easyPuzzle);
    for (int k = 1; k <= 9; ++k) EXPECT_EQ(grid.Cells(3)->Inhib(k), k % 4 == 1);
    EXPECT_TRUE(grid.Cells(3)->Modified() && !grid.Cells(1)->Modified() && grid.Cells(3)->Avail(5));
}

// Faults: values of the user taken for givens or kept, an outcome that says solved when it is not, a window
// that is not asked.
TEST_F(GridTest, SolvesFromLockedCellsAloneAndLosesEveryOtherValue) {
    const auto solve = [this](std::string_view givens, platform::ProgressWindow* progress) {
        Fill(grid, givens);
        grid.Cells(73)->Value(5);  // clashes with a given 5
        EXPECT_FALSE(grid.SolveGrid(progress));
        EXPECT_FALSE(grid.Cells(1)->Avail(grid.Cells(2)->Value()));
        EXPECT_EQ(grid.Solved(), Solves(Text(), givens));
        return Text();
    };
    window.visibleFor = 0;
    EXPECT_EQ(solve(easyPuzzle, &window), easyPuzzle);
    const std::string clash = With(easyPuzzle, 3, 5);
    // No digit is left for the first cell.
    const std::string deadEnd = With("012345678" + emptyGrid.substr(9), 28, 9);
    host.answers = {MessageButton::Ok, MessageButton::No};
    for (const std::string& givens : {clash, deadEnd}) EXPECT_EQ(solve(givens, nullptr), givens);
    host.AnswerAlways(MessageButton::Yes);
    EXPECT_TRUE(Solves(solve(easyPuzzle, nullptr), easyPuzzle));
}

// Faults: a failure that crosses the grid's border, is reported twice or leaves half a result.
TEST_F(GridTest, FailuresAreReportedOnceAndChangeNothing) {
    Fill(grid, With(easyPuzzle, 3, 9));
    grid.Cells(3)->Value(200);
    const std::string before = Text();
    Option("LevelValue=abc");
    host.answers = {MessageButton::Ok, MessageButton::Ok};
    EXPECT_FALSE(grid.SolveGrid() || grid.CreateGrid());
    ASSERT_EQ(host.boxes.size(), 2U);
    const std::string reports = host.boxes[0].text + host.boxes[1].text;
    for (const char* part : {"Error Nr 9 : ", "Function : SolveGrid", "Nr 13 : ", "Function : CreateGrid"})
        EXPECT_NE(reports.find(part), std::string::npos) << reports;
    EXPECT_EQ(Text(), before);
}

// Faults: the user's grid lost after a refusal, old locks left on a new grid.
TEST_F(GridTest, AGeneratedGridReplacesEverythingAndADeclinedOneNothing) {
    Fill(grid, boxesClash);
    Option("ResolLoop=-1");
    host.Expect(MessageButton::No);
    EXPECT_FALSE(grid.CreateGrid() || grid.Solved());
    EXPECT_EQ(Text(true), boxesClash);

    host.AnswerAlways(MessageButton::Yes);
    EXPECT_TRUE(grid.CreateGrid(&window) && grid.Solved() && !window.bar.empty());
    EXPECT_TRUE(Solves(Text(), Text(true)));
    EXPECT_FALSE(grid.Cells(1)->Avail(grid.Cells(2)->Value()));
    EXPECT_NE(Text(), Text(true));
}
