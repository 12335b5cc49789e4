#include "document/GridDocument.h"

#include <vector>

#include "DocumentSupport.h"
#include "diagnostics/ErrorHandling.h"
#include "support/ScriptedHost.h"

namespace {

constexpr EntryModes play{};
constexpr EntryModes initialisation{.initialisation = true};
constexpr EntryModes hidden{.masksHidden = true};

class Document : public testing::Test {
  protected:
    std::string State(int index) const { return StateText(document, index); }
    // The digits that the program still holds possible in a cell.
    std::string Available(int index) const {
        std::string digits;
        for (int d = 1; d <= 9; ++d) {
            if (document.Grid().Cells(index)->Avail(d)) digits += std::to_string(d);
        }
        return digits;
    }

    ScriptedHost host;
    GridDocument document;
};

// ---- Entry.

TEST_F(Document, AnEntryIsTakenOrRefusedByCellDigitAndMode) {
    struct Case {
        const char* before;  // cell 1; cell 9 holds 5, so 5 is impossible
        int digit;
        EntryModes modes;
        const char* after;  // null: refused
    };
    const Case cases[] = {
        {"0|0|8", 4, play, "4|0|8"},           {"0|0|8", 5, play, nullptr},
        {"0|0|8", 3, play, nullptr},           {"0|0|8", 5, hidden, "5|0|8"},
        {"0|0|8", 3, hidden, "3|0|8"},         {"6|0|8", 0, play, "0|0|8"},
        {"7|1|0", 4, play, nullptr},           {"7|1|0", 0, play, nullptr},
        {"7|1|0", 4, hidden, nullptr},         {"7|1|0", 4, initialisation, "4|1|0"},
        {"0|0|0", 6, initialisation, "6|1|0"}, {"7|1|4", 0, initialisation, "0|0|4"},
        {"0|0|0", 5, initialisation, nullptr},
    };
    for (const Case& c : cases) {
        document.Grid().NoAutoMask(false);
        Set(document, 9, "5|0|0");
        Set(document, 1, c.before);
        document.Grid().Modified(false);
        const bool couldUndo = document.CanUndo();
        EXPECT_EQ(document.EnterValue(1, c.digit, c.modes), c.after != nullptr) << c.before << " " << c.digit;
        EXPECT_EQ(State(1), c.after ? c.after : c.before) << c.digit;
        EXPECT_EQ(document.Modified(), c.after != nullptr);
        if (!c.after) {
            EXPECT_EQ(document.CanUndo(), couldUndo) << "a refused entry is no change";
        }
    }
    EXPECT_THROW(document.EnterValue(1, 10, play), RuntimeError);
    EXPECT_THROW(document.EnterValue(1, -1, play), RuntimeError);
    EXPECT_THROW(document.EnterValue(0, 1, play), RuntimeError);
    EXPECT_THROW(document.EnterValue(82, 1, play), RuntimeError);
}

TEST_F(Document, CandidatesFollowEveryChange) {
    document.EnterValue(11, 4, play);  // row 2, column 2, box 1
    EXPECT_EQ(Available(18), "12356789");
    EXPECT_EQ(Available(74), "12356789");
    EXPECT_EQ(Available(1), "12356789");
    EXPECT_EQ(Available(81), "123456789");
    document.Undo();
    EXPECT_EQ(Available(1), "123456789");
    document.Redo();
    EXPECT_EQ(Available(1), "12356789");
    document.NoAutoMask(true);
    EXPECT_EQ(Available(1), "123456789");
    EXPECT_TRUE(document.EnterValue(10, 4, play)) << "the user keeps the candidates";
}

TEST_F(Document, ExclusionsAreSwitchedOneByOneAndClearedTogether) {
    for (const int digit : {2, 5, 9, 5}) document.SwitchExclusion(1, digit);
    EXPECT_EQ(State(1), "0|0|516");
    document.SwitchExclusion(1, 0);
    EXPECT_EQ(State(1), "0|0|0");
    document.Undo();
    EXPECT_EQ(State(1), "0|0|516");
    document.Undo();
    EXPECT_EQ(State(1), "0|0|548");
    EXPECT_THROW(document.SwitchExclusion(1, 10), RuntimeError);
    EXPECT_THROW(document.SwitchExclusion(1, -1), RuntimeError);
}

// ---- History.

TEST_F(Document, UndoAndRedoWalkThroughEveryState) {
    EXPECT_FALSE(document.CanUndo() || document.CanRedo());
    const std::vector<std::string> states{"0|0|0", "7|1|0", "0|0|0", "0|0|4", "3|1|4"};
    document.EnterValue(5, 7, initialisation);
    document.EnterValue(5, 0, initialisation);
    document.SwitchExclusion(5, 2);
    document.EnterValue(5, 3, initialisation);
    for (int round = 0; round < 2; ++round) {
        for (const int i : {3, 2, 1, 0}) {
            ASSERT_TRUE(document.CanUndo());
            EXPECT_EQ(document.Undo(), 5);
            EXPECT_EQ(State(5), states[static_cast<std::size_t>(i)]);
        }
        EXPECT_FALSE(document.CanUndo());
        for (const int i : {1, 2, 3, 4}) {
            ASSERT_TRUE(document.CanRedo());
            EXPECT_EQ(document.Redo(), 5);
            EXPECT_EQ(State(5), states[static_cast<std::size_t>(i)]);
        }
        EXPECT_FALSE(document.CanRedo());
    }
}

TEST_F(Document, ANewChangeDropsWhatCouldBeRedone) {
    for (const int cell : {1, 2, 3}) document.EnterValue(cell, cell, play);
    document.Undo();
    document.Undo();
    document.EnterValue(40, 9, play);
    EXPECT_FALSE(document.CanRedo());
    EXPECT_EQ(document.Undo(), 40);
    EXPECT_EQ(document.Undo(), 1);
    EXPECT_FALSE(document.CanUndo());
    EXPECT_EQ(document.Redo(), 1);
    EXPECT_EQ(document.Redo(), 40);
}

TEST_F(Document, ARecordAsTextIsAChangeLikeAnyOther) {
    document.RegUndo("50|0|0|36|50|7|1|0");
    EXPECT_EQ(document.Undo(), 50);
    EXPECT_EQ(State(50), "0|0|36");
    document.Redo();
    EXPECT_EQ(State(50), "7|1|0");
    EXPECT_THROW(document.RegUndo("82|0|0|0|82|0|0|0"), RuntimeError);
    EXPECT_EQ(document.Undo(), 50) << "what is no record is not kept";
}

// ---- Whole grids.

TEST_F(Document, IsNamedAfterItsFileWithoutFolderAndExtension) {
    const std::pair<const char*, const char*> names[] = {{"/jeux/Facile.2.nx3", "Facile.2"},
                                                         {"C:\\Jeux\\Dur.nx3", "Dur"},
                                                         {"/jeux.d/sans-point", "sans-point"}};
    for (const auto& [path, caption] : names) {
        document.Path(path);
        EXPECT_EQ(document.Caption(), caption);
        EXPECT_EQ(document.Path(), path);
    }
}

TEST_F(Document, ACopyHasTheCellsAlone) {
    document.Path("/jeux/a.nx3");
    Set(document, 1, "5|1|0");
    Set(document, 2, "0|0|1022");
    GridDocument copy;
    copy.EnterValue(3, 9, play);
    copy.CopyFrom(document);
    EXPECT_EQ(StateText(copy, 1) + " " + StateText(copy, 2) + " " + StateText(copy, 3),
              "5|1|0 0|0|1022 0|0|0");
    EXPECT_FALSE(copy.Grid().Cells(9)->Avail(5));
    EXPECT_EQ(copy.Path() + copy.Caption(), "");
    copy.EnterValue(1, 6, initialisation);
    EXPECT_EQ(State(1), "5|1|0");
}

TEST_F(Document, ReinitKeepsOnlyTheGivens) {
    Set(document, 1, "5|1|4");
    Set(document, 2, "6|0|36");
    Set(document, 81, "0|0|8");
    document.Reinit();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(81), "5|1|4 0|0|0 0|0|0");
    EXPECT_EQ(Available(9), "12346789");
}

