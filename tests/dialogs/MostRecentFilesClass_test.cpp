#include "settings/dialogs/MostRecentFilesClass.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <string>
#include <vector>

#include "settings/IniParamProcs.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

using Texts = std::vector<std::string>;

class RecentFiles : public testing::Test {
  protected:
    RecentFiles() {
        menu = window.menuBar()->addMenu("Fichier");
        for (const char* name : {"mnuFilePrint", "mnuFileSepMRU", "mnuFileMRU", "mnuFileQuit"}) {
            QAction* action = menu->addAction(name);
            action->setObjectName(name);
            action->setParent(&window);
        }
        Child<QAction>(window, "mnuFileSepMRU").setVisible(false);
        Child<QAction>(window, "mnuFileMRU").setVisible(false);
    }

    void Add(const Texts& paths) {
        for (const std::string& path : paths) list.Add(window, path);
    }
    // What the menu shows between its print and its quit command.
    Texts Captions() const {
        Texts captions;
        for (const QAction* action : menu->actions().mid(3)) {
            if (action->isVisible()) captions.push_back(action->text().toStdString());
        }
        EXPECT_EQ(captions.back(), "mnuFileQuit");
        captions.pop_back();
        return captions;
    }
    Texts Paths() const {
        Texts paths;
        for (int i = 1; !MostRecentFilesClass::PathOf(window, i).empty(); ++i) {
            paths.push_back(MostRecentFilesClass::PathOf(window, i));
        }
        return paths;
    }
    bool SeparatorVisible() const { return Child<QAction>(window, "mnuFileSepMRU").isVisible(); }
    std::string Caption(const std::string& path) const {
        return MostRecentFilesClass::ShortCaption(path, list.ParamSep());
    }

    ScriptedHost host;
    QMainWindow window;
    QMenu* menu = nullptr;
    MostRecentFilesClass list;
};

TEST_F(RecentFiles, TheLatestStandsOnTopAndTheSeparatorAppears) {
    EXPECT_FALSE(SeparatorVisible());
    Add({"/a", "/b", "/c"});
    EXPECT_EQ(Paths(), (Texts{"/c", "/b", "/a"}));
    EXPECT_EQ(Captions(), (Texts{"/c", "/b", "/a"}));
    EXPECT_TRUE(SeparatorVisible());
}

TEST_F(RecentFiles, AddingAKnownFileMovesItAndKeepsTheOthersInOrder) {
    Add({"/a", "/b", "/c", "/d", "/b"});
    EXPECT_EQ(Paths(), (Texts{"/b", "/d", "/c", "/a"}));
}

TEST_F(RecentFiles, OtherLetterCaseIsTheSameFileWithItsOldCaption) {
    Add({"/été.nx3", "/z", "/ÉTÉ.NX3"});
    EXPECT_EQ(Captions(), (Texts{"/été.nx3", "/z"}));
    EXPECT_EQ(Paths(), (Texts{"/ÉTÉ.NX3", "/z"}));
}

TEST_F(RecentFiles, AFullListDropsTheOldest) {
    Add({"/1", "/2", "/3", "/4", "/5", "/6"});
    EXPECT_EQ(Paths(), (Texts{"/6", "/5", "/4", "/3", "/2"}));
    // Moving an entry of a full list drops nothing.
    Add({"/2"});
    EXPECT_EQ(Paths(), (Texts{"/2", "/6", "/5", "/4", "/3"}));
}

// ---- Captions.

TEST_F(RecentFiles, LongPathsLoseTheirMiddle) {
    EXPECT_EQ(Caption("C:\\Jeux\\Sudoku\\Grilles\\Difficiles\\grille12.nx3"),
              "C:\\Jeux\\...\\Difficiles\\grille12.nx3");
    EXPECT_EQ(Caption("/home/jo/Jeux/Sudoku/Grilles/facile/grille12.nx3"),
              "/home/.../Grilles/facile/grille12.nx3");
    EXPECT_EQ(Caption("C:\\Jeux/Sudoku\\Grilles/Difficiles\\grille12.nx3"),
              "C:\\Jeux/.../Difficiles\\grille12.nx3");
}

