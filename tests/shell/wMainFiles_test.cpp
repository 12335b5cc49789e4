// SPDX-License-Identifier: MIT

// Opening and saving.

#include <QDialog>
#include <QTabBar>
#include <QTest>
#include <QWindow>

#include "Program.h"
#include "document/window/BusyGuard.h"

namespace {

using platform::MessageButton;

class Files : public RunningProgram {
  protected:
    static bool Holds(const std::string& file, const char* record) {
        return ScriptedHost::ReadFile(file).find(std::string("\r\n1=") + record + "\r\n") !=
               std::string::npos;
    }
};

TEST_F(Files, AnOpenedFileIsShownAndRemembered) {
    Setting("Files", "LastOpened", "/jeux");
    Run("mnuGridConfig");
    const std::string file = GridFile("Été 1.nx3");
    Run("mnuFileOpen", file);
    EXPECT_TRUE(host.questions[0].folder == "/jeux" && !host.questions[0].save);
    EXPECT_EQ(Grids() + State(1) + PathPanel(), "[Été 1]7|1|0" + file);
    EXPECT_FALSE(Document().Modified() || main->InitialisationMode());
    Run("mnuFileOpen", "");
    EXPECT_EQ(RecentFiles() + Setting("Files", "LastOpened"), "Été 1.nx3" + host.folder.string());
}

TEST_F(Files, AFileThatCannotBeReadIsReportedAndDisturbsNothing) {
    Open(GridFile("a.nx3"));
    Run("mnuFileNew");
    for (const auto& [file, error] : {std::pair{host.PathOf("absent.nx3"), "16 Error Nr 53"},
                                      {host.folder.string(), "16 Error Nr 53"},
                                      {GridFile("b.nx3", "256|0|0"), "16 Error Nr 6 "}}) {
        host.Expect(MessageButton::Ok);
        Run("mnuFileOpen", file);
        EXPECT_TRUE(LastBox().starts_with(error)) << LastBox();
    }
    EXPECT_EQ(Grids() + RecentFiles(), "a, [Grille1]");
    EXPECT_TRUE(main->InitialisationMode());
}

// ---- Opening twice.

TEST_F(Files, EveryWindowOfAnOpenFileIsReloadedOnlyOnRequest) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Run("mnuFileNew");
    Run("mnuFileSaveAs", file);  // a second window of the same file
    Set(2, "5|0|0");
    host.answers = {MessageButton::Ok, MessageButton::Cancel};
    EXPECT_FALSE(Open(file));
    EXPECT_TRUE(LastBox().starts_with("305 Ce fichier est déjà ouvert.")) << LastBox();
    EXPECT_EQ(Grids() + State(2), "a, [a]5|0|0");
    host.answers = {MessageButton::Ok, MessageButton::Ok};
    EXPECT_TRUE(Open(file));
    EXPECT_EQ(Grids() + State(2) + PathPanel(), "[a]0|0|0" + file);
    // A reload that fails loses nothing, whether the file has gone bad or gone.
    Set(2, "5|0|0");
    GridFile("a.nx3", "abc|0|0");
    for (int n = 0; n < 2; ++n) {
        host.answers = {MessageButton::Ok, MessageButton::Ok};  // reload; the report
        EXPECT_FALSE(Open(file));
        EXPECT_EQ(Grids() + State(2), "[a]5|0|0");
        EXPECT_TRUE(Document().Modified());
        std::filesystem::remove(file);
    }
}

TEST_F(Files, ARecentFileComesToTheTopOrGoesWithItsFile) {
    for (const char* name : {"a.nx3", "b.nx3"}) {
        Run("mnuFileOpen", GridFile(name));
        Run("mnuFileClose");
    }
    Run("mnuFileMRU(2)");
    EXPECT_EQ(Grids() + " " + RecentFiles(), "[a] a.nx3 b.nx3");
    std::filesystem::remove(host.PathOf("b.nx3"));
    Run("mnuFileMRU(2)", MessageButton::Ok);
    EXPECT_EQ(Grids() + " " + RecentFiles(), "[a] a.nx3");
}

// ---- Saving.