TEST_F(Document, IsCompleteOnceEveryCellHasAValue) {
    SetPuzzle(document, 81, 81);
    EXPECT_FALSE(document.IsComplete());
    document.EnterValue(81, SolutionAt(81), play);
    EXPECT_TRUE(document.IsComplete());
}

// ---- The engine.

TEST_F(Document, WrongValuesAreCountedAgainstTheSolutionOfTheGivens) {
    SetPuzzle(document, 1, 9);
    EXPECT_EQ(document.WrongValues(), 0) << "no solution is known yet";
    document.FindSolution(nullptr);
    ASSERT_TRUE(document.SolutionKnown());
    EXPECT_EQ(State(4), "0|0|0") << "the solution must not show";
    const std::pair<int, int> entries[] = {{1, 1}, {2, 1}, {3, 1}, {2, 2}};  // cell, digit
    const int wrong[] = {0, 1, 2, 1};
    for (int n = 0; n < 4; ++n) {
        document.EnterValue(entries[n].first, entries[n].second, hidden);
        EXPECT_EQ(document.WrongValues(), wrong[n]) << n;
    }
    EXPECT_TRUE(document.SolutionKnown()) << "the user's own values do not change what is right";
}

TEST_F(Document, ASolutionBelongsToItsGivens) {
    SetPuzzle(document, 1, 9);
    document.FindSolution(nullptr);
    for (const char* given : {"1|1|0", "2|1|0", "2|0|0", "0|0|0"}) {
        Set(document, 1, given);
        const bool sameGivens = !document.Grid().Cells(1)->Locked();
        EXPECT_EQ(document.SolutionKnown(), sameGivens) << given;
        EXPECT_EQ(document.WrongValues(), sameGivens && given[0] != '0' ? 1 : 0) << given;
    }
    Set(document, 10, "5|1|0");  // another digit than it was solved from
    EXPECT_FALSE(document.SolutionKnown());
}

