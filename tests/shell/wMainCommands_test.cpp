// The commands of the menus and of the toolbar.

#include <QCheckBox>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <functional>
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
    // The text and the style of the box that a command showed.
    void ExpectBox(const char* command, MessageButton answer, const std::string& text, int style) {
        host.Expect(answer);
        Run(command);
        EXPECT_EQ(LastBox(), text);
        EXPECT_EQ(host.boxes.back().style, style);
    }
    void ExpectDialog(const char* command, const char* name) const {
        bool seen = false;
        InNextDialog([&](QWidget& dialog) { seen = dialog.objectName() == name; });
        Run(command);
        EXPECT_TRUE(seen) << command;
    }
};

// ---- Menus, keys and buttons.

TEST_F(Commands, WithoutAGridTheyBeepAndNothingElse) {
    for (const char* name : {"mnuFileSave", "mnuFileSaveAs", "mnuFilePrint", "mnuEditUndo", "mnuEditRedo",
                             "mnGridCopy", "mnuGridReinit", "mnuHelpAsk", "mnuHelpSolve"}) {
        EXPECT_TRUE(Item(name).isEnabled()) << name;
        host.beeps = 0;
        Run(name);
        EXPECT_EQ(host.beeps, 1) << name;
    }
    host.beeps = 0;
    Run("mnuFileClose");
    EXPECT_EQ(host.beeps, 0);
    EXPECT_TRUE(host.boxes.empty() && host.questions.empty());
}

TEST_F(Commands, KeysAreTheDocumentedOnesAndNoTwoActionsShareOne) {
    Run("mnuFileNew");
    std::map<std::string, std::string> names;
    for (const QAction* action : main->findChildren<QAction*>()) {
        for (const QKeySequence& key : action->shortcuts()) {
            EXPECT_TRUE(
                names.try_emplace(key.toString().toStdString(), action->objectName().toStdString()).second)
                << key.toString().toStdString();
        }
    }
    names.erase("Ctrl+F4");  // of the window inside the window
    const std::map<std::string, std::string> documented{{"Ctrl+N", "mnuFileNew"},
                                                        {"Ctrl+G", "mnuFileCreate"},
                                                        {"Ctrl+O", "mnuFileOpen"},
                                                        {"Ctrl+S", "mnuFileSave"},
                                                        {"Ctrl+Shift+S", "mnuFileSaveAs"},
                                                        {"Ctrl+W", "mnuFileClose"},
                                                        {"Ctrl+P", "mnuFilePrint"},
                                                        {"Ctrl+Q", "mnuFileQuit"},
                                                        {"Ctrl+Z", "mnuEditUndo"},
                                                        {"Ctrl+Y", "mnuEditRedo"},
                                                        {"Ctrl+Shift+Z", "mnuEditRedo"},
                                                        {"Ctrl+I", "mnuGridConfig"},
                                                        {"Ctrl+H", "mnuGridHelpNone"},
                                                        {"Ctrl+M", "mnuGridNoAutoMasks"},
                                                        {"Ctrl+D", "mnGridCopy"},
                                                        {"Ctrl+R", "mnuGridReinit"},
                                                        {"F4", "mnuHelpAsk"},
                                                        {"F9", "mnuHelpSolve"},
                                                        {"F1", "mnuHelpHelp"}};
    EXPECT_EQ(names, documented);
    QTest::keyClick(main.get(), Qt::Key_F1);
    EXPECT_EQ(host.helpCalls, Texts{"contents " + host.PathOf("Ninarix.chm")});
    ExpectDialog("mnuFilePrint", "wPrinter");
    ExpectDialog("mnuEditOptions", "wOptions");
}

TEST_F(Commands, AToolButtonRunsTheCommandOfItsKey) {
    const auto& toolbar = Child<QToolBar>(*main, "tbrTools");
    std::string keys;
    for (const QAction* button : toolbar.actions()) {
        EXPECT_FALSE(button->icon().pixmap(32, 32).isNull()) << button->toolTip().toStdString();
        keys += button->objectName().mid(9).chopped(1).toStdString() + " ";
    }
    EXPECT_EQ(
        keys,
        "mnuFileQuit mnuFileNew mnuFileCreate mnuFileOpen mnuFileClose mnuFileSave mnuFilePrint mnuEditUndo "
        "mnuEditRedo mnuGridConfig mnuGridHelpNone mnuGridNoAutoMasks mnuHelpSolve mnuHelpAsk ");
    EXPECT_EQ(Tool("mnuFileClose").toolTip(), "Fermer la grille courante");
    QTest::mouseClick(toolbar.widgetForAction(&Tool("mnuFileNew")), Qt::LeftButton);
    EXPECT_EQ(Captions(), Texts{"Grille1"});
    Tool("mnuFileQuit").trigger();
    EXPECT_FALSE(main->isVisible());
}

