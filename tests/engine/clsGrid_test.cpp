// SPDX-License-Identifier: MIT
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
    std::string Text() const {
        std::string text;
        for (int cell = 1; cell <= 81; ++cell) text += std::to_string(grid.Cells(cell)->Value());
        return text;
    }
    const std::string boxesClash =
        "123456789234567891345678912456789123567891234678912345789123456891234567912345678";
    clsGrid grid;
};

}  // namespace

// Faults: a change that is not saved, a question about changes that were none.
TEST_F(GridTest, CellsMarkOnlyADifference) {
    clsCell cell;
    for (int n = 0; n < 6; ++n) {
        const bool on = n % 2 == 1;
        n < 2 ? cell.Value(on ? 200 : 0) : n < 4 ? cell.Inhib(9, on) : cell.Locked(on);
        EXPECT_EQ(cell.Modified(), on) << n;
        cell.Modified(false);
    }
}

// Faults: a wrong grid praised as right, cells numbered wrongly, a change that is not seen, a copy that loses
// something or takes the mask mode with it.
TEST_F(GridTest, AnswersFromItsValuesAndACopyAlike) {
    EXPECT_FALSE(grid.Complete() || grid.Verified() || grid.Modified());
    grid.Cells(34)->Value(7);
    grid.Cells(40)->Value(200);
    grid.ManageAvails();
    for (int n = 9; n < 9 * 82; ++n)
        EXPECT_EQ(grid.Cells(n / 9)->Avail(n % 9 + 1), n % 9 + 1 != 7 || !Meet(n / 9, 34)) << n;
    for (const int wrong : {0, 82}) EXPECT_TRUE(!grid.Cells(wrong) && !std::as_const(grid).Cells(wrong));
    grid.NoAutoMask(true);
    clsGrid source;
    Fill(source, boxesClash);
    EXPECT_TRUE(source.Complete() && !source.Verified());
    source.Modified(false);
    source.Cells(81)->Value(0);
    EXPECT_TRUE(!source.Complete() && source.Modified());
    for (const int k : {1, 9}) source.Cells(81)->Inhib(k, true);
    grid.CopyFrom(source);
    EXPECT_EQ(Text(), With(boxesClash, 81, 0));
    EXPECT_TRUE(grid.Cells(1)->Locked() && grid.Cells(81)->Inhib(1) && grid.Cells(81)->Inhib(9));
    EXPECT_TRUE(grid.Cells(81)->Modified() && !grid.Cells(1)->Modified());
    EXPECT_TRUE(grid.Cells(81)->Avail(1)) << "its own mask mode";
}

// Faults: a failure that crosses the grid's border, is reported twice or leaves half a result; old locks or
// values left on a new grid.
TEST_F(GridTest, FailuresAreReportedOnceAndChangeNothingAndANewGridReplacesEverything) {
    Fill(grid, With(easyPuzzle, 3, 9));
    grid.Cells(3)->Value(200);
    const std::string before = Text();
    Option("LevelValue=abc");
    host.answers = {MessageButton::Ok, MessageButton::Ok};
    EXPECT_FALSE(grid.SolveGrid() || grid.CreateGrid());
    EXPECT_EQ(host.boxes.size(), 2U);
    EXPECT_EQ(Text(), before);
    Option("");
    host.AnswerAlways(MessageButton::Yes);
    EXPECT_TRUE(grid.CreateGrid() && grid.Solved() && grid.Verified());
    int locked = 0;
    for (int cell = 1; cell <= 81; ++cell) locked += grid.Cells(cell)->Locked() ? 1 : 0;
    EXPECT_LE(locked, 36);
}
