// The commands of the menus and of the toolbar.

#include <QApplication>
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
        for (int i = 10; i <= 81; ++i) {
            const int row = (i - 1) / 9;
            Set(i, std::to_string((row * 3 + row / 3 + (i - 1) % 9) % 9 + 1) + "|1|0");
        }
    }
    void ExpectBox(const std::string& text, int style) const {
        ASSERT_FALSE(host.boxes.empty());
        EXPECT_EQ(host.boxes.back().text, text);
        EXPECT_EQ(host.boxes.back().style, style);
    }
};

// ---- Availability.

TEST_F(Commands, WithoutAGridTheyBeepAndNothingElse) {
    for (const char* name : {"mnuFileSave", "mnuFileSaveAs", "mnuFilePrint", "mnuEditUndo", "mnuEditRedo",
                             "mnGridCopy", "mnuGridReinit", "mnuHelpAsk", "mnuHelpSolve"}) {
        host.beeps = 0;
        EXPECT_TRUE(Item(name).isEnabled()) << name;
        Run(name);
        EXPECT_EQ(host.beeps, 1) << name;
    }
    host.beeps = 0;
    Run("mnuFileClose");
    EXPECT_EQ(host.beeps, 0);
    EXPECT_TRUE(host.boxes.empty() && host.questions.empty());
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
    EXPECT_EQ(Captions(), Texts{"Grille1"});
    EXPECT_TRUE(Document().IsComplete());
}

