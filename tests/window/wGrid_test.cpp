// SPDX-License-Identifier: MIT
#include "document/window/wGrid.h"

#include <QApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

#include "FakeFrame.h"
#include "document/window/OpenGrid.h"
#include "settings/dialogs/wCancel.h"

namespace {

using platform::MessageButton;

// ---- Selection and keys.

class Grid : public GridWindow {};

TEST_F(Grid, ACellIsChosenByMouseTabArrowsAndKeys) {
    const auto expectChosen = [this](int index) {
        EXPECT_TRUE(frame.cell == &grid->ctrlCells(index) && frame.cell == grid->CurrentCell()) << index;
    };
    // Before a cell was chosen, or while another window's is, keys begin where the keyboard is.
    wGrid other(frame, std::make_unique<GridDocument>());
    for (ctrlCell* elsewhere : {static_cast<ctrlCell*>(nullptr), &other.ctrlCells(41)}) {
        frame.cell = elsewhere;
        QTest::keyClick(&grid->ctrlCells(7), Qt::Key_Right);
        expectChosen(7);
    }
    QTest::mouseClick(grid->childAt(grid->ctrlCells(31).geometry().topLeft()), Qt::LeftButton);
    expectChosen(31);  // through the line that lies above it
    QApplication::setActiveWindow(grid);
    for (const auto reason : {Qt::OtherFocusReason, Qt::TabFocusReason}) {
        grid->ctrlCells(5 + reason).setFocus(reason);
        expectChosen(5 + reason);
    }
    for (const int i : {3, 9, 40, 45}) Set(i, "5|1|0");
    constexpr auto none = Qt::NoModifier, control = Qt::ControlModifier, alt = Qt::AltModifier;
    const std::tuple<int, Qt::Key, Qt::KeyboardModifier, int> moves[] = {
        {41, Qt::Key_Right, none, 42},    {41, Qt::Key_Left, none, 40},   {41, Qt::Key_Down, none, 50},
        {41, Qt::Key_Up, none, 32},       {9, Qt::Key_Right, none, 9},    {10, Qt::Key_Left, none, 10},
        {5, Qt::Key_Up, none, 5},         {77, Qt::Key_Down, none, 77},   {41, Qt::Key_Left, control, 39},
        {44, Qt::Key_Right, control, 44}, {1, Qt::Key_Down, control, 10}, {12, Qt::Key_Up, control, 12},
        {41, Qt::Key_Home, none, 37},     {41, Qt::Key_End, none, 45},    {41, Qt::Key_Home, control, 1},
        {41, Qt::Key_End, control, 81},   {41, Qt::Key_Right, alt, 41}};
    for (const auto& [from, key, modifier, to] : moves) {
        QTest::mouseClick(&grid->ctrlCells(from), Qt::LeftButton);
        QTest::keyClick(grid->focusWidget(), key, modifier);
        expectChosen(to);
        EXPECT_EQ(grid->focusWidget(), frame.cell);
    }
}

TEST_F(Grid, TheTabKeyLeavesItForTheNextControlAndComesBackToTheCurrentCell) {
    QWidget window;
    QLineEdit before(&window);
    auto* area = new QMdiArea(&window);
    area->setFocusPolicy(Qt::NoFocus);
    QLineEdit after(&window);
    auto* behind = new wGrid(frame, std::make_unique<GridDocument>());
    for (wGrid* shown : {behind, grid.data()}) area->addSubWindow(shown)->setFocusPolicy(Qt::ClickFocus);
    window.show();
    QApplication::setActiveWindow(&window);
    behind->Form_Activate();
    behind->Form_Deactivate();
    grid->Form_Activate();
    grid->ctrlCells(41).setFocus();
    for (const auto& [key, other] : {std::pair{Qt::Key_Tab, &before}, {Qt::Key_Backtab, &after}}) {
        QTest::keyClick(window.focusWidget(), key);
        EXPECT_EQ(window.focusWidget(), other) << key;
        QTest::keyClick(other, key == Qt::Key_Tab ? Qt::Key_Backtab : Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), &grid->ctrlCells(41));
    }
}

