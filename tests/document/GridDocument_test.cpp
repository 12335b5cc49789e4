// SPDX-License-Identifier: MIT
#include "document/GridDocument.h"

#include <filesystem>

#include "DocumentSupport.h"
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
    // Cell 1 before, while 5 is impossible for cell 9 has it; what is entered; cell 1 after, null: refused.
    const std::tuple<const char*, int, EntryModes, const char*> cases[] = {
        {"0|0|8", 4, play, "4|0|8"},           {"0|0|8", 5, play, nullptr},
        {"0|0|8", 3, play, nullptr},           {"0|0|8", 5, hidden, "5|0|8"},
        {"6|0|8", 0, play, "0|0|8"},           {"7|1|0", 4, hidden, nullptr},
        {"7|1|0", 0, play, nullptr},           {"7|1|4", 0, initialisation, "0|0|4"},
        {"0|0|0", 6, initialisation, "6|1|0"}, {"0|0|0", 5, initialisation, nullptr}};
    for (const auto& [before, digit, modes, after] : cases) {
        GridDocument fresh;
        Set(fresh, 9, "5|0|0");
        Set(fresh, 1, before);
        fresh.Grid().Modified(false);
        const bool taken = after != nullptr;
        EXPECT_EQ(fresh.EnterValue(1, digit, modes), taken) << before << " " << digit;
        EXPECT_EQ(StateText(fresh, 1), taken ? after : before) << digit;
        EXPECT_TRUE(fresh.Modified() == taken && fresh.CanUndo() == taken) << "a refused entry is no change";
    }
    for (const auto& [cell, digit] : {std::pair{1, 10}, {1, -1}, {0, 1}, {82, 1}}) {
        EXPECT_THROW(document.EnterValue(cell, digit, play), RuntimeError) << cell;
        EXPECT_THROW(document.SwitchExclusion(cell, digit), RuntimeError) << cell;
    }
}

TEST_F(Document, CandidatesFollowEveryEntryUnlessTheUserKeepsThem) {
    document.EnterValue(11, 4, play);
    EXPECT_FALSE(document.EnterValue(10, 4, play));
    document.NoAutoMask(true);
    EXPECT_TRUE(document.EnterValue(10, 4, play));
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
        for (int i = 5; i >= 0; --i) EXPECT_TRUE(document.Undo() == 5 && State(5) == states[i]) << i;
        EXPECT_TRUE(!document.CanUndo() && document.CanRedo());
        for (int i = 1; i <= 6; ++i) EXPECT_TRUE(document.Redo() == 5 && State(5) == states[i]) << i;
        EXPECT_TRUE(document.CanUndo() && !document.CanRedo());
    }
    EXPECT_THROW(document.RegUndo("82|0|0|0|82|0|0|0"), RuntimeError);
    EXPECT_FALSE(document.CanRedo());
    EXPECT_EQ(document.Undo(), 5) << "what is no record is not kept";
    document.EnterValue(40, 9, play);
    EXPECT_FALSE(document.CanRedo()) << "a new change drops what could be redone";
    EXPECT_TRUE(document.Undo() == 40 && document.Undo() == 5);
    EXPECT_EQ(State(5), states[4]);
}

TEST_F(Document, WhatItHasWrittenIsNotWrittenAgainButForWhatOthersDid) {
    const std::string file = host.PathOf("a.nx3");
    document.EnterValue(1, 4, play);
    ASSERT_TRUE(document.SaveFile(file));
    const auto first = platform::FileStamp::Of(file);
    EXPECT_TRUE(document.SaveFile(file) && platform::FileStamp::Of(file) == first);
    // Within the clock's tick: in the same place, of the same size and time.
    const std::string whole = ScriptedHost::ReadFile(file);
    const auto time = std::filesystem::last_write_time(file);
    ScriptedHost::WriteFile(file, std::string(whole.size(), ' '));
    std::filesystem::last_write_time(file, time);
    ASSERT_EQ(platform::FileStamp::Of(file), first);
    EXPECT_TRUE(document.SaveFile(file) && ScriptedHost::ReadFile(file) == whole);
}

TEST_F(Document, TheModifiedMarkFollowsTheHistory) {
    const std::string file = host.PathOf("a.nx3");
    document.EnterValue(1, 4, play);
    document.Undo();
    EXPECT_FALSE(document.Modified()) << "new and empty, as it was";
    document.Redo();
    ASSERT_TRUE(document.SaveFile(file) && document.LoadFile(file));
    for (const int cell : {2, 3}) document.EnterValue(cell, cell, play);
    ASSERT_TRUE(document.SaveFile(file));
    for (const auto step : {&GridDocument::Undo, &GridDocument::Undo, &GridDocument::Redo}) {
        (document.*step)();
        EXPECT_TRUE(document.Modified());
    }
    document.Redo();
    EXPECT_FALSE(document.Modified());
    document.Undo();
    document.EnterValue(4, 7, play);  // what was saved cannot be reached any more
    document.Undo();
    EXPECT_TRUE(document.Modified());
    document.CopyFrom(GridDocument());
    EXPECT_FALSE(document.CanUndo());
    document.EnterValue(4, 7, play);
    document.Undo();
    EXPECT_TRUE(document.Modified()) << "a copy is in no file";
}

// ---- Whole grids.

TEST_F(Document, ReinitKeepsOnlyTheGivens) {
    const auto states = [this] { return State(1) + " " + State(2) + " " + State(81) + " " + Impossible(9); };
    SetPuzzle(document, 2, 81);
    Set(document, 2, "6|0|36");
    Set(document, 81, "0|0|8");
    document.Reinit();
    EXPECT_EQ(states(), "1|1|0 0|0|0 0|0|0 1");
    EXPECT_EQ(document.Undo(), 0) << "several cells, one step";
    EXPECT_FALSE(document.CanUndo());
    EXPECT_EQ(states(), "1|1|0 6|0|36 0|0|8 16");
    document.Redo();
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
    Set(document, 1, "1|0|0");
    for (const int cell : {2, 3}) document.EnterValue(cell, 1, hidden);
    EXPECT_EQ(document.WrongValues(), 2);
    Set(document, 10, "5|1|0");  // another digit than it was solved from
    EXPECT_FALSE(document.SolutionKnown());
    EXPECT_EQ(document.WrongValues(), 0);
}

TEST_F(Document, SolvingFillsTheGridFromItsGivensInOneStep) {
    SetPuzzle(document, 1, 18);
    Set(document, 1, "9|0|0");
    document.EnterValue(2, 2, play);
    document.SwitchExclusion(3, 7);
    document.SolveGrid(nullptr);
    for (int i = 1; i <= 81; ++i) EXPECT_EQ(document.Grid().Cells(i)->Value(), SolutionAt(i)) << i;
    EXPECT_TRUE(document.IsComplete() && document.Grid().Solved());
    EXPECT_EQ(State(1) + " " + Impossible(1), "1|0|0 123456789");
    document.Undo();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(3) + " " + State(4), "9|0|0 2|0|0 0|0|128 0|0|0");
    EXPECT_EQ(Impossible(18), "1245678") << "what column 9 and box 3 hold";
    EXPECT_EQ(document.Undo(), 3) << "the entries before are still there, one by one";
    document.Redo();
    document.Redo();
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
    for (int i = 1; i <= 81; ++i) {
        const CellState state = StateOf(*document.Grid().Cells(i));
        EXPECT_EQ(state, (CellState{state.value, state.value != 0, 0})) << i;
    }
    EXPECT_TRUE(!document.IsComplete() && document.SolutionKnown());
}

}  // namespace
