#include "document/GridDocument.h"

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
    // The digits that the program holds impossible in a cell.
    std::string Impossible(int index) const {
        std::string digits;
        for (int d = 1; d <= 9; ++d) {
            if (!document.Grid().Cells(index)->Avail(d)) digits += std::to_string(d);
        }
        return digits;
    }

    ScriptedHost host;
    GridDocument document;
};

// ---- Entry.

TEST_F(Document, AnEntryIsTakenOrRefusedByCellDigitAndMode) {
    struct Case {
        const char* before;  // of cell 1; cell 9 holds 5, so 5 is impossible
        int digit;
        EntryModes modes;
        const char* after;  // null: refused
    };
    const Case cases[] = {{"0|0|8", 4, play, "4|0|8"},           {"0|0|8", 5, play, nullptr},
                          {"0|0|8", 3, play, nullptr},           {"0|0|8", 5, hidden, "5|0|8"},
                          {"0|0|8", 3, hidden, "3|0|8"},         {"6|0|8", 0, play, "0|0|8"},
                          {"7|1|0", 4, hidden, nullptr},         {"7|1|0", 0, play, nullptr},
                          {"7|1|0", 4, initialisation, "4|1|0"}, {"0|0|0", 6, initialisation, "6|1|0"},
                          {"7|1|4", 0, initialisation, "0|0|4"}, {"0|0|0", 5, initialisation, nullptr}};
    for (const Case& c : cases) {
        GridDocument fresh;
        Set(fresh, 9, "5|0|0");
        Set(fresh, 1, c.before);
        fresh.Grid().Modified(false);
        const bool taken = c.after != nullptr;
        EXPECT_EQ(fresh.EnterValue(1, c.digit, c.modes), taken) << c.before << " " << c.digit;
        EXPECT_EQ(StateText(fresh, 1), taken ? c.after : c.before) << c.digit;
        EXPECT_EQ(fresh.Modified(), taken);
        EXPECT_EQ(fresh.CanUndo(), taken) << "a refused entry is no change";
    }
    for (const auto& [cell, digit] : {std::pair{1, 10}, {1, -1}, {0, 1}, {82, 1}}) {
        EXPECT_THROW(document.EnterValue(cell, digit, play), RuntimeError) << cell;
        EXPECT_THROW(document.SwitchExclusion(cell, digit), RuntimeError) << cell;
    }
}

TEST_F(Document, CandidatesFollowEveryChange) {
    document.EnterValue(11, 4, play);  // row 2, column 2, box 1
    EXPECT_EQ(Impossible(18) + Impossible(74) + Impossible(1) + Impossible(81), "444");
    document.Undo();
    EXPECT_EQ(Impossible(1), "");
    document.Redo();
    EXPECT_EQ(Impossible(1), "4");
    document.NoAutoMask(true);
    EXPECT_EQ(Impossible(1), "");
    EXPECT_TRUE(document.EnterValue(10, 4, play)) << "the user keeps the candidates";
}

// ---- History.

TEST_F(Document, UndoAndRedoWalkThroughEveryState) {
    const char* const states[] = {"0|0|0", "7|1|0", "0|0|0", "0|0|4", "0|0|516", "0|0|0", "3|1|0"};
    document.EnterValue(5, 7, initialisation);
    document.EnterValue(5, 0, initialisation);
    document.SwitchExclusion(5, 2);
    document.RegUndo("5|0|0|4|5|0|0|516");  // a change that another made
    Set(document, 5, states[4]);
    document.SwitchExclusion(5, 0);
    document.EnterValue(5, 3, initialisation);
    for (int round = 0; round < 2; ++round) {
        for (int i = 5; i >= 0; --i) {
            EXPECT_EQ(document.Undo(), 5);
            EXPECT_EQ(State(5), states[i]);
        }
        EXPECT_TRUE(!document.CanUndo() && document.CanRedo());
        for (int i = 1; i <= 6; ++i) {
            EXPECT_EQ(document.Redo(), 5);
            EXPECT_EQ(State(5), states[i]);
        }
        EXPECT_TRUE(document.CanUndo() && !document.CanRedo());
    }
    EXPECT_THROW(document.RegUndo("82|0|0|0|82|0|0|0"), RuntimeError);
    EXPECT_FALSE(document.CanRedo());
    EXPECT_EQ(document.Undo(), 5) << "what is no record is not kept";
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
}

TEST_F(Document, TheModifiedMarkFollowsTheHistory) {
    const std::string file = host.PathOf("a.nx3");
    document.EnterValue(1, 4, play);
    document.Undo();
    EXPECT_FALSE(document.Modified()) << "new and empty, as it was";
    document.Redo();
    ASSERT_TRUE(document.SaveFile(file) && document.LoadFile(file));
    document.EnterValue(2, 5, play);
    document.EnterValue(3, 6, play);
    ASSERT_TRUE(document.SaveFile(file));
    for (const bool modified : {true, true, false}) {
        if (modified)
            document.Undo();
        else if (document.CanRedo())
            document.Redo(), document.Redo();
        EXPECT_EQ(document.Modified(), modified);
    }
    document.Undo();
    document.EnterValue(4, 7, play);  // what was saved cannot be reached any more
    document.Undo();
    EXPECT_TRUE(document.Modified());
    document.CopyFrom(GridDocument());
    document.EnterValue(4, 7, play);
    document.Undo();
    EXPECT_TRUE(document.Modified()) << "a copy is in no file";
}

