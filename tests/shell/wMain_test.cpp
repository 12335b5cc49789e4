// Start and shutdown.

#include "shell/wMain.h"

#include <QTest>
#include <QTimer>

#include "Program.h"
#include "settings/ColorTable.h"
#include "shell/wSplash.h"

namespace {

using platform::MessageButton;

class StartUp : public Program {};

TEST_F(StartUp, OneFileIsOpenedOfTheWholeCommandLine) {
    const std::string file = GridFile("ma grille.nx3");
    const std::string withQuote = GridFile("ma fin\"");
    const std::pair<std::string, const char*> lines[] = {{'"' + file + '"', "[ma grille]"},
                                                         {std::filesystem::relative(file), "[ma grille]"},
                                                         {withQuote, "[ma fin\"]"},
                                                         {"\"", ""}};
    for (const auto& [line, grids] : lines) {
        host.commandLine = line;
        if (*grids == '\0') host.Expect(MessageButton::Ok);
        Start();
        EXPECT_EQ(Grids() + RecentFiles(), grids) << line;
        EXPECT_TRUE(*grids == '\0' || PathPanel().starts_with('/')) << PathPanel();
    }
    EXPECT_TRUE(main->isVisible() && LastBox().starts_with("16 Error Nr 53")) << LastBox();
}

// The monkey opens the about box, which is the same window, again and again.
TEST_F(StartUp, TheSplashIsClosedByItsTimer) {
    Setting("Options", "NoSplash", "0");
    Start();
    auto* splash = main->findChild<wSplash*>();
    QTest::mouseClick(splash, Qt::LeftButton);
    EXPECT_TRUE(splash->isVisible());
    splash->tmrClose().setInterval(0);
    splash->tmrClose().start();
    EXPECT_TRUE(Eventually([this] { return !main->findChild<wSplash*>(); }));
}

// ---- Settings.

TEST_F(StartUp, AFirstStartWritesWhatIsMissingBeforeItReadsTheColours) {
    const std::string kept = "GridSize=12\xE9\r\nLevelValue=cinq\r\n";
    ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "[Options]\r\nNoSplash=1\r\n" + kept);
    ColorTable::Shared() = {};
    Start();
    EXPECT_EQ(Setting("Options", "Color_0") + Setting("Options", "Color_3"), "16777215255");
    EXPECT_EQ(ColorTable::Shared(), ColorTable::Defaults);
    EXPECT_NE(ScriptedHost::ReadFile(IniParamProcs::IniFilePath()).find(kept), std::string::npos);
}

TEST_F(StartUp, WhatWasKeptComesBack) {
    for (int i = 1; i <= 10; ++i) Setting("MRU", std::to_string(i).c_str(), "/jeux/" + std::to_string(i));
    Start();
    Run("mnuGridHelpNone");
    Run("mnuGridNoAutoMasks");
    Start();
    EXPECT_TRUE(main->MasksHidden() && main->ManualMasks() && !main->InitialisationMode());
    EXPECT_EQ(Setting("Options", "GridHelpNone") + Setting("Options", "NoAutoMasks"), "11");
    EXPECT_EQ(RecentFiles(), "1 2 3 4 5 6 7 8 9");
    main->close();
    EXPECT_EQ(Setting("MRU", "9") + Setting("MRU", "10"), "/jeux/9none");
}

// Faults: the start ends at a wrong word, and the list that was not loaded is wiped at the end; a wrong word,
// or bytes that are no text, are replaced.
TEST_F(StartUp, AWrongWordInAnyKeyCostsNothingElse) {
    const std::string file = IniParamProcs::IniFilePath();
    const auto start = [&](std::string_view section, std::string_view key, bool reported) {
        ScriptedHost::WriteFile(
            file,
            "[Options]\r\nNoSplash=1\r\nColor_0=16777215\r\nGridSize=12\xE9\r\n[Impression]\r\n"
            "[CustomColors]\r\n[Files]\r\nLastSaved=/\xC9t\xE9\r\n[MRU]\r\n1=/jeux/\xE9.nx3\r\n"
            "2=/jeux/\xE8.nx3\r\n");
        IniParamProcs::WriteIniParam(section, key, "\xE9t\xE9");
        const std::string before = ScriptedHost::ReadFile(file);
        if (reported) host.Expect(MessageButton::Ok);
        Start();
        EXPECT_TRUE(main->isVisible() && !main->MasksHidden() && !main->ManualMasks());
        EXPECT_TRUE(!reported || LastBox().starts_with("16 Error Nr 13")) << LastBox();
        main->close();
        EXPECT_EQ(ScriptedHost::ReadFile(file), before) << key;
    };
    Settings::ForEach([&](const auto& row) {
        start(row.section, row.key, row.key == "NoAutoMasks" || row.key == "GridHelpNone");
    });
    start("CustomColors", "3", false);
    start("MRU", "2", false);
    start("Options", "Color_0", false);
    EXPECT_EQ(ColorTable::Shared()[0], 0xFFFFFFU);
}

TEST_F(StartUp, SettingsThatCannotBeReadAreLeftAloneAndToldAfterTheStart) {
    Setting("MRU", "1", "/jeux/a.nx3");
    const std::string file = IniParamProcs::IniFilePath(), old = ScriptedHost::ReadFile(file);
    std::filesystem::rename(file, file + "~");
    std::filesystem::create_directory(file);
    host.Expect(MessageButton::Ok);
    host.onShow = [this] { EXPECT_TRUE(main && main->isVisible()); };
    Start();
    Child<wSplash>(*main, "wSplash").close();  // it must not lie over the message
    ServeEvents();
    EXPECT_TRUE(LastBox().ends_with("fichier illisible")) << LastBox();
    EXPECT_EQ(ColorTable::Shared(), ColorTable::Defaults);
    std::filesystem::remove(file);
    std::filesystem::rename(file + "~", file);
    Setting("Options", "NoSplash", "1");
    main->close();
    EXPECT_EQ(ScriptedHost::ReadFile(file), old);
}

}  // namespace
