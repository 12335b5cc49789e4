// SPDX-License-Identifier: MIT

// The commands of the menus, of the toolbar and of the palette.

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <set>
#include <utility>

#include "Program.h"
#include "platform/qt/Contrast.h"
#include "settings/dialogs/wCancel.h"
#include "support/DigitReader.h"

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
    std::string keys;
    std::multiset<std::string> all;
    for (const QAction* action : main->findChildren<QAction*>()) {
        for (const QKeySequence& key : action->shortcuts()) all.insert(key.toString().toStdString());
    }
    for (const std::string& key : all) keys += key + " ";
    EXPECT_EQ(keys,
              "Ctrl+C Ctrl+D Ctrl+F4 Ctrl+G Ctrl+H Ctrl+I Ctrl+M Ctrl+N Ctrl+O Ctrl+P Ctrl+Q Ctrl+R Ctrl+S "
              "Ctrl+Shift+S Ctrl+Shift+Z Ctrl+V Ctrl+W Ctrl+Y Ctrl+Z F1 F4 F9 ");
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
    Open(GridFile("a1xyz (z).nx3"));          // another base
    Activate(0);
    for (int i = 0; i < 2; ++i) Run("mnGridCopy");
    EXPECT_EQ(Grids(), "a[1]*?#, a1xyz (z), a[1]*?# (1), [a[1]*?# (2)]");
    EXPECT_EQ(State(1) + PathPanel(), "5|1|36");
}