TEST_F(RecentFiles, TwentyOneCharactersBehindTheSeparatorAreTheLimit) {
    EXPECT_EQ(Caption("/abcd/ef/12345678901234567890"), "/abcd/ef/12345678901234567890");
    EXPECT_EQ(Caption("/abcd/ef/123456789012345678901"), "/abcd/.../123456789012345678901");
}

TEST_F(RecentFiles, AccentsCountAsOneCharacter) {
    // 21 characters, shown whole although they are more bytes.
    EXPECT_EQ(Caption("/été/é/éééééééééé.nx3"), "/été/é/éééééééééé.nx3");
    // The second separator is the third character, so the fourth and following ones count.
    EXPECT_EQ(Caption("/é/jeux/ete/123456789012345678901"), "/é/jeux/.../123456789012345678901");
}

TEST_F(RecentFiles, AnAmpersandIsShownNotTakenForAShortcut) {
    Add({"/a&b.nx3"});
    EXPECT_EQ(Captions(), Texts{"/a&&b.nx3"});
    EXPECT_EQ(Paths(), Texts{"/a&b.nx3"});
}

TEST_F(RecentFiles, ACommaCutsTheCaptionNeverThePath) {
    Add({"/jeux/un,deux,trois.nx3"});
    EXPECT_EQ(Captions(), Texts{"deux"});
    EXPECT_EQ(Paths(), Texts{"/jeux/un,deux,trois.nx3"});
}

// ---- Settings.

TEST_F(RecentFiles, LoadClosesUpOverEmptyKeysAndIgnoresThoseBeyondItsCapacity) {
    const std::string file = host.PathOf("mru.ini");
    ScriptedHost::WriteFile(file, "[mru]\r\n6=/six\r\n1=/un\r\n3=\r\n2=/deux\r\n5=/cinq\r\n");
    list.Load(window, file);
    EXPECT_EQ(Paths(), (Texts{"/un", "/deux", "/cinq"}));
}

TEST_F(RecentFiles, SaveLeavesNoKeyOfALongerList) {
    const std::string file = IniParamProcs::IniFilePath();
    ScriptedHost::WriteFile(file, "[MRU]\r\n1=/x\r\n4=/y\r\n7=/z\r\n[Options]\r\nA=1\r\n");
    Add({"/a", "/b"});
    list.Save(window, file);
    EXPECT_EQ(ScriptedHost::ReadFile(file), "[Options]\r\nA=1\r\n[MRU]\r\n1=/b\r\n2=/a\r\n");
}

// ---- Files that have gone.

TEST_F(RecentFiles, DeleteNamesTheFileAndClosesTheGap) {
    Add({"/a", "/jeux/un.nx3", "/c"});
    host.Expect(platform::MessageButton::Ok);
    list.Delete(window, 2);
    EXPECT_EQ(host.boxes.back().text, "Le fichier \"/jeux/un.nx3\" n'existe plus ou a été déplacé");
    EXPECT_EQ(host.boxes.back().style, 16);
    EXPECT_EQ(Paths(), (Texts{"/c", "/a"}));
    EXPECT_EQ(Captions(), (Texts{"/c", "/a"}));
    EXPECT_TRUE(SeparatorVisible());
}

TEST_F(RecentFiles, DeletingTheOnlyEntryHidesTheSeparator) {
    Add({"/*"});
    host.Expect(platform::MessageButton::Ok);
    list.ErrorMsg("* ? *");
    list.Delete(window, 1);
    EXPECT_EQ(host.boxes.back().text, "/* ? /*");
    EXPECT_FALSE(SeparatorVisible());
    EXPECT_TRUE(Captions().empty());
}

}  // namespace
