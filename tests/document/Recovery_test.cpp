// SPDX-License-Identifier: MIT

// Recovery files: their text, the folders of running copies, and what a copy that is gone left behind.

#include <filesystem>

#include "DocumentSupport.h"
#include "document/LostGrids.h"
#include "document/RecoveryFile.h"
#include "document/RecoveryStore.h"
#include "support/ScriptedHost.h"

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

// The sum that stands at the end of a file, for texts that were changed on purpose.
std::string WithFreshSum(std::string text) {
    text.resize(text.rfind("[End]"));
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char c : text) sum = (sum ^ std::uint8_t(c)) * 0x100000001B3;
    char digits[17];
    snprintf(digits, sizeof digits, "%016llX", static_cast<unsigned long long>(sum));
    return text + "[End]\r\nSum=" + digits + "\r\n";
}

class Recovery : public testing::Test {
  protected:
    Recovery() {
        SetPuzzle(document, 1, 9);
        document.EnterValue(1, 1, {});
        document.SwitchExclusion(2, 7);
        document.Reinit();
        document.EnterValue(3, 3, {});
        document.Undo();
        document.Path("/jeux/a \"b\" 100%41\n\xE9 .nx3");
    }

    // Every state that undo and redo lead to.
    static std::string Walk(GridDocument& grid) {
        std::string walk;
        const auto note = [&] {
            for (int i = 1; i <= 3; ++i) walk += StateText(grid, i) + " ";
        };
        while (grid.CanUndo()) note(), grid.Undo();
        while (grid.CanRedo()) note(), grid.Redo();
        note();
        return walk + StateText(grid, 81) + grid.Caption() + grid.Path();
    }

    ScriptedHost host;
    GridDocument document;
    const std::string parent = host.PathOf("state/recovery");
};

TEST_F(Recovery, EverythingComesBackFromTheText) {
    const auto snapshot = RecoveryFile::Parse(RecoveryFile::Text(document.Snapshot()));
    ASSERT_TRUE(snapshot);
    GridDocument back;
    back.Resume(*snapshot);
    EXPECT_TRUE(back.Modified());
    EXPECT_FALSE(back.Grid().Cells(1)->Avail(2)) << "row 2 has it in box 1";
    EXPECT_EQ(Walk(back), Walk(document));
    ScriptedHost::WriteFile(host.PathOf("a.nx3"), RecoveryFile::Text(document.Snapshot()));
    EXPECT_TRUE(GridDocument().LoadFile(host.PathOf("a.nx3"))) << "a grid file as well";
}

TEST_F(Recovery, UndoneUpToTheFileTheGridIsAsSaved) {
    const std::string file = host.PathOf("a.nx3");
    document.Path(file);
    ASSERT_TRUE(document.SaveFile(file));
    document.EnterValue(4, 4, {});
    GridDocument back;
    back.Resume(*RecoveryFile::Parse(RecoveryFile::Text(document.Snapshot())));
    back.Undo();
    EXPECT_FALSE(back.Modified() || back.FileChanged());
    ScriptedHost::WriteFile(file, "[]\r\n");
    EXPECT_TRUE(back.FileChanged()) << "somebody else's work, while no copy was running";
}

TEST_F(Recovery, ATextThatIsNotWholeOrHoldsNoGridIsRefused) {
    const std::string whole = RecoveryFile::Text(document.Snapshot());
    EXPECT_FALSE(RecoveryFile::Parse(""));
    for (std::size_t i = 0; i + 2 < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] ^= 1;
        EXPECT_FALSE(RecoveryFile::Parse(damaged)) << i;
        EXPECT_FALSE(RecoveryFile::Parse(whole.substr(0, i))) << i;
    }
    ASSERT_TRUE(RecoveryFile::Parse(WithFreshSum(whole)));
    for (const auto& [from, to] : {std::pair{"Version=1", "Version=2"},
                                   {"Steps=4", "Steps=99999999"},
                                   {"Position=3", "Position=5"},
                                   {"Position=3", "Position=-1"},
                                   {"\r\n1=0|", "\r\n1=10|"},
                                   {"2=2|0|0|0|", "2=82|0|0|0|"},
                                   {"2=2|0|0|0|", "2=2|10|0|0|"}}) {
        std::string odd = whole;
        ASSERT_NE(odd.find(from), std::string::npos) << from;
        odd.replace(odd.find(from), std::string_view(from).size(), to);
        EXPECT_FALSE(RecoveryFile::Parse(WithFreshSum(odd))) << to;
    }
}

TEST_F(Recovery, ACopyThatIsGoneLeavesItsGridsToOneOther) {
    auto store = std::make_unique<RecoveryStore>(parent);
    for (const int grid : {1, 2, 3}) store->Keep(grid, document.Snapshot());
    store->Drop(2);
    ASSERT_TRUE(store->Flush(60s));
    EXPECT_TRUE(LostGrids(parent).Grids().empty()) << "its copy is running";
    store->Leave();
    store->Drop(1);
    store.reset();
    {
        const LostGrids lost(parent);
        EXPECT_EQ(lost.Grids().size(), 2);
        EXPECT_TRUE(LostGrids(parent).Grids().empty()) << "another copy has them";
    }
    LostGrids(parent).Remove();
    EXPECT_TRUE(fs::is_empty(parent));
    RecoveryStore(parent).Keep(1, document.Snapshot());
    EXPECT_TRUE(fs::is_empty(parent)) << "an orderly end leaves nothing";
}

TEST_F(Recovery, WhatIsDamagedIsPutAsideTheRestComesBack) {
    auto store = std::make_unique<RecoveryStore>(parent);
    for (const int grid : {1, 2}) store->Keep(grid, document.Snapshot());
    ASSERT_TRUE(store->Flush(60s));
    store->Leave();
    store.reset();
    const fs::path folder = *fs::directory_iterator(parent);
    ScriptedHost::WriteFile(folder / "1.nx3", "half");
    ScriptedHost::WriteFile(folder / ".ninarix-abcdef", "of a killed save");
    ScriptedHost::WriteFile(parent + "/session-foreign", "no folder");
    LostGrids lost(parent);
    EXPECT_EQ(lost.Grids().size(), 1);
    lost.Remove();
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_EQ(ScriptedHost::ReadFile(lost.Damaged().at(0)), "half");
    EXPECT_TRUE(LostGrids(parent).Damaged().empty()) << "named once";
}

TEST_F(Recovery, WithoutAPlaceForItPlayGoesOn) {
    ScriptedHost::WriteFile(host.PathOf("state"), "a file");
    RecoveryStore store(parent);
    store.Keep(1, document.Snapshot());
    EXPECT_FALSE(store.Flush(60s));
    EXPECT_TRUE(LostGrids(parent).Grids().empty());
}

}  // namespace
