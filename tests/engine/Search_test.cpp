#include <algorithm>

#include "EngineSupport.h"

using namespace Global;
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

constexpr std::string_view question =
    "Cette grille demande un certain temps pour être résolue. Voulez-vous continuer ?\r\r"
    "Pour plus d'informations, voir le menu Édition/Préférences, onglet Niveau\r"
    "et l'aide associée (appuyez sur F1 lorsque la boite de dialogue est affichée).";

}  // namespace

// Faults: a clash that is missed, reported at another cell, or solved all the same.
TEST_F(SearchTest, ClashesNameTheFirstCellOfRowOrColumnThenOfBox) {
    // 17 and 25 clash in a box only.
    const std::pair<std::vector<unsigned>, const char*> clashes[] = {{{25, 27}, "3, Column 7"},
                                                                     {{25, 70}, "3, Column 7"},
                                                                     {{19, 25}, "3, Column 1"},
                                                                     {{17, 25}, "2, Column 8"},
                                                                     {{17, 25, 73, 81}, "9, Column 1"}};
    host.AnswerAlways(MessageButton::Ok);
    for (const auto& [cells, named] : clashes) {
        std::string givens = emptyGrid;
        for (const unsigned cell : cells) givens = With(givens, cell, 5);
        Puzzle(givens);
        EXPECT_EQ(Attempts(true), 1);
        EXPECT_EQ(host.boxes.back().text, std::string("Duplicate entry of Value 5 in Row ") + named);
        EXPECT_EQ(host.boxes.back().style, 48);
        EXPECT_EQ(TextOf(working) + TextOf(puzzle), givens + givens);
    }
}

// Faults: too many or too few attempts, a setting or marks kept from the time before, a question that says
// something else, a given changed on the way.
TEST_F(SearchTest, TheUserIsAskedAfterAsManyAttemptsAsTheSettingSays) {
    working.Cells(9, 9).Locked = true;
    // 0.025 and 0.075 make 20.5 and 21.5. A limit below 1 leaves the one attempt that Yes is good for.
    const std::pair<const char*, int> settings[] = {{"0", 40},     {"1", 80},     {"abc", 40},
                                                    {"0.025", 40}, {"0.075", 44}, {"-9", 1}};
    for (const auto& [text, attempts] : settings) {
        Option(std::string("ResolLoop=") + text);
        host.answers = {MessageButton::Yes, MessageButton::No};
        EXPECT_EQ(Attempts(false), attempts) << text;
    }
    EXPECT_EQ(TextOf(working) + TextOf(puzzle), easyPuzzle + easyPuzzle);
    for (const RangeClass* range : {&puzzle, &working})
        EXPECT_TRUE(range->Cells(1, 1).Font.Bold && !range->Cells(9, 1).Font.Bold &&
                    !range->Cells(9, 9).Locked);
    EXPECT_EQ(host.boxes[0].text, question);
    EXPECT_EQ(std::pair(host.boxes[0].style, host.boxes[0].helpContext), std::pair(52, 240));
    EXPECT_EQ(std::vector(window.bar.begin() + 19, window.bar.begin() + 22),
              (std::vector<double>{95, 100, 5}));
    for (const double percent : window.bar) EXPECT_TRUE(percent >= 0 && percent <= 100);
}

// Faults: a cancel that is missed, taken for a refusal, or kept for the next time.
TEST_F(SearchTest, AHiddenWindowEndsTheRunBeforeTheNextAttempt) {
    for (const int visibleFor : {0, 1, 8}) {
        window.bar.clear();
        window.visibleFor = static_cast<std::size_t>(visibleFor);
        EXPECT_EQ(Attempts(true), std::max(visibleFor - 1, 0));
        EXPECT_TRUE(run.CancelRequested() && TextOf(working) == easyPuzzle);
    }
    ResetTable();
    EXPECT_TRUE(run.SolveAttempt());
    EXPECT_EQ(CandidateCount(1), 9) << "an attempt went on after the cancel";
    window.visibleFor = 99;
    host.Expect(MessageButton::No);
    EXPECT_EQ(Attempts(false), 20);
    EXPECT_FALSE(run.CancelRequested());
}

// Faults: an attempt without an end, an end that throws away what is filled.
TEST_F(SearchTest, AnAttemptStopsAfterOneMinuteWithTheCellsFilledSoFar) {
    Puzzle(emptyGrid);
    // Readings at 10, 20, ... seconds: the limit, set at the first, has passed at the eighth.
    host.stepPerReading = std::chrono::seconds(10);
    EXPECT_EQ(Attempts(true), 1);
    EXPECT_EQ(host.yields, 7);
    const std::string filled = TextOf(puzzle);
    EXPECT_EQ(std::count(filled.begin(), filled.end(), '0'), 81 - 6);
}