TEST_F(Commands, EveryShortcutReachesItsCommand) {
    Setting("Options", "LevelAsk", "1");
    NewPuzzle();
    int opened = 0;
    const auto boxIs = [this](const char* start, MessageButton answer) {
        return [this, start, answer](const std::function<void()>& press) {
            host.Expect(answer);
            press();
            EXPECT_TRUE(LastBox().starts_with(start)) << LastBox();
        };
    };
    const auto asksForFile = [this](bool save) {
        return [this, save](const std::function<void()>& press) {
            host.ExpectFile("");
            press();
            EXPECT_EQ(host.questions.back().save, save);
        };
    };
    const auto opensDialog = [&opened](const char* name) {
        return [name, &opened](const std::function<void()>& press) {
            InNextDialog([name, &opened](QWidget& dialog) {
                EXPECT_EQ(dialog.objectName(), name);
                ++opened;
            });
            press();
        };
    };
    const auto grids = [this](std::size_t count) {
        return [this, count](const std::function<void()>& press) {
            press();
            EXPECT_EQ(main->Grids().size(), count);
        };
    };
    const auto cellIs = [this](const char* state) {
        return [this, state](const std::function<void()>& press) {
            press();
            EXPECT_EQ(State(1), state);
        };
    };
    const auto toggles = [this](const char* mode) {
        return [this, mode](const std::function<void()>& press) {
            const bool before = Item(mode).isChecked();
            press();
            EXPECT_NE(Item(mode).isChecked(), before);
        };
    };
    struct Key {
        QKeyCombination key;
        std::function<void(const std::function<void()>&)> expect;
    };
    Active().ctrlCells(1).DoSelect();
    main->cmdMask_Click(1);
    const Key keys[] = {
        {Qt::CTRL | Qt::Key_Z, cellIs("0|0|0")},
        {Qt::CTRL | Qt::Key_Y, cellIs("0|0|2")},
        {Qt::CTRL | Qt::Key_Z, cellIs("0|0|0")},
        {Qt::CTRL | Qt::SHIFT | Qt::Key_Z, cellIs("0|0|2")},
        {Qt::CTRL | Qt::Key_I, toggles("mnuGridConfig")},
        {Qt::CTRL | Qt::Key_H, toggles("mnuGridHelpNone")},
        {Qt::CTRL | Qt::Key_M, toggles("mnuGridNoAutoMasks")},
        {Qt::CTRL | Qt::Key_O, asksForFile(false)},
        {Qt::CTRL | Qt::Key_S, asksForFile(true)},
        {Qt::CTRL | Qt::SHIFT | Qt::Key_S, asksForFile(true)},
        {Qt::CTRL | Qt::Key_P, opensDialog("wPrinter")},
        {Qt::CTRL | Qt::Key_R, boxIs("Attention, vous allez rétablir", MessageButton::Cancel)},
        {Qt::Key_F9, boxIs("Attention, vous allez résoudre", MessageButton::Cancel)},
        {Qt::Key_F4, boxIs("Il n'y a aucune erreur.", MessageButton::Ok)},
        {Qt::CTRL | Qt::Key_D, grids(2)},
        {Qt::CTRL | Qt::Key_G, grids(3)},
        {Qt::CTRL | Qt::Key_N, grids(4)},
        {Qt::CTRL | Qt::Key_W, grids(3)},
    };
    for (const Key& key : keys) {
        SCOPED_TRACE(QKeySequence(key.key).toString().toStdString());
        key.expect([&] {
            QApplication::setActiveWindow(main.get());
            QTest::keyClick(main.get(), key.key.key(), key.key.keyboardModifiers());
            ServeEvents();
        });
    }
    opensDialog("wOptions")([this] { Run("mnuEditOptions"); });
    EXPECT_EQ(opened, 2);
    QApplication::setActiveWindow(main.get());
    QTest::keyClick(main.get(), Qt::Key_F1);
    EXPECT_EQ(host.helpCalls, Texts{"contents " + host.PathOf("Ninarix.chm")});
    EXPECT_EQ(host.beeps, 0);
    host.AnswerAlways(MessageButton::No);
    QTest::keyClick(main.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(main->isVisible());
}

TEST_F(Commands, NoTwoActionsAnswerToTheSameKey) {
    Run("mnuFileNew");
    std::map<QString, QString> owners;
    for (const QAction* action : main->findChildren<QAction*>()) {
        for (const QKeySequence& key : action->shortcuts()) {
            const auto [owner, isNew] = owners.try_emplace(key.toString(), action->text());
            EXPECT_TRUE(isNew) << key.toString().toStdString() << ": " << owner->second.toStdString() << ", "
                               << action->text().toStdString();
        }
    }
    EXPECT_GE(owners.size(), 20U);
}

// ---- New and generated grids.

TEST_F(Commands, NewGridsNeverReuseANumber) {
    Run("mnuFileNew");
    Run("mnuFileNew");
    Run("mnuFileClose");
    Run("mnuFileClose");
    Run("mnuFileNew");
    EXPECT_EQ(Captions(), Texts{"Grille3"});
    EXPECT_FALSE(Document().Modified());
}

TEST_F(Commands, AGeneratedGridIsShownAndLeavesInitialisationMode) {
    Setting("Options", "LevelAsk", "1");
    Run("mnuFileNew");
    Run("mnuFileCreate");
    EXPECT_EQ(Captions(), (Texts{"Grille1", "Grille2"}));
    EXPECT_EQ(Active().Caption(), "Grille2");
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
    Run("mnuFileNew");
    EXPECT_EQ(Captions().back(), "Grille3");
}

TEST_F(Commands, TheLevelDialogDecidesWhetherAGridIsGenerated) {
    InNextDialog([](QWidget& dialog) { dialog.close(); });
    Run("mnuFileCreate");
    EXPECT_TRUE(Captions().empty());
    InNextDialog([](QWidget& dialog) {
        Child<QCheckBox>(dialog, "chkLevelAsk").click();
        Child<QPushButton>(dialog, "cmdCommands(1)").click();
    });
    Run("mnuFileCreate");
    EXPECT_EQ(Captions().size(), 1U);
    // "Ne plus demander": the next one comes without the dialog, which would wait for ever.
    Run("mnuFileCreate");
    EXPECT_EQ(Captions().size(), 2U);
}

TEST_F(Commands, ACancelledGenerationDisturbsNoWindow) {
    Setting("Options", "LevelAsk", "1");
    Run("mnuFileNew");
    Active().ctrlCells(5).DoSelect();
    int activations = 0;
    QObject::connect(qobject_cast<QMdiArea*>(main->centralWidget()), &QMdiArea::subWindowActivated,
                     [&] { ++activations; });
    host.onYield = [this] { Child<wCancel>(*main, "wCancel").cmdCancel_Click(); };
    host.Expect(MessageButton::Ok);
    Run("mnuFileCreate");
    ExpectBox("Le temps de création est dépassé.\rTentez une nouvelle génération.", 16);
    EXPECT_EQ(Captions(), Texts{"Grille1"});
    EXPECT_EQ(Title(), "Ninarix - Grille1");
    EXPECT_EQ(main->Cell(), &Active().ctrlCells(5));
    EXPECT_EQ(activations, 0);
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(main->findChild<wCancel*>(), nullptr);
}

// ---- Modes.

TEST_F(Commands, MenuButtonAndProgramAgreeOnTheModes) {
    struct Mode {
        const char* name;
        const char* pictureOn;
        const char* pictureOff;
        void (wMain::*click)();
        bool (wMain::*isOn)() const;
        const char* setting;
    };
    const Mode modes[] = {
        {"mnuGridConfig", "mnuGridConfig", "mnuGridConfig", &wMain::mnuGridConfig_Click,
         &wMain::InitialisationMode, nullptr},
        {"mnuGridHelpNone", "mnuGridHelpDisplay", "mnuGridHelpNone", &wMain::mnuGridHelpNone_Click,
         &wMain::MasksHidden, "GridHelpNone"},
        {"mnuGridNoAutoMasks", "mnuGridNoAutoMasksOn", "mnuGridNoAutoMasks", &wMain::mnuGridNoAutoMasks_Click,
         &wMain::ManualMasks, "NoAutoMasks"},
    };
    const auto picture = [](const QIcon& icon) { return icon.pixmap(32, 32).toImage(); };
    ASSERT_NE(picture(ToolPicture("mnuGridHelpDisplay")), picture(ToolPicture("mnuGridHelpNone")));
    ASSERT_NE(picture(ToolPicture("mnuGridNoAutoMasksOn")), picture(ToolPicture("mnuGridNoAutoMasks")));
    for (const Mode& mode : modes) {
        bool on = false;
        const std::function<void()> ways[] = {
            [&] { Item(mode.name).trigger(); }, [&] { Tool(mode.name).trigger(); },
            [&] { ((*main).*mode.click)(); },   [&] { Tool(mode.name).trigger(); },
            [&] { Item(mode.name).trigger(); },
        };
        for (const auto& toggle : ways) {
            toggle();
            on = !on;
            EXPECT_EQ(((*main).*mode.isOn)(), on) << mode.name;
            EXPECT_EQ(Item(mode.name).isChecked(), on) << mode.name;
            EXPECT_EQ(Tool(mode.name).isChecked(), on) << mode.name;
            EXPECT_EQ(picture(Tool(mode.name).icon()),
                      picture(ToolPicture(on ? mode.pictureOn : mode.pictureOff)))
                << mode.name;
            if (mode.setting) {
                EXPECT_EQ(Setting("Options", mode.setting), on ? "1" : "0");
            }
        }
    }
}

TEST_F(Commands, EveryOpenAndEveryNewGridObeysTheModes) {
    Run("mnuFileNew");
    Set(1, "5|0|0");
    Run("mnuFileNew");
    Set(1, "5|0|0");
    Run("mnuGridNoAutoMasks");
    for (const OpenGrid& grid : main->Grids()) EXPECT_TRUE(grid->ctrlCells(2).Mask(5));
    Run("mnuGridHelpNone");
    Run("mnuFileNew");
    for (const OpenGrid& grid : main->Grids()) {
        EXPECT_FALSE(grid->ctrlCells(2).Mask(6));
        EXPECT_TRUE(grid->NoAutoMask());
    }
}

TEST_F(Commands, AToolButtonRunsTheCommandOfItsKey) {
    const auto& toolbar = Child<QToolBar>(*main, "tbrTools");
    std::string keys;
    for (const QAction* button : toolbar.actions()) {
        EXPECT_FALSE(button->icon().pixmap(32, 32).isNull()) << button->objectName().toStdString();
        EXPECT_FALSE(button->toolTip().isEmpty());
        keys += button->objectName().mid(9).chopped(1).toStdString() + " ";
    }
    EXPECT_EQ(
        keys,
        "mnuFileQuit mnuFileNew mnuFileCreate mnuFileOpen mnuFileClose mnuFileSave mnuFilePrint mnuEditUndo "
        "mnuEditRedo mnuGridConfig mnuGridHelpNone mnuGridNoAutoMasks mnuHelpSolve mnuHelpAsk ");
    QTest::mouseClick(toolbar.widgetForAction(&Tool("mnuFileNew")), Qt::LeftButton);
    EXPECT_EQ(Captions(), Texts{"Grille1"});
    QTest::mouseClick(toolbar.widgetForAction(&Tool("mnuFileClose")), Qt::LeftButton);
    ServeEvents();
    EXPECT_TRUE(Captions().empty());
    // What needs a grid says so; the others are told apart by what they ask for.
    for (const char* key :
         {"mnuFileSave", "mnuFilePrint", "mnuEditUndo", "mnuEditRedo", "mnuHelpSolve", "mnuHelpAsk"}) {
        host.beeps = 0;
        Tool(key).trigger();
        EXPECT_EQ(host.beeps, 1) << key;
    }
    host.ExpectFile("");
    Tool("mnuFileOpen").trigger();
    Tool("mnuFileQuit").trigger();
    EXPECT_FALSE(main->isVisible());
}

// ---- Copies.

TEST_F(Commands, CopiesAreCountedByTheirBaseName) {
    Run("mnuFileNew");
    Set(1, "5|1|36");
    for (int i = 0; i < 3; ++i) Run("mnGridCopy");
    EXPECT_EQ(Captions(), (Texts{"Grille1", "Grille1 (1)", "Grille1 (2)", "Grille1 (3)"}));
    EXPECT_EQ(State(1), "5|1|36");
    EXPECT_EQ(Active().Path(), "");
    // A closed copy's number comes again.
    main->Grids()[1]->Discard();
    main->Grids()[1]->parentWidget()->close();
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "Grille1 (3)");
}

