// SPDX-License-Identifier: MIT
#include <set>

#include "EngineSupport.h"

using namespace std::chrono_literals;
using platform::MessageButton;

namespace {

struct GeneratorTest : RunTest {
    GeneratorTest() { host.AnswerAlways(MessageButton::Yes); }
    // How many givens the puzzle has; each must be the solution's digit, bold and locked, and at most level -
    // 1 of a digit or in a box.
    int CountGivens(int level) {
        EXPECT_TRUE(Solves(TextOf(working), TextOf(puzzle))) << TextOf(working) << " seed " << host.seed;
        int boxes[10]{}, digits[10]{}, givens = 0;
        for (int cell = 1; cell <= 81; ++cell) {
            const clsXlCellClass& given = puzzle.Cells(Row(cell), Col(cell));
            EXPECT_TRUE(given.Font.Bold == given.Locked && given.Value.empty() != given.Locked) << cell;
            givens += given.Locked ? 1 : 0;
            EXPECT_TRUE(!given.Locked ||
                        (++boxes[Box(cell)] < level && ++digits[given.Value[0] - '0'] < level));
        }
        return givens;
    }
};

}  // namespace

// Faults: a grid that is no Sudoku, a level counted wrongly at its ends, a choice that never ends, a setting
// that writes beside a pool, a choice accepted unseen, a rejected one that spoils the next ones (hardly any
// is accepted then).
TEST_F(GeneratorTest, GridsAreSoundAndGivensFollowTheLevelAnUnknownOneBeingMedium) {
    const std::pair<int, int> levels[] = {{4, 4}, {7, 7}, {3, 5}, {9, 9}, {-1, 5}, {10, 5}, {32767, 5}};
    for (const auto& [setting, level] : levels) {
        Option("LevelValue=" + std::to_string(setting));
        window.bar.clear();
        std::set<int> counts;
        for (int n = 0; n < 50; ++n) {
            ASSERT_TRUE(run.CreateGrid());
            counts.insert(CountGivens(level));
            run.ChooseGivens();
            counts.insert(CountGivens(level));
        }
        const int most = (level - 1) * 9;
        EXPECT_EQ(*counts.begin(), most - 8) << setting;
        // Nearly full boxes often need a new choice, and then seldom get the highest number.
        EXPECT_TRUE(*counts.rbegin() == most || (level == 9 && *counts.rbegin() < most)) << setting;
        // So few givens seldom lead back to the solution.
        const auto tries = std::count(window.bar.begin(), window.bar.end(), 0.0);
        EXPECT_TRUE(tries < 50 * 120 && (level != 4 || tries > 50 * 4)) << setting << " " << tries;
    }
}

// Faults: a generation that no question and no hidden window ends when every attempt is the same dead end or
// is stopped by its clock; a solution with holes, a cancel taken for a failure or kept for the next time.
TEST_F(GeneratorTest, WhatCanNeverSucceedEndsWithTheQuestionOrTheWindow) {
    host.onShow = [this] { window.visibleFor = 0; };
    for (const int fault : {0, 1, 2, 3}) {
        host.stepPerReading = fault / 2 == 1 ? 2min : -2min;
        if (fault == 0) host.onYield = [this] { host.seed = 10; };
        if (fault == 2) host.onYield = nullptr;
        host.seed = 10;  // the next one is a dead end
        host.answers = {fault % 2 == 0 ? MessageButton::Yes : MessageButton::No};
        window.visibleFor = 1U << 30;
        EXPECT_EQ(run.CreateGrid(), fault % 2 == 0) << fault;
        EXPECT_EQ(host.boxes.size(), fault + 1U);
    }
    window.visibleFor = window.bar.size() + 40;
    EXPECT_TRUE(run.CreateGrid() && window.bar.size() == window.visibleFor);
}
