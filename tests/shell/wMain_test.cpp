// SPDX-License-Identifier: MIT

// Starts and ends.

#include "shell/wMain.h"

#include <QApplication>
#include <QScreen>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <set>
#include <utility>

#include "Program.h"
#include "document/window/BusyGuard.h"
#include "settings/ColorTable.h"
#include "shell/wSplash.h"

namespace {

using platform::MessageButton;
namespace fs = std::filesystem;

class StartUp : public Program {};

TEST_F(StartUp, OneFileIsOpenedOfTheWholeCommandLine) {
    const std::string file = GridFile("ma grille.nx3");
    const std::string withQuote = GridFile("ma fin\"");
    const std::pair<std::string, const char*> lines[] = {{'"' + file + '"', "[ma grille]"},
                                                         {fs::relative(file), "[ma grille]"},
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

// ---- The window.

TEST_F(StartUp, TheFirstWindowHasSquareCellsTheNextOnesTheLastPlaceAsFarAsItFits) {
    Start();
    Run("mnuFileNew");
    EXPECT_NEAR(Active().width(), Active().height(), 6);
    const QSize first = main->size();
    const QSize screen = main->screen()->availableSize();
    EXPECT_TRUE(first.width() < screen.width() && first.height() < screen.height());
    main->resize(700, 500);
    main->close();
    Start();
    EXPECT_EQ(main->size(), QSize(700, 500));
    main->resize(3000, 3000);
    main->close();
    Start();
    EXPECT_TRUE(main->width() <= screen.width() && main->height() <= screen.height());
    ScriptedHost::WriteFile(host.StateFolder() + "/window", "nulle part");
    Start();
    EXPECT_EQ(main->size(), first);
}

TEST_F(StartUp, ACoveredGridIsLaidOutWhenItIsShown) {
    Start();
    for (int i = 0; i < 2; ++i) Run("mnuFileNew");
    const OpenGrid covered = main->Grids().front();
    const QSize before = covered->size();
    main->resize(main->size() + QSize(90, 63));
    ServeEvents();
    EXPECT_EQ(covered->size(), before) << "nobody sees it";
    EXPECT_EQ(Active().size(), Area().viewport()->size());
    Child<QTabBar>(*main, "tabStrip").setCurrentIndex(0);
    EXPECT_EQ(covered->size(), Area().viewport()->size());
    EXPECT_EQ(covered->ctrlCells(81).geometry().bottomRight(), covered->rect().bottomRight());
}

// Gathers the cells that are painted.
class PaintedCells : public QObject {
  public:
    explicit PaintedCells(const wGrid& grid) : grid_(grid) {
        for (int i = 1; i <= 81; ++i) grid_.ctrlCells(i).installEventFilter(this);
    }
    std::set<int> Take() { return std::exchange(cells_, {}); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        for (int i = 1; event->type() == QEvent::Paint && i <= 81; ++i) {
            if (watched == &grid_.ctrlCells(i)) cells_.insert(i);
        }
        return false;
    }

  private:
    const wGrid& grid_;
    std::set<int> cells_;
};

TEST_F(StartUp, OnlyCellsThatShowSomethingElseArePaintedAnew) {
    Start();
    Run("mnuFileNew");
    Active().ctrlCells(41).DoSelect();
    ServeEvents();
    PaintedCells painted(Active());
    QTest::keyClick(main->focusWidget(), Qt::Key_Right);
    ServeEvents();
    EXPECT_EQ(painted.Take(), (std::set{41, 42}));
    QTest::keyClick(main->focusWidget(), Qt::Key_5);
    ServeEvents();
    // All that may hold no 5 any more.
    std::set<int> changed{31, 32, 33, 40, 41, 42, 49, 50, 51};
    for (int i = 0; i < 9; ++i) changed.insert({37 + i, 6 + 9 * i});
    EXPECT_EQ(painted.Take(), changed);
}

TEST_F(StartUp, TheEmptyAreaSaysHowToBegin) {
    Start();
    auto& hints = Child<QLabel>(*main, "lblStartHints");
    EXPECT_TRUE(hints.isVisible() && hints.text().contains("Ctrl+G"));
    emit hints.linkActivated("mnuFileNew");
    EXPECT_EQ(Grids(), "[Grille1]");
    EXPECT_FALSE(hints.isVisible());
    Run("mnuFileClose");
    EXPECT_TRUE(hints.isVisible());
}

TEST_F(StartUp, F6LeadsTheKeyboardThroughThePartsOfTheWindow) {
    Start();
    Open(GridFile("a.nx3"));
    Open(GridFile("b.nx3"));
    QApplication::setActiveWindow(main.get());
    const std::pair<QKeyCombination, const char*> walk[] = {
        {Qt::Key_F6, "cmdValue(0)"}, {Qt::Key_F6, "mnuFileQuit"},  {Qt::Key_Right, "mnuFileNew"},
        {Qt::Key_End, "mnuHelpAsk"}, {Qt::Key_F6, "tabStrip"},     {Qt::Key_F6, "path"},
        {Qt::Key_F6, "state"},       {Qt::Key_F6, "ctrlCells(1)"}, {Qt::SHIFT | Qt::Key_F6, "state"}};
    for (const auto& [key, name] : walk) {
        QTest::keyClick(main->focusWidget(), key.key(), key.keyboardModifiers());
        const auto* tool = qobject_cast<QToolButton*>(main->focusWidget());
        const QObject* at = tool ? static_cast<const QObject*>(tool->defaultAction()) : main->focusWidget();
        EXPECT_TRUE(at->objectName().contains(name)) << name << " " << at->objectName().toStdString();
    }
}

// ---- Settings.

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
    fs::rename(file, file + "~");
    fs::create_directory(file);
    host.Expect(MessageButton::Ok);
    host.onShow = [this] { EXPECT_TRUE(main && main->isVisible()); };
    Start();
    Child<wSplash>(*main, "wSplash").tmrClose().start(0);  // it must not lie over the message
    EXPECT_TRUE(Eventually([this] { return LastBox().ends_with("fichier illisible"); })) << LastBox();
    EXPECT_EQ(ColorTable::Shared(), ColorTable::Defaults);
    fs::remove(file);
    fs::rename(file + "~", file);
    Setting("Options", "NoSplash", "1");
    main->close();
    EXPECT_EQ(ScriptedHost::ReadFile(file), old);
}

// ---- Ends that are none, and what the next start makes of them.

class Session : public RunningProgram {
  protected:
    bool Kept() const {
        std::error_code missing;
        const fs::recursive_directory_iterator entries(host.PathOf("state"), missing);
        return std::any_of(begin(entries), end(entries),
                           [](const auto& entry) { return entry.path().extension() == ".nx3"; });
    }
    void Type(int cell, int digit) const {
        Active().ctrlCells(cell).DoSelect();
        main->cmdValue_Click(digit);
    }
    // The process is told to end, then there is another one.
    void EndAndStart() {
        main->EndNow();
        main.reset();
        Start();
    }
};

TEST_F(Session, AModifiedGridIsKeptUntilItIsSavedOrThrownAway) {
    Open(GridFile("a.nx3"));
    for (const char* command : {"mnuFileSave", "mnuFileClose"}) {
        Type(2, Document().CanUndo() ? 4 : 3);
        EXPECT_TRUE(Eventually([this] { return Kept(); }));
        if (command == std::string("mnuFileClose")) host.Expect(MessageButton::No);
        Run(command);
        EXPECT_TRUE(Eventually([this] { return !Kept(); })) << command;
    }
}

TEST_F(Session, GridsComeBackWithTheirHistoryAfterAnEndWithoutQuestions) {
    Run("mnuFileOpen", GridFile("a.nx3"));
    Type(2, 3);
    Type(3, 4);
    Run("mnuFileNew");
    Type(1, 9);
    Run("mnuFileNew");  // empty, as new ones are
    host.Expect(MessageButton::Yes);
    EndAndStart();
    EXPECT_EQ(Grids() + " " + RecentFiles(), "a, [Grille1] a.nx3");
    EXPECT_NE(LastBox().find(": a, Grille1.\r\n"), std::string::npos) << LastBox();
    EXPECT_EQ(State(1), "9|1|0");
    Activate(0);
    EXPECT_EQ(PathPanel() + State(3), host.PathOf("a.nx3") + "4|0|0");
    Active().SetFocus();
    Run("mnuEditUndo");
    Run("mnuEditUndo");
    EXPECT_FALSE(Document().Modified()) << "as its file is";
    Run("mnuFileNew");
    EXPECT_EQ(Grids(), "a, Grille1, [Grille2]") << "no name twice";
}

TEST_F(Session, NoThrowsAwayCancelAsksAgain) {
    Run("mnuFileNew");
    Type(1, 9);
    for (const MessageButton answer : {MessageButton::Cancel, MessageButton::No}) {
        host.Expect(answer);
        EndAndStart();
        EXPECT_EQ(Grids(), "");
    }
    EndAndStart();
    EXPECT_EQ(host.boxes.size(), 2);
}

TEST_F(Session, TheEndIsAnOrderlyOneInAQuestionAndInARun) {
    Run("mnuFileNew");
    Type(1, 9);
    for (auto* moment : {&host.onShow, &host.onYield}) {
        *moment = [this] { main->EndNow(); };
        if (moment == &host.onShow)
            Run("mnuFileClose", MessageButton::Cancel);
        else
            Run("mnuHelpSolve", MessageButton::Ok);
        EXPECT_TRUE(Kept());
        EXPECT_FALSE(BusyGuard::Active());
        *moment = {};
        host.Expect(MessageButton::Yes);
        EndAndStart();
        EXPECT_EQ(State(1), "9|1|0");
    }
}

TEST_F(Session, ItsManagerGetsTheUsersAnswer) {
    Run("mnuFileNew");
    Type(1, 9);
    EXPECT_TRUE(main->CommitSession(false) && Kept());
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(main->CommitSession(true));
    host.Expect(MessageButton::No);
    EXPECT_TRUE(main->CommitSession(true));
    EXPECT_TRUE(Kept()) << "another program may still refuse to end the session";
    Type(2, 8);
    Run("mnuFileQuit", MessageButton::Cancel);
    host.Expect(MessageButton::No);
    EXPECT_TRUE(main->CommitSession(true));
    Run("mnuFileQuit");  // as the toolkit does it then, without the question again
    EXPECT_FALSE(main->isVisible());
    host.Expect(MessageButton::Yes);
    EndAndStart();
    EXPECT_EQ(State(2), "8|1|0");
    Run("mnuFileClose", MessageButton::No);
}

TEST_F(Session, AFileThatCannotComeBackIsNamed) {
    fs::create_directories(host.PathOf("state/recovery/session-abc"));
    for (const char* name : {"lock", "1.nx3"}) {
        ScriptedHost::WriteFile(host.PathOf("state/recovery/session-abc/") + name, "damaged");
    }
    host.Expect(MessageButton::Ok);
    EndAndStart();
    EXPECT_TRUE(LastBox().ends_with("session-abc-1.nx3")) << LastBox();
    EndAndStart();
}

}  // namespace