TEST_F(Files, AFirstSaveAsksForAFileWhichIsTheGridsFromThenOn) {
    Setting("Files", "LastSaved", "/jeux");
    Run("mnuFileNew");
    Set(1, "5|1|0");
    Run("mnuFileSave", "");
    EXPECT_TRUE(Document().Modified());
    EXPECT_EQ(LastBox() + RecentFiles(), "") << "a cancelled save is silent";
    const std::string file = host.PathOf("neuf.nx3");
    Run("mnuFileSave", file);
    EXPECT_EQ(host.questions[0].folder + host.questions[0].proposedName, "/jeuxGrille1");
    EXPECT_TRUE(host.questions[0].save && Holds(file, "5|1|0") && !Document().Modified());
    EXPECT_EQ(Setting("Files", "LastSaved") + Setting("Files", "LastOpened"), host.folder.string() + "none");
    Set(1, "6|1|0");
    Run("mnuFileSave");
    EXPECT_TRUE(Holds(file, "6|1|0"));
    // A failed save keeps name and file.
    Set(1, "7|1|0");
    host.Expect(MessageButton::Ok);
    Run("mnuFileSaveAs", host.PathOf("absent/b.nx3"));
    EXPECT_TRUE(LastBox().starts_with("16 Error Nr 75")) << LastBox();
    EXPECT_EQ(Grids() + RecentFiles() + PathPanel(), "[neuf]neuf.nx3" + file);
    EXPECT_TRUE(Document().Modified());
}

TEST_F(Files, WhatOthersMadeOfAFileIsOverwrittenOnlyOnRequest) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Run("mnuFileNew");
    Run("mnuFileSaveAs", file);  // a second window of the same file
    Activate(0);
    Set(1, "5|0|0");
    Run("mnuFileSave", MessageButton::Cancel);
    EXPECT_EQ(LastBox(), "305 Le fichier \"" + file +
                             "\" a été modifié par un autre programme.\r\nVoulez-vous l'écraser ?");
    EXPECT_TRUE(Holds(file, "0|0|0") && Document().Modified());
    host.Expect(MessageButton::Yes);  // save before closing
    Run("mnuFileClose", MessageButton::Cancel);
    EXPECT_TRUE(Holds(file, "0|0|0") && Document().Modified());
    EXPECT_EQ(Grids(), "[a], a");
    Run("mnuFileSave", MessageButton::Ok);
    EXPECT_TRUE(Holds(file, "5|0|0"));
    Run("mnuFileSave");
}

// Latin-1 names, as old disks have them.
TEST_F(Files, NamesOfAnyBytesAreOpenedSavedAndFoundAgain) {
    const std::string folder = host.PathOf("d\xE9");
    std::filesystem::create_directory(folder);
    const std::string file = GridFile("d\xE9/\xC9t\xE9 1.nx3");
    QMimeData data;
    data.setUrls({QUrl::fromEncoded("file://" + QByteArray::fromStdString(folder).toPercentEncoding("/") +
                                    "/%C9t%E9%201.nx3")});
    EXPECT_TRUE(Drop(data));
    ServeEvents();
    EXPECT_EQ(Grids() + State(1), "[\uFFFDt\uFFFD 1]7|1|0");
    Set(1, "5|1|0");
    Run("mnuFileSave");
    EXPECT_TRUE(Holds(file, "5|1|0"));
    host.Expect(MessageButton::Ok);  // reload
    Run("mnuFileOpen", file);
    EXPECT_EQ(Document().Path() + Setting("Files", "LastOpened"), file + folder);
    Run("mnuFileSaveAs", folder + "/\xE8.nx3");
    EXPECT_EQ(Document().Path() + Setting("Files", "LastSaved"), folder + "/\xE8.nx3" + folder);
}

// ---- Dropping.

TEST_F(Files, ABoxAboutADroppedFileIsSeenWithItsPathAndStopsNoOther) {
    Open(GridFile("a.nx3"));
    const std::string none = host.PathOf("photo.jpg"), damaged = GridFile("b.nx3", "abc|0|0");
    ScriptedHost::WriteFile(none, "JFIF");
    std::string paths;
    host.onShow = [&] { paths += PathPanel() + '\n'; };
    for (int i = 0; i < 3; ++i) host.Expect(MessageButton::Ok);
    EXPECT_TRUE(Drop({none, damaged, host.PathOf("a.nx3"), GridFile("c.nx3"), none}));
    host.Expect(MessageButton::Ok);
    ServeEvents();
    EXPECT_EQ(paths, none + '\n' + damaged + '\n' + host.PathOf("a.nx3") + '\n' + none + '\n');
    EXPECT_TRUE(LastBox().starts_with("16 Error Nr 321 : Format de fichier incorrect\r\n")) << LastBox();
    EXPECT_EQ(Grids() + PathPanel(), "a, [c]" + host.PathOf("c.nx3"));
}