TEST_F(Commands, NoCharacterOfANameIsAPattern) {
    Open(GridFile("a[1]*?#.nx3"));
    Open(GridFile("a1xyz.nx3"));
    Run("mnGridCopy");
    Activate(0);
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "a[1]*?# (1)");
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "a[1]*?# (2)");
    // The longer name is another base.
    Open(GridFile("a1.nx3"));
    Run("mnGridCopy");
    EXPECT_EQ(Captions().back(), "a1 (1)");
}

// ---- A grid that was closed.

TEST_F(Commands, AClosedGridIsNoActiveGridFromThatMomentOn) {
    for (void (wMain::*command)() : {&wMain::mnuHelpSolve_Click, &wMain::mnuHelpAsk_Click}) {
        host.beeps = 0;
        main->mnuFileNew_Click();
        main->mnuFileClose_Click();  // its memory waits for the event loop
        EXPECT_FALSE(main->ActiveGrid());
        EXPECT_EQ(main->Cell(), nullptr);
        EXPECT_EQ(Title(), "Ninarix");
        ((*main).*command)();
        EXPECT_GE(host.beeps, 1);
        ServeEvents();
    }
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Commands, AGridThatIsClosedDuringAQuestionIsLeftAlone) {
    struct Case {
        const char* command;
        MessageButton answer;
    };
    for (const Case& c : {Case{"mnuHelpSolve", MessageButton::Ok}, {"mnuGridReinit", MessageButton::Ok}}) {
        NewPuzzle();
        host.onShow = [this] {
            Active().Discard();
            Run("mnuFileClose");
        };
        host.Expect(c.answer);
        Run(c.command);
        EXPECT_TRUE(Captions().empty()) << c.command;
    }
    host.onShow = {};
}

// ---- Checking and solving.

TEST_F(Commands, ErrorsAreCountedInWords) {
    NewPuzzle();
    host.AnswerAlways(MessageButton::Ok);
    Run("mnuHelpAsk");
    ExpectBox("Il n'y a aucune erreur.", 64);
    Set(1, "2|0|0");
    Run("mnuHelpAsk");
    ExpectBox("Il y a 1 erreur.", 48);
    Set(2, "1|0|0");
    Run("mnuHelpAsk");
    ExpectBox("Il y a 2 erreurs.", 48);
}

TEST_F(Commands, SolvingWaitsForAnOk) {
    NewPuzzle();
    host.Expect(MessageButton::Cancel);
    Run("mnuHelpSolve");
    ExpectBox("Attention, vous allez résoudre la grille.\r\nContinuer ?", 305);
    EXPECT_EQ(State(1), "0|0|0");
    host.Expect(MessageButton::Ok);
    Run("mnuHelpSolve");
    EXPECT_EQ(State(1) + " " + State(9), "1|0|0 9|0|0");
}

}  // namespace
