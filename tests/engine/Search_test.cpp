// SPDX-License-Identifier: MIT
#include "EngineSupport.h"

using platform::MessageButton;

namespace {

struct SearchTest : RunTest {
    // A cell with the text 0 stays empty and without a candidate, so that no attempt succeeds.
    SearchTest() {
        Puzzle(easyPuzzle);
        puzzle.Cells(1, 3).Value = "0";
    }
    // How many attempts the search took: one seed is asked for in each.
    int Attempts(bool result) {
        const auto before = host.seed;
        EXPECT_EQ(run.SolveFromRanges(), result);
        return static_cast<int>(host.seed - before);
    }
};

}  // namespace

// Faults: a clash that is missed, reported at another cell, or solved all the same.
TEST_F(SearchTest, ClashesNameTheFirstCellOfRowOrColumnThenOfBox) {
    // 17 and 25 clash in a box only.
    const std::pair<std::vector<unsigned>, const char*> clashes[] = {{{25, 70}, "3, Column 7"},
                                                                     {{19, 25}, "3, Column 1"},
                                                                     {{17, 25, 73, 81}, "9, Column 1"},
                                                                     {{17, 25}, "2, Column 8"}};
    host.AnswerAlways(MessageButton::Ok);
    for (const auto& [cells, named] : clashes) {
        std::string givens = emptyGrid;
        for (const unsigned cell : cells) givens = With(givens, cell, 5);
        Puzzle(givens);
        EXPECT_EQ(Attempts(true), 1);
        EXPECT_EQ(host.boxes.back().text, std::string("Duplicate entry of Value 5 in Row ") + named);
        EXPECT_EQ(TextOf(working) + TextOf(puzzle), givens + givens);
    }
}

// Faults: too many or too few attempts, a setting kept from the time before, a given changed on the way.
TEST_F(SearchTest, TheUserIsAskedAfterAsManyAttemptsAsTheSettingSays) {
    // 0.025 makes 20.5. A limit below 1 leaves the one attempt that Yes is good for.
    const std::pair<const char*, int> settings[] = {
        {"0", 40}, {"1", 80}, {"abc", 40}, {"0.025", 40}, {"-9", 1}};
    for (const auto& [text, attempts] : settings) {
        Option(std::string("ResolLoop=") + text);
        host.answers = {MessageButton::Yes, MessageButton::No};
        EXPECT_EQ(Attempts(false), attempts) << text;
    }
    EXPECT_EQ(TextOf(working) + TextOf(puzzle), easyPuzzle + easyPuzzle);
}

// Faults: a cancel that is missed, taken for a refusal, or kept for the next time; a solution not handed
// over.
TEST_F(SearchTest, AHiddenWindowEndsTheRunBeforeTheNextAttempt) {
    for (const int visibleFor : {0, 1, 8}) {
        window.bar.clear();
        window.visibleFor = static_cast<std::size_t>(visibleFor);
        EXPECT_EQ(Attempts(true), std::max(visibleFor - 1, 0));
        EXPECT_TRUE(run.CancelRequested() && TextOf(working) == easyPuzzle);
    }
    window.visibleFor = 99;
    host.Expect(MessageButton::No);
    EXPECT_EQ(Attempts(false), 20);
    Puzzle(easyPuzzle);
    EXPECT_TRUE(run.SolveFromRanges() && Solves(TextOf(puzzle), TextOf(working)));
}