TEST_F(Grid, CandidatesAreExcludedByRightClickAndEnteredByDoubleClick) {
    Set(1, "7|0|0");
    Set(31, "0|0|4");  // 2 is excluded
    const auto at = [this](int cell, int digit) {
        const QSize size = grid->ctrlCells(cell).size();
        return QPoint((2 * ((digit - 1) % 3) + 1) * size.width() / 6,
                      (2 * ((digit - 1) / 3) + 1) * size.height() / 6);
    };
    for (const int digit : {2, 9}) {  // one that is not on view comes back
        QTest::mouseClick(&grid->ctrlCells(31), Qt::RightButton, {}, at(31, digit));
        EXPECT_EQ(frame.cell, &grid->ctrlCells(31));
    }
    QTest::mouseClick(&grid->ctrlCells(31), Qt::RightButton, {}, at(31, 4));
    QTest::mouseDClick(&grid->ctrlCells(31), Qt::RightButton, {}, at(31, 4));  // comes as the second click
    QTest::mouseClick(&grid->ctrlCells(1), Qt::RightButton, {}, at(1, 9));
    EXPECT_EQ(frame.cell, &grid->ctrlCells(1)) << "a value has no candidates";
    QTest::keyClick(&grid->ctrlCells(1), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(frame.toggled, (std::vector<int>{2, 9, 4, 4, 3})) << "quick clicks are two";
    for (const int digit : {2, 7, 5}) {
        QTest::mouseDClick(&grid->ctrlCells(31), Qt::LeftButton, {}, at(31, digit));
    }
    EXPECT_EQ(frame.entered, (std::vector<int>{7, 5}));
}

TEST_F(Grid, OnlyDigitsAndDeleteEnterSomething) {
    QTest::keyClicks(&grid->ctrlCells(7), "0a1 9-:");
    EXPECT_EQ(frame.cell, &grid->ctrlCells(7)) << "the cell that is typed into is the current one";
    QTest::sendKeyEvent(QTest::Click, &grid->ctrlCells(7), Qt::Key_unknown, QStringLiteral("\u0439"), {});
    for (const auto key : {Qt::Key_Delete, Qt::Key_Backspace}) QTest::keyClick(grid->focusWidget(), key);
    QTest::keyClick(grid->focusWidget(), Qt::Key_5, Qt::KeypadModifier);
    EXPECT_EQ(frame.entered, (std::vector<int>{1, 9, 0, 0, 5}));
}

// ---- History.

TEST_F(Grid, UndoAndRedoSelectTheChangedCellOrSayThatThereIsNothing) {
    const auto refusal = [this](void (wGrid::*step)()) {
        host.Expect(MessageButton::Ok);
        ((*grid).*step)();
        return LastBox();
    };
    grid->SetFocus();
    EXPECT_EQ(refusal(&wGrid::Undo), "Rien à annuler");
    document.EnterValue(50, 7, {});
    document.EnterValue(3, 1, {});
    EXPECT_EQ(refusal(&wGrid::Redo), "Rien à rétablir");
    for (const int changed : {3, 50}) {
        grid->Undo();
        EXPECT_EQ(frame.cell, &grid->ctrlCells(changed));
        EXPECT_EQ(grid->focusWidget(), &grid->ctrlCells(changed));
    }
    // With the keyboard elsewhere undo only beeps; redo asks for no focus.
    QLineEdit elsewhere(grid);
    elsewhere.show();
    for (const auto step : {&wGrid::Redo, &wGrid::Undo}) {
        elsewhere.setFocus();
        ((*grid).*step)();
        EXPECT_EQ(State(50), "7|0|0");
    }
    EXPECT_EQ(host.beeps, 1);
}

// ---- The engine.

TEST_F(Grid, ACancelledSolveLeavesTheGivensAndReinitAsksFirst) {
    // No two givens clash, but no digit is left for cell 1.
    for (int i = 2; i <= 9; ++i) Set(i, std::to_string(i - 1) + "|1|0");
    Set(28, "9|1|0");
    Set(81, "5|0|36");
    host.Expect(MessageButton::Cancel);
    grid->Reinit();
    EXPECT_EQ(host.boxes.back().style, 305);
    EXPECT_EQ(State(81), "5|0|36");
    host.onYield = [this] { Child<wCancel>(*grid, "wCancel").cmdCancel_Click(); };
    EXPECT_EQ(grid->TestGrid(), 0) << "there is no solution to be wrong against";
    grid->SolveGrid();
    EXPECT_EQ(State(2) + " " + State(28) + " " + State(81), "1|1|0 9|1|0 0|0|36");
    host.Expect(MessageButton::Ok);
    grid->Reinit();
    EXPECT_EQ(State(2) + " " + State(81), "1|1|0 0|0|0");
    EXPECT_TRUE(grid->ctrlCells(81).Mask(2));
}

// ---- Saving and closing.

class Closing : public GridWindow {
  protected:
    Closing() {
        document.Caption("Grille1");
        Set(1, "5|0|0");
    }
    // True when the window went.
    bool Close(std::deque<MessageButton> answers) {
        host.answers = std::move(answers);
        grid->close();
        ServeEvents();
        return !grid;
    }
    bool Saved() const { return ScriptedHost::ReadFile(file).find("\r\n1=5|0|0\r\n") != std::string::npos; }

    const std::string file = host.PathOf("a.nx3");
};

TEST_F(Closing, AWindowThatWasClosedIsNoOpenGridFromThatMomentOn) {
    const OpenGrid open(grid);
    int told = 0;
    QObject::connect(grid, &wGrid::Unloading, [&] { ++told; });
    EXPECT_FALSE(Close({MessageButton::Cancel}));
    EXPECT_EQ(LastBox(), "La grille Grille1 a été modifiée.\r\nVoulez-vous la sauvegarder ?");
    EXPECT_TRUE(open && told == 0);
    grid->Discard();  // without a question
    grid->close();
    ASSERT_TRUE(grid) << "its memory goes with the event loop";
    EXPECT_FALSE(open || open.Get());
    ServeEvents();
    EXPECT_TRUE(!grid && told == 1);
}

TEST_F(Closing, YesSavesOrTheWindowStaysNoDoesNot) {
    host.ExpectFile("");
    EXPECT_FALSE(Close({MessageButton::Yes})) << "no file was chosen";
    host.ExpectFile(host.PathOf("absent/a.nx3"));
    EXPECT_FALSE(Close({MessageButton::Yes, MessageButton::Ok}));
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75")) << LastBox();
    EXPECT_EQ(grid->Caption() + grid->Path(), "Grille1") << "a file that was never written is not its own";
    grid->Path(QString::fromStdString(file));
    host.Expect(MessageButton::No);
    EXPECT_TRUE(grid->AskBeforeUnload() && !std::filesystem::exists(file));
    host.Expect(MessageButton::Yes);
    EXPECT_TRUE(grid->AskBeforeUnload() && Saved());
    EXPECT_TRUE(Close({})) << "nothing is modified, nothing asked";
}

}  // namespace
