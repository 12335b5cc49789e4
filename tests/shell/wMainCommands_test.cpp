// The commands of the menus and of the toolbar.

#include <QCheckBox>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <map>
#include <utility>

#include "Program.h"
#include "settings/dialogs/wCancel.h"

namespace {

using platform::MessageButton;

class Commands : public RunningProgram {
  protected:
    // Row 1 is empty, every other cell a given of a grid whose first row is 1 to 9.
    void NewPuzzle() const {
        Run("mnuFileNew");
        SetPuzzle(Document(), 1, 9);
        Active().UpdateGrid();
    }
    // The name of the dialog that a command opens.
    std::string DialogOf(const char* command) const {
        std::string name;
        InNextDialog([&](QWidget& dialog) { name = dialog.objectName().toStdString(); });
        Run(command);
        return name;
    }
};

// ---- Menus, keys and buttons.

TEST_F(Commands, KeysAreTheDocumentedOnesAndNoTwoActionsShareOne) {
    Run("mnuFileNew");
    std::map<std::string, std::string> names;
    for (const QAction* action : main->findChildren<QAction*>()) {
        for (const QKeySequence& key : action->shortcuts()) {
            std::string& name = names[key.toString().toStdString()];
            EXPECT_EQ(name, "") << key.toString().toStdString();
            name = action->objectName().toStdString();
        }
    }
    names.erase("Ctrl+F4");  // of the window inside the window
    std::string keys;
    for (const auto& [key, name] : names) keys += key + " " + name + "\n";
    EXPECT_EQ(keys,
              "Ctrl+D mnGridCopy\nCtrl+G mnuFileCreate\nCtrl+H mnuGridHelpNone\nCtrl+I mnuGridConfig\n"
              "Ctrl+M mnuGridNoAutoMasks\nCtrl+N mnuFileNew\nCtrl+O mnuFileOpen\nCtrl+P mnuFilePrint\n"
              "Ctrl+Q mnuFileQuit\nCtrl+R mnuGridReinit\nCtrl+S mnuFileSave\nCtrl+Shift+S mnuFileSaveAs\n"
              "Ctrl+Shift+Z mnuEditRedo\nCtrl+W mnuFileClose\nCtrl+Y mnuEditRedo\nCtrl+Z mnuEditUndo\n"
              "F1 mnuHelpHelp\nF4 mnuHelpAsk\nF9 mnuHelpSolve\n");
    QTest::keyClick(main.get(), Qt::Key_F1);
    EXPECT_EQ(host.helpCalls, std::vector{"contents " + host.PathOf("Ninarix.chm")});
    EXPECT_EQ(DialogOf("mnuFilePrint"), "wPrinter");
    EXPECT_EQ(DialogOf("mnuEditOptions"), "wOptions");
}

TEST_F(Commands, AToolButtonRunsItsCommandAndShowsWhetherAModeIsOn) {
    const auto& toolbar = Child<QToolBar>(*main, "tbrTools");
    QTest::mouseClick(toolbar.widgetForAction(&Tool("mnuFileNew")), Qt::LeftButton);
    EXPECT_EQ(Grids(), "[Grille1]");
    for (const char* mode : {"mnuGridHelpNone", "mnuGridNoAutoMasks"}) {
        const QImage off = Tool(mode).icon().pixmap(32, 32).toImage();
        Tool(mode).trigger();
        EXPECT_TRUE(!off.isNull() && off != Tool(mode).icon().pixmap(32, 32).toImage()) << mode;
    }
}

// ---- New and generated grids.

TEST_F(Commands, TheLevelDialogDecidesWhetherAGridIsGenerated) {
    EXPECT_EQ(DialogOf("mnuFileCreate") + Grids(), "wLevel");
    InNextDialog([](QWidget& dialog) {
        Child<QCheckBox>(dialog, "chkLevelAsk").click();
        Child<QPushButton>(dialog, "cmdCommands(1)").click();
    });
    Run("mnuFileCreate");
    // "Ne plus demander": the next one comes without the dialog, which would wait for ever.
    Run("mnuGridConfig");
    Run("mnuFileCreate");
    EXPECT_EQ(Grids(), "Grille1, [Grille2]");
    EXPECT_TRUE(Document().SolutionKnown());
    EXPECT_FALSE(main->InitialisationMode());
    host.onYield = [this] { Child<wCancel>(*main, "wCancel").cmdCancel_Click(); };
    Run("mnuFileCreate", MessageButton::Ok);
    EXPECT_EQ(LastBox(), "16 Le temps de création est dépassé.\rTentez une nouvelle génération.");
    EXPECT_EQ(Grids(), "Grille1, [Grille2]");
    // No number comes twice.
    Run("mnuFileClose", MessageButton::No);
    Run("mnuFileNew");
    EXPECT_EQ(Grids(), "Grille1, [Grille3]");
    EXPECT_TRUE(main->InitialisationMode());
}

TEST_F(Commands, ARunRefusesWhateverWouldDisturbIt) {
    NewPuzzle();
    bool tried = false;
    host.onYield = [&] {
        if (std::exchange(tried, true)) return;
        const QString commands =
            "mnuFileNew mnuFileCreate mnuFileOpen mnuFileSave mnuFileClose mnuFileQuit mnuEditUndo "
            "mnuEditOptions mnGridCopy mnuGridReinit mnuHelpAsk mnuHelpSolve";
        for (const QString& name : commands.split(' ')) {
            host.beeps = 0;
            Run(name.toLatin1());
            EXPECT_EQ(host.beeps, 1) << name.toStdString();
        }
        main->mnuFileMRU_Click(1);
        EXPECT_FALSE(main->OpenGridFile("x.nx3"));
    };
    Run("mnuHelpSolve", MessageButton::Ok);
    EXPECT_TRUE(tried && Document().IsComplete());
}

TEST_F(Commands, CopiesAreCountedByTheirBaseName) {
    Open(GridFile("a[1]*?#.nx3", "5|1|36"));  // no character of a name is a pattern
    Open(GridFile("a1xyz (z).nx3"));
    Activate(0);
    for (int i = 0; i < 2; ++i) Run("mnGridCopy");
    EXPECT_EQ(Grids(), "a[1]*?#, a1xyz (z), a[1]*?# (1), [a[1]*?# (2)]");
    EXPECT_EQ(State(1) + PathPanel(), "5|1|36");
    Open(GridFile("a1.nx3"));  // the longer name is another base
    Run("mnGridCopy");
    EXPECT_TRUE(Grids().ends_with(" a1, [a1 (1)]"));
}

// ---- Checking and solving.

TEST_F(Commands, ErrorsAreCountedInWordsAndSolvingWaitsForAnOk) {
    NewPuzzle();
    const std::pair<const char*, const char*> checks[] = {{"0|0|0", "64 Il n'y a aucune erreur."},
                                                          {"2|0|0", "48 Il y a 1 erreur."},
                                                          {"1|0|0", "48 Il y a 2 erreurs."}};
    for (int n = 0; n < 3; ++n) {
        if (n > 0) Set(n, checks[n].first);
        Run("mnuHelpAsk", MessageButton::Ok);
        EXPECT_EQ(LastBox(), checks[n].second);
    }
    Run("mnuHelpSolve", MessageButton::Cancel);
    EXPECT_EQ(LastBox(), "305 Attention, vous allez résoudre la grille.\r\nContinuer ?");
    EXPECT_EQ(State(9), "0|0|0");
}

}  // namespace
