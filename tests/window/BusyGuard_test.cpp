#include "document/window/BusyGuard.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <stdexcept>

#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

class BusyRun : public testing::Test {
  protected:
    BusyRun() : edit(&window) {
        action.setShortcut(Qt::CTRL | Qt::Key_N);
        window.addAction(&action);
        QObject::connect(&action, &QAction::triggered, [this] { ++triggered; });
        window.show();
        QApplication::setActiveWindow(&window);
        edit.setFocus();
    }
    static QWidget& Progress() {
        for (QWidget* candidate : QApplication::topLevelWidgets()) {
            if (candidate->objectName() == "wCancel") return *candidate;
        }
        throw std::runtime_error("no progress window");
    }
    void TypeAndPress() {
        QTest::keyClick(&edit, Qt::Key_A);
        QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    }

    ScriptedHost host;
    QWidget window;
    QLineEdit edit;
    QAction action;
    int triggered = 0;
};

TEST_F(BusyRun, KeysAndShortcutsDoNothingUntilItsEnd) {
    {
        const BusyGuard run(&window);
        EXPECT_TRUE(BusyGuard::Active());
        TypeAndPress();
        EXPECT_EQ(edit.text(), "");
        EXPECT_EQ(triggered, 0);
    }
    TypeAndPress();
    EXPECT_EQ(edit.text(), "a");
    EXPECT_EQ(triggered, 1);
}

TEST_F(BusyRun, ClosingAWindowIsRefused) {
    {
        const BusyGuard run(&window);
        EXPECT_FALSE(window.close());
        EXPECT_TRUE(window.isVisible());
        EXPECT_GE(host.beeps, 1);
    }
    EXPECT_TRUE(window.close());
}

TEST_F(BusyRun, TheProgressWindowStaysAlive) {
    const BusyGuard run(&window);
    EXPECT_TRUE(run.StillVisible());
    QTest::mouseClick(&Child<QPushButton>(Progress(), "cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(run.StillVisible());
    EXPECT_TRUE(RefusedWhileBusy()) << "cancelled, but still under way";
}

TEST_F(BusyRun, AQuestionOfTheRunCanBeAnswered) {
    const BusyGuard run(&window);
    QMessageBox question(QMessageBox::Question, "", "Continuer ?", QMessageBox::Yes | QMessageBox::No,
                         &window);
    InNextDialog([&](QWidget&) { QTest::mouseClick(question.button(QMessageBox::No), Qt::LeftButton); });
    EXPECT_EQ(question.exec(), QMessageBox::No);
}

TEST_F(BusyRun, ATransientWindowMayTimeOut) {
    QWidget tip(&window, Qt::ToolTip);
    tip.show();
    const BusyGuard run(&window);
    EXPECT_TRUE(tip.close());
    EXPECT_EQ(host.beeps, 0);
}

TEST_F(BusyRun, AFailureEndsItLikeAnyOtherEnd) {
    try {
        const BusyGuard run(&window);
        host.shapes.push_back(platform::PointerShape::Hourglass);
        throw std::runtime_error("the engine failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_FALSE(BusyGuard::Active());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
    EXPECT_THROW(Progress(), std::runtime_error);
    TypeAndPress();
    EXPECT_EQ(edit.text(), "a");
    // The next run can begin.
    const BusyGuard run(&window);
    EXPECT_TRUE(run.StillVisible());
}

}  // namespace
