// What the grid window has the engine do.

#include "FakeFrame.h"
#include "document/BusyGuard.h"
#include "settings/IniParamProcs.h"

namespace {

using IniParamProcs::WriteIniParam;
using platform::MessageButton;
using platform::PointerShape;

class Engine : public GridWindow {
  protected:
    // No two givens clash, but no digit is left for cell 1.
    void SetDeadEnd() const {
        for (int i = 2; i <= 9; ++i) Set(i, std::to_string(i - 1) + "|1|0");
        Set(28, "9|1|0");
    }
    // Hides the progress window as soon as a run lets events happen.
    void CancelTheNextRun() {
        host.onYield = [this] { Child<wCancel>(*grid, "wCancel").cmdCancel_Click(); };
    }
    bool Generate() {
        const BusyGuard run(grid);
        return grid->CreateGrid();
    }
};

// ---- Checking.

TEST_F(Engine, WrongValuesAreCountedAgainstTheSolutionOfTheGivens) {
    SetPuzzle(1, 9);
    EXPECT_EQ(grid->TestGrid(), 0);
    Set(1, "1|0|0");
    EXPECT_EQ(grid->TestGrid(), 0);
    Set(2, "1|0|0");
    Set(3, "1|0|0");
    EXPECT_EQ(grid->TestGrid(), 2);
    EXPECT_EQ(State(4), "0|0|0") << "the solution must not show";
}

TEST_F(Engine, ASolutionOnceFoundIsKept) {
    SetPuzzle(1, 9);
    grid->TestGrid();
    const int yields = host.yields;
    EXPECT_GT(yields, 0);
    Set(9, "1|0|0");
    EXPECT_EQ(grid->TestGrid(), 1);
    EXPECT_EQ(host.yields, yields);
}

TEST_F(Engine, AGridWithoutASolutionHasNoWrongValues) {
    SetDeadEnd();
    Set(81, "5|0|0");
    host.Expect(MessageButton::No);
    EXPECT_EQ(grid->TestGrid(), 0);
    EXPECT_TRUE(LastBox().starts_with("Cette grille demande un certain temps")) << LastBox();
    EXPECT_EQ(State(81), "5|0|0");
}

// ---- Solving.

TEST_F(Engine, SolvingFillsTheGridFromItsGivens) {
    SetPuzzle(1, 18);
    Set(1, "9|0|0");
    grid->SolveGrid();
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(Cell(i).Value(), SolutionAt(i)) << i;
    EXPECT_FALSE(Cell(1).Locked());
    EXPECT_EQ(grid->ctrlCells(1).lblValue().text, "1");
    EXPECT_EQ(host.shapes.front(), PointerShape::Hourglass);
    EXPECT_EQ(host.shapes.back(), PointerShape::Default);
    EXPECT_FALSE(BusyGuard::Active());
}

TEST_F(Engine, ACancelledSolveAsksNothingAndLeavesTheGivens) {
    SetDeadEnd();
    Set(81, "5|0|0");
    CancelTheNextRun();
    grid->SolveGrid();
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(State(2) + " " + State(28) + " " + State(81), "1|1|0 9|1|0 0|0|0");
    EXPECT_EQ(host.shapes.back(), PointerShape::Default);
}

TEST_F(Engine, ASecondRunIsRefusedWhileOneIsUnderWay) {
    SetPuzzle(1, 9);
    int refused = 0;
    host.onYield = [&] {
        grid->SolveGrid();
        EXPECT_EQ(grid->TestGrid(), 0);
        grid->close();
        ++refused;
    };
    grid->SolveGrid();
    EXPECT_GT(refused, 0);
    EXPECT_GE(host.beeps, 3 * refused);
    EXPECT_TRUE(grid->isVisible());
    EXPECT_TRUE(grid->IsComplete());
}

// ---- Generating.

TEST_F(Engine, AGeneratedGridShowsItsGivensAlone) {
    Set(1, "5|1|36");
    Enter(2, "6|0|0");
    ASSERT_TRUE(Generate());
    int givens = 0;
    for (int i = 1; i <= 81; ++i) {
        const ctrlCell& view = grid->ctrlCells(i);
        EXPECT_EQ(view.mCell(), grid->Grid()->Cells(i)) << i;
        EXPECT_EQ(Cell(i).Locked(), Cell(i).Value() != 0) << i;
        EXPECT_EQ(ExclusionMask(Cell(i)), 0) << i;
        EXPECT_EQ(view.lblValue().text, Cell(i).Value() == 0 ? "" : QString::number(Cell(i).Value())) << i;
        if (Cell(i).Value() != 0) ++givens;
    }
    EXPECT_GE(givens, 28);
    EXPECT_LE(givens, 36);
    grid->SolveGrid();
    EXPECT_TRUE(grid->Grid()->Verified());
}

TEST_F(Engine, GivingUpAGenerationLeavesAnEmptyGrid) {
    Set(1, "5|1|36");
    WriteIniParam("Options", "ResolLoop", "-1");  // asks before the first attempt
    host.Expect(MessageButton::No);
    EXPECT_FALSE(Generate());
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(State(i), "0|0|0") << i;
}

}  // namespace
