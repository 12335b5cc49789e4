#include "document/window/BusyGuard.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

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
    // Whether keys and shortcuts do something.
    bool Reacts() {
        edit.clear();
        triggered = 0;
        QTest::keyClick(&edit, Qt::Key_A);
        QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
        EXPECT_EQ(edit.text() == "a", triggered == 1);
        return triggered == 1;
    }

    ScriptedHost host;
    QWidget window;
    QLineEdit edit;
    QAction action;
    int triggered = 0;
};

TEST_F(BusyRun, NothingReactsUntilItsEnd) {
    {
        const BusyGuard run(&window);
        EXPECT_EQ(BusyGuard::Current(), &run);
        host.shapes.push_back(platform::PointerShape::Hourglass);
        EXPECT_FALSE(Reacts());
        host.beeps = 0;
        EXPECT_FALSE(window.close());
        QWidget tip(&window, Qt::ToolTip);  // comes and goes by itself
        tip.show();
        EXPECT_TRUE(tip.close());
        EXPECT_EQ(host.beeps, 1);
    }
    EXPECT_FALSE(BusyGuard::Current() || window.findChild<wCancel*>());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
    EXPECT_TRUE(Reacts() && window.close() && !RefusedWhileBusy());
}

TEST_F(BusyRun, ItsProgressWindowAndItsQuestionsReact) {
    const BusyGuard run(&window);
    EXPECT_TRUE(run.StillVisible());
    QMessageBox question(QMessageBox::Question, "", "Continuer ?", QMessageBox::Yes | QMessageBox::No);
    InNextDialog([&](QWidget&) { QTest::mouseClick(question.button(QMessageBox::No), Qt::LeftButton); });
    EXPECT_EQ(question.exec(), QMessageBox::No);
    QTest::mouseClick(&Child<QPushButton>(window, "cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(run.StillVisible());
    EXPECT_TRUE(RefusedWhileBusy()) << "cancelled, but still under way";
    EXPECT_EQ(host.beeps, 1);
}

}  // namespace