TEST_F(Commands, AGridIsCopiedPastedAndDroppedAsText) {
    Run("mnuEditCopy");
    EXPECT_EQ(host.beeps, 1);
    NewPuzzle();
    Set(1, "1|0|0");
    Run("mnuEditCopy");
    Run("mnuGridConfig");
    Run("mnuEditPaste");
    EXPECT_EQ(Grids() + State(1) + State(2) + State(10), "Grille1, [Grille2]1|1|00|0|04|1|0");
    EXPECT_TRUE(Document().Modified() && main->InitialisationMode());
    QMimeData dragged;
    dragged.setText(QGuiApplication::clipboard()->text());
    EXPECT_TRUE(Drop(dragged));
    ServeEvents();  // the source of the drag does not wait for the grid
    EXPECT_EQ(Grids(), "Grille1, Grille2, [Grille3]");
    QGuiApplication::clipboard()->setText("aucune grille");
    Run("mnuEditPaste");
    EXPECT_EQ(Grids() + std::to_string(host.beeps), "Grille1, Grille2, [Grille3]2");
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

TEST_F(Commands, ACompletedGridIsReportedOnceAndTheStatusBarSaysHowFarItIs) {
    NewPuzzle();
    const auto enter = [this](int index, int digit) {  // what the panel says then
        Active().ctrlCells(index).DoSelect();
        QTest::keyClick(Active().focusWidget(), static_cast<Qt::Key>(Qt::Key_0 + digit));
        return Child<QLabel>(*main, "state").text().toStdString();
    };
    const std::string full = "Grille complète";
    for (int i = 1; i <= 8; ++i) EXPECT_EQ(enter(i, i), "Cases vides : " + std::to_string(9 - i));
    EXPECT_EQ(enter(9, 9), full) << "no message in initialisation mode";
    Run("mnuGridConfig");
    Set(9, "0|0|0");
    host.Expect(MessageButton::Ok);
    EXPECT_EQ(enter(9, 9), full);
    EXPECT_EQ(LastBox(), "64 Bravo, la grille est terminée.");
    Run("mnuEditUndo");
    Run("mnuEditRedo");  // no entry
    Run("mnuGridHelpNone");
    EXPECT_EQ(enter(9, 9), full) << "it was complete before";
    EXPECT_EQ(enter(9, 8), full + " : des chiffres se répètent");
    host.Expect(MessageButton::Ok);
    enter(9, 9);
    Run("mnuFileNew");
    EXPECT_EQ(Child<QLabel>(*main, "state").text().toStdString(), "Cases vides : 81");
    Run("mnuFileClose");
    EXPECT_EQ(Child<QLabel>(*main, "state").text().toStdString(), full);
}

// ---- Entering values and exclusions.

class PaletteTest : public RunningProgram {
  protected:
    PaletteTest() : palette(main->picPalette()) {
        Run("mnuFileNew");
        Run("mnuGridConfig");  // off again
        Active().ctrlCells(1).DoSelect();
        Set(9, "5|0|0");
    }

    Palette& palette;
};

TEST_F(PaletteTest, DigitsAndStatesAreSeen) {
    const auto fill = [](const PaletteButton& button, const QImage& picture) {
        return picture.pixelColor(7, button.height() / 2);  // left of its digit
    };
    for (const char* record : {"0|0|8", "4|0|0", "4|1|0"}) {
        Set(1, record);
        for (int i = 1; i <= 9; ++i) {
            for (PaletteButton* button : {&palette.cmdValue(i), &palette.cmdMask(i)}) {
                const QImage picture = button->grab().toImage().convertToFormat(QImage::Format_RGB32);
                const auto found =
                    DigitReader::Read(picture, button->rect().adjusted(6, 6, -6, -6), fill(*button, picture));
                const bool plain = button->State() == DigitState::Neutral;  // the others have a mark
                EXPECT_TRUE(!plain || found.digit == i) << button->objectName().toStdString();
                EXPECT_GE(platform_qt::Contrast(found.ink, fill(*button, picture)),
                          button->isEnabled() || !plain ? 4.5 : 3)
                    << button->objectName().toStdString() << " of " << record;
            }
        }
    }
    Set(1, "0|0|8");
    for (const auto& [button, color] : {std::pair{&palette.cmdMask(1), "#00cc00"},
                                        {&palette.cmdMask(3), "#cc0000"},
                                        {&palette.cmdValue(1), "#888888"}}) {
        const QImage picture = button->grab().toImage();
        EXPECT_EQ(fill(*button, picture).name().toStdString(), color);
    }
}

TEST_F(PaletteTest, EachColumnIsOneStopOfTheTabKeyAndTheArrowsWalkInside) {
    Set(1, "0|0|8");  // 3 excluded, 5 taken: neither can be entered, 5 not be excluded
    const std::pair<Qt::Key, const char*> walk[] = {
        {Qt::Key_Tab, "cmdValue(0)"},  {Qt::Key_Down, "cmdValue(1)"}, {Qt::Key_Down, "cmdValue(2)"},
        {Qt::Key_Down, "cmdValue(4)"}, {Qt::Key_Down, "cmdValue(6)"}, {Qt::Key_Right, "cmdMask(6)"},
        {Qt::Key_Up, "cmdMask(4)"},    {Qt::Key_Up, "cmdMask(3)"},    {Qt::Key_Left, "cmdValue(2)"},
        {Qt::Key_Tab, "cmdMask(3)"},   {Qt::Key_Tab, "ctrlCells(1)"}, {Qt::Key_Backtab, "cmdMask(3)"},
        {Qt::Key_Space, "cmdMask(3)"}};
    QApplication::setActiveWindow(main.get());
    Active().SetFocus();
    for (const auto& [key, name] : walk) {
        QTest::keyClick(main->focusWidget(), key);
        EXPECT_EQ(main->focusWidget()->objectName().toStdString(), name);
    }
    EXPECT_EQ(State(1), "0|0|0");
    auto* mask = QAccessible::queryAccessibleInterface(&palette.cmdMask(3));
    EXPECT_EQ(mask->text(QAccessible::Name), "Exclure le 3");
    mask->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    ServeEvents();
    EXPECT_EQ(State(1), "0|0|8");
    EXPECT_EQ(mask->text(QAccessible::Name), "Réadmettre le 3");
    Set(1, "4|1|0");  // the column's stop is of no use any more
    Active().SetFocus();
    QTest::keyClick(main->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(main->focusWidget()->objectName(), "cmdValue(0)");
    Run("mnuFileClose", MessageButton::No);
    for (int i = 0; i <= 9; ++i) {
        EXPECT_TRUE(palette.cmdValue(i).focusPolicy() == Qt::NoFocus && !palette.cmdMask(i).hasFocus());
    }
}

TEST_F(PaletteTest, ButtonsAndKeysEnterWhatTheModesAllow) {
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        host.beeps = 0;
        QTest::keyClick(Active().focusWidget(), key, held);
        return State(1) + (host.beeps > 0 ? " beep" : "");
    };
    QTest::mouseClick(&palette.cmdMask(2), Qt::LeftButton);
    EXPECT_EQ(press(Qt::Key_4), "4|0|4") << "the keyboard goes back to the cell";
    QTest::mouseClick(&palette.cmdMask(0), Qt::LeftButton);
    EXPECT_EQ(press(Qt::Key_5), "4|0|0 beep");
    EXPECT_EQ(press(Qt::Key_5, Qt::ControlModifier), "4|0|0 beep") << "as its button is disabled";
    EXPECT_EQ(press(Qt::Key_2, Qt::ControlModifier), "4|0|4");
    EXPECT_EQ(press(Qt::Key_0, Qt::ControlModifier), "4|0|0");
    Run("mnuGridHelpNone");
    EXPECT_EQ(press(Qt::Key_2, Qt::ControlModifier), "4|0|0 beep");
    EXPECT_EQ(press(Qt::Key_5), "5|0|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_6), "6|1|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_7), "6|1|0 beep");
}

}  // namespace