TEST_F(Document, AGridWithoutASolutionHasNoWrongValues) {
    // No two givens clash, but no digit is left for cell 1.
    for (int i = 2; i <= 9; ++i) Set(document, i, std::to_string(i - 1) + "|1|0");
    Set(document, 28, "9|1|0");
    Set(document, 81, "5|0|0");
    host.Expect(platform::MessageButton::No);
    document.FindSolution(nullptr);
    EXPECT_FALSE(document.SolutionKnown());
    EXPECT_EQ(document.WrongValues(), 0);
    EXPECT_EQ(State(81), "5|0|0");
}

TEST_F(Document, SolvingFillsTheGridFromItsGivens) {
    SetPuzzle(document, 1, 18);
    Set(document, 1, "9|0|0");
    document.SolveGrid(nullptr);
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(document.Grid().Cells(i)->Value(), SolutionAt(i)) << i;
    EXPECT_FALSE(document.Grid().Cells(1)->Locked());
}

TEST_F(Document, AGeneratedGridIsItsGivensAndKnowsItsSolution) {
    Set(document, 1, "5|1|36");
    ASSERT_TRUE(document.CreateGrid(nullptr));
    EXPECT_TRUE(document.SolutionKnown());
    int givens = 0;
    for (int i = 1; i <= 81; ++i) {
        const CellState state = StateOf(*document.Grid().Cells(i));
        EXPECT_EQ(state.locked, state.value != 0) << i;
        EXPECT_EQ(state.mask, 0) << i;
        givens += state.locked ? 1 : 0;
    }
    EXPECT_GE(givens, 28);
    EXPECT_LE(givens, 36);
    document.SolveGrid(nullptr);
    EXPECT_TRUE(document.Grid().Verified());
}

TEST_F(Document, ADeclinedGenerationChangesNothing) {
    Set(document, 1, "5|1|36");
    ScriptedHost::WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\nResolLoop=-1\r\n");  // asks at once
    host.Expect(platform::MessageButton::No);
    EXPECT_FALSE(document.CreateGrid(nullptr));
    EXPECT_EQ(State(1), "5|1|36");
    EXPECT_FALSE(document.SolutionKnown());
}

}  // namespace