TEST_F(Commands, MenuButtonAndProgramAgreeOnTheModes) {
    struct Mode {
        const char* name;
        const char* pictureOn;
        void (wMain::*click)();
        bool (wMain::*isOn)() const;
        const char* setting;
    };
    const Mode modes[] = {
        {"mnuGridConfig", "mnuGridConfig", &wMain::mnuGridConfig_Click, &wMain::InitialisationMode, nullptr},
        {"mnuGridHelpNone", "mnuGridHelpDisplay", &wMain::mnuGridHelpNone_Click, &wMain::MasksHidden,
         "GridHelpNone"},
        {"mnuGridNoAutoMasks", "mnuGridNoAutoMasksOn", &wMain::mnuGridNoAutoMasks_Click, &wMain::ManualMasks,
         "NoAutoMasks"}};
    const auto picture = [](const QIcon& icon) { return icon.pixmap(32, 32).toImage(); };
    ASSERT_NE(picture(ToolPicture("mnuGridHelpDisplay")), picture(ToolPicture("mnuGridHelpNone")));
    ASSERT_NE(picture(ToolPicture("mnuGridNoAutoMasksOn")), picture(ToolPicture("mnuGridNoAutoMasks")));
    for (const Mode& mode : modes) {
        bool on = false;
        const std::function<void()> ways[] = {[&] { Item(mode.name).trigger(); },
                                              [&] { Tool(mode.name).trigger(); },
                                              [&] { ((*main).*mode.click)(); }};
        for (int n = 0; n < 6; ++n) {
            ways[n % 3]();
            on = !on;
            EXPECT_EQ(((*main).*mode.isOn)(), on) << mode.name;
            EXPECT_EQ(Item(mode.name).isChecked(), on) << mode.name;
            EXPECT_EQ(Tool(mode.name).isChecked(), on) << mode.name;
            EXPECT_EQ(picture(Tool(mode.name).icon()), picture(ToolPicture(on ? mode.pictureOn : mode.name)));
            if (mode.setting) {
                EXPECT_EQ(Setting("Options", mode.setting), on ? "1" : "0");
            }
        }
    }
}

TEST_F(Commands, EveryOpenAndEveryNewGridObeysTheModes) {
    for (int n = 0; n < 2; ++n) {
        Run("mnuFileNew");
        Set(1, "5|0|0");
    }
    Run("mnuGridNoAutoMasks");
    for (const OpenGrid& grid : main->Grids()) EXPECT_TRUE(grid->ctrlCells(2).Mask(5));
    Run("mnuGridHelpNone");
    Run("mnuFileNew");
    for (const OpenGrid& grid : main->Grids()) {
        EXPECT_FALSE(grid->ctrlCells(2).Mask(6));
        EXPECT_TRUE(grid->NoAutoMask());
    }
}

// ---- New and generated grids.