// ---- Whole grids.

TEST_F(Document, ACopyHasTheCellsAlone) {
    document.Path("C:\\Jeux\\Facile.2.nx3");
    EXPECT_EQ(document.Caption(), "Facile.2");
    Set(document, 1, "5|1|0");
    Set(document, 81, "0|0|1022");
    GridDocument copy;
    copy.EnterValue(3, 9, play);
    copy.CopyFrom(document);
    EXPECT_EQ(StateText(copy, 1) + " " + StateText(copy, 3) + " " + StateText(copy, 81),
              "5|1|0 0|0|0 0|0|1022");
    EXPECT_FALSE(copy.Grid().Cells(9)->Avail(5));
    EXPECT_EQ(copy.Path() + copy.Caption(), "");
    copy.EnterValue(1, 6, initialisation);
    EXPECT_EQ(State(1), "5|1|0");
}

TEST_F(Document, ReinitKeepsOnlyTheGivens) {
    SetPuzzle(document, 2, 81);
    Set(document, 2, "6|0|36");
    Set(document, 81, "0|0|8");
    document.Reinit();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(81), "1|1|0 0|0|0 0|0|0");
    EXPECT_EQ(Impossible(9), "1");
    EXPECT_EQ(document.Undo(), 0) << "several cells, one step";
    EXPECT_FALSE(document.CanUndo());
    EXPECT_EQ(State(2) + " " + State(81) + " " + Impossible(9), "6|0|36 0|0|8 16");
    document.Redo();
    EXPECT_EQ(State(2) + " " + State(81) + " " + Impossible(9), "0|0|0 0|0|0 1");
    document.Reinit();
    document.Undo();
    EXPECT_FALSE(document.CanUndo()) << "what changed nothing is no step";
}

// ---- The engine.

TEST_F(Document, WrongValuesAreCountedAgainstTheSolutionOfTheGivens) {
    SetPuzzle(document, 1, 9);
    EXPECT_EQ(document.WrongValues(), 0) << "no solution is known yet";
    document.FindSolution(nullptr);
    EXPECT_EQ(State(4), "0|0|0") << "the solution must not show";
    struct Entry {
        const char* state;
        bool known;
        int wrong;
    };
    for (const Entry& e :
         {Entry{"1|0|0", true, 0}, {"2|0|0", true, 1}, {"0|0|0", true, 0}, {"1|1|0", false, 0}}) {
        Set(document, 1, e.state);
        EXPECT_EQ(document.SolutionKnown(), e.known) << e.state;
        EXPECT_EQ(document.WrongValues(), e.wrong) << e.state;
    }
    Set(document, 1, "0|0|0");
    for (const int cell : {2, 3}) document.EnterValue(cell, 1, hidden);
    EXPECT_EQ(document.WrongValues(), 2);
    Set(document, 10, "5|1|0");  // another digit than it was solved from
    EXPECT_FALSE(document.SolutionKnown());
    EXPECT_EQ(document.WrongValues(), 0);
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
}

TEST_F(Document, SolvingFillsTheGridFromItsGivens) {
    SetPuzzle(document, 1, 18);
    Set(document, 1, "9|0|0");
    EXPECT_FALSE(document.IsComplete());
    document.EnterValue(2, 2, play);
    document.SwitchExclusion(3, 7);
    document.SolveGrid(nullptr);
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(document.Grid().Cells(i)->Value(), SolutionAt(i)) << i;
    document.Undo();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(3) + " " + State(4), "9|0|0 2|0|0 0|0|128 0|0|0");
    EXPECT_EQ(Impossible(18), "1245678") << "what column 9 and box 3 hold";
    EXPECT_EQ(document.Undo(), 3) << "the entries before are still there, one by one";
    document.Redo();
    document.Redo();
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(document.Grid().Cells(i)->Value(), SolutionAt(i)) << i;
    EXPECT_FALSE(document.Grid().Cells(1)->Locked());
    EXPECT_TRUE(document.IsComplete());
    Set(document, 81, "0|0|0");
    EXPECT_FALSE(document.IsComplete());
}

TEST_F(Document, AGeneratedGridIsItsGivensAndKnowsItsSolution) {
    Set(document, 1, "5|1|36");
    ScriptedHost::WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\nResolLoop=-1\r\n");  // asks at once
    host.Expect(platform::MessageButton::No);
    EXPECT_FALSE(document.CreateGrid(nullptr));
    EXPECT_EQ(State(1), "5|1|36") << "declined: nothing changes";
    host.AnswerAlways(platform::MessageButton::Yes);
    ASSERT_TRUE(document.CreateGrid(nullptr));
    EXPECT_TRUE(document.SolutionKnown());
    int givens = 0;
    int candidates = 0;
    for (int i = 1; i <= 81; ++i) {
        const CellState state = StateOf(*document.Grid().Cells(i));
        EXPECT_EQ(state, (CellState{state.value, state.value != 0, 0})) << i;
        givens += state.locked ? 1 : 0;
        candidates += static_cast<int>(9 - Impossible(i).size());
    }
    EXPECT_GE(givens, 28);
    EXPECT_LE(givens, 36);
    EXPECT_LT(candidates, 81 * 9);
}

}  // namespace