// What is dragged onto a window that waits for a dialog is refused; what was dropped before waits for it.
TEST_F(Files, ADropMeetsNeitherADialogNorARun) {
    ASSERT_TRUE(Drop({GridFile("c.nx3"), GridFile("a.nx3")}));
    QDialog dialog(main.get());
    dialog.setModal(true);
    dialog.show();
    ServeEvents();
    EXPECT_EQ(Grids(), "");
    EXPECT_FALSE(Drop({GridFile("b.nx3")}));
    dialog.close();
    QMimeData link;
    link.setUrls({QUrl("http://exemple.invalid/a.nx3")});
    EXPECT_FALSE(Drop(link));
    ServeEvents();
    EXPECT_EQ(Grids() + RecentFiles(), "c, [a]");
    ASSERT_TRUE(Drop({GridFile("d.nx3")}));
    {
        const BusyGuard run(main.get());
        ServeEvents();
        EXPECT_EQ(Grids(), "c, [a]");
    }
    ServeEvents();
    EXPECT_EQ(Grids(), "c, a, [d]");
    EXPECT_EQ(host.beeps, 0);
}

// ---- Tabs.

TEST_F(Files, SeveralGridsHaveTabsThatChooseAndCloseThem) {
    auto& strip = Child<QTabBar>(*main, "tabStrip");
    const auto tabs = [&strip] {
        QStringList texts;
        for (int i = 0; i < strip.count(); ++i) {
            texts += i == strip.currentIndex() ? '[' + strip.tabText(i) + ']' : strip.tabText(i);
        }
        return (strip.isVisible() ? texts.join(' ') : QString()).toStdString();
    };
    for (const char* name : {"a&b.nx3", "b.nx3", "c.nx3", "d.nx3"}) {
        EXPECT_EQ(tabs(), name == std::string("c.nx3")   ? "a&&b [b]"
                          : name == std::string("d.nx3") ? "a&&b b [c]"
                                                         : "");
        Open(GridFile(name));
    }
    const std::pair<QKeyCombination, const char*> keys[] = {
        {Qt::CTRL | Qt::Key_Tab, "[a&&b] b c d"},
        {Qt::CTRL | Qt::Key_PageDown, "a&&b [b] c d"},
        {Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, "[a&&b] b c d"},
        {Qt::CTRL | Qt::Key_PageUp, "a&&b b c [d]"}};
    for (const auto& [key, shown] : keys) {
        QTest::keyClick(main->focusWidget(), key.key(), key.keyboardModifiers());
        ServeEvents();
        EXPECT_EQ(tabs(), shown);
        EXPECT_EQ(main->focusWidget(), Active().focusWidget());
    }
    QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.tabRect(1).center());
    strip.setFocus();
    QTest::keyClick(&strip, Qt::Key_Right);
    EXPECT_EQ(tabs(), "a&&b b [c] d");
    EXPECT_TRUE(strip.hasFocus());
    Active().ctrlCells(2).DoSelect();
    QTest::keyClick(main->focusWidget(), Qt::Key_1);
    EXPECT_EQ(tabs(), "a&&b b [c *] d");
    Run("mnuEditUndo");
    EXPECT_EQ(tabs(), "a&&b b [c] d");
    // A closed one gives way to the one used last before; one behind the active goes without a trace.
    QTest::mouseClick(&strip, Qt::MiddleButton, {}, strip.tabRect(2).center());
    ServeEvents();
    EXPECT_EQ(tabs() + Grids(), "a&&b [b] da&b, [b], d");
    emit strip.tabCloseRequested(0);
    ServeEvents();
    EXPECT_EQ(tabs(), "[b] d");
    {
        const BusyGuard run(main.get());
        emit strip.tabCloseRequested(1);
        emit strip.currentChanged(1);
        EXPECT_EQ(tabs() + Grids(), "[b] d[b], d");
    }
}

}  // namespace