TEST_F(Commands, NewGridsNeverReuseANumberAndBeginInInitialisationMode) {
    for (int n = 0; n < 2; ++n) {
        Run("mnuFileNew");
        EXPECT_TRUE(main->InitialisationMode());
    }
    Run("mnuFileClose");
    Run("mnuFileClose");
    Run("mnuFileNew");
    EXPECT_EQ(Captions(), Texts{"Grille3"});
    EXPECT_FALSE(Document().Modified());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

TEST_F(Commands, TheLevelDialogDecidesWhetherAGridIsGenerated) {
    ExpectDialog("mnuFileCreate", "wLevel");
    EXPECT_TRUE(Captions().empty());
    InNextDialog([](QWidget& dialog) {
        Child<QCheckBox>(dialog, "chkLevelAsk").click();
        Child<QPushButton>(dialog, "cmdCommands(1)").click();
    });
    Run("mnuFileCreate");
    // "Ne plus demander": the next one comes without the dialog, which would wait for ever.
    Run("mnuGridConfig");
    Run("mnuFileCreate");
    EXPECT_EQ(Captions(), (Texts{"Grille1", "Grille2"}));
    EXPECT_EQ(Title(), "Ninarix - Grille2");
    EXPECT_TRUE(Document().SolutionKnown());
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

TEST_F(Commands, ACancelledGenerationDisturbsNoWindow) {
    Setting("Options", "LevelAsk", "1");
    Run("mnuFileNew");
    Active().ctrlCells(5).DoSelect();
    int activations = 0;
    QObject::connect(&Area(), &QMdiArea::subWindowActivated, [&] { ++activations; });
    host.onYield = [this] { Child<wCancel>(*main, "wCancel").cmdCancel_Click(); };
    ExpectBox("mnuFileCreate", MessageButton::Ok,
              "Le temps de création est dépassé.\rTentez une nouvelle génération.", 16);
    EXPECT_EQ(Captions(), Texts{"Grille1"});
    EXPECT_EQ(main->Cell(), &Active().ctrlCells(5));
    EXPECT_EQ(activations, 0);
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(main->findChild<wCancel*>(), nullptr);
}

TEST_F(Commands, ARunRefusesWhateverWouldDisturbIt) {
    NewPuzzle();
    bool tried = false;
    host.onYield = [&] {
        if (std::exchange(tried, true)) return;
        for (const char* name :
             {"mnuFileNew", "mnuFileCreate", "mnuFileOpen", "mnuFileSave", "mnuFileClose", "mnuFileQuit",
              "mnuEditUndo", "mnuEditOptions", "mnGridCopy", "mnuGridReinit", "mnuHelpAsk", "mnuHelpSolve"}) {
            host.beeps = 0;
            Run(name);
            EXPECT_GE(host.beeps, 1) << name;
        }
        main->mnuFileMRU_Click(1);
        EXPECT_FALSE(main->OpenGridFile("x.nx3"));
    };
    host.Expect(MessageButton::Ok);
    Run("mnuHelpSolve");
    EXPECT_TRUE(tried);
    EXPECT_EQ(host.boxes.size(), 1U) << "the question before the run";
    EXPECT_TRUE(Document().IsComplete());
}

// ---- Copies.

TEST_F(Commands, CopiesAreCountedByTheirBaseName) {
    Open(GridFile("a[1]*?#.nx3", "5|1|36"));  // no character of a name is a pattern
    Open(GridFile("a1xyz (z).nx3"));
    Activate(0);
    for (int i = 0; i < 3; ++i) Run("mnGridCopy");
    EXPECT_EQ(Captions(), (Texts{"a[1]*?#", "a1xyz (z)", "a[1]*?# (1)", "a[1]*?# (2)", "a[1]*?# (3)"}));
    EXPECT_EQ(State(1), "5|1|36");
    EXPECT_EQ(Active().Path(), "");
    // A closed copy's number comes again.
    main->Grids()[2]->Discard();
    main->Grids()[2]->parentWidget()->close();
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "a[1]*?# (3)");
    Open(GridFile("a1.nx3"));
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "a1 (1)") << "the longer name is another base";
}

// ---- Checking and solving.

TEST_F(Commands, ErrorsAreCountedInWords) {
    NewPuzzle();
    ExpectBox("mnuHelpAsk", MessageButton::Ok, "Il n'y a aucune erreur.", 64);
    Set(1, "2|0|0");
    ExpectBox("mnuHelpAsk", MessageButton::Ok, "Il y a 1 erreur.", 48);
    Set(2, "1|0|0");
    ExpectBox("mnuHelpAsk", MessageButton::Ok, "Il y a 2 erreurs.", 48);
}

TEST_F(Commands, SolvingWaitsForAnOk) {
    NewPuzzle();
    for (const auto& [answer, state] :
         {std::pair{MessageButton::Cancel, "0|0|0"}, {MessageButton::Ok, "9|0|0"}}) {
        ExpectBox("mnuHelpSolve", answer, "Attention, vous allez résoudre la grille.\r\nContinuer ?", 305);
        EXPECT_EQ(State(9), state);
    }
}

// ---- A grid that was closed.

TEST_F(Commands, AClosedGridIsNoActiveGridFromThatMomentOn) {
    for (void (wMain::*command)() : {&wMain::mnuHelpSolve_Click, &wMain::mnuHelpAsk_Click}) {
        main->mnuFileNew_Click();
        Active().ctrlCells(5).DoSelect();
        main->mnuFileClose_Click();  // its memory waits for the event loop
        EXPECT_FALSE(main->ActiveGrid());
        EXPECT_EQ(main->Cell(), nullptr);
        EXPECT_EQ(Title() + PathPanel(), "Ninarix");
        host.beeps = 0;
        ((*main).*command)();
        EXPECT_EQ(host.beeps, 1);
        ServeEvents();
    }
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Commands, AGridThatIsClosedDuringAQuestionIsLeftAlone) {
    host.onShow = [this] {
        Active().Discard();
        Run("mnuFileClose");
    };
    for (const char* command : {"mnuHelpSolve", "mnuGridReinit"}) {
        NewPuzzle();
        host.Expect(MessageButton::Ok);
        Run(command);
        EXPECT_TRUE(Captions().empty()) << command;
    }
}

}  // namespace
