#include "document/window/BusyGuard.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// The monkey plays beside runs; here is what has to react during one, and that everything does after it.
TEST(BusyRun, OnlyItsProgressWindowAndItsQuestionsReact) {
    ScriptedHost host;
    QWidget window;
    QLineEdit edit(&window);
    QAction action;
    action.setShortcut(Qt::CTRL | Qt::Key_N);
    window.addAction(&action);
    QObject::connect(&action, &QAction::triggered, [&] { edit.setText(edit.text() + "n"); });
    window.show();
    QApplication::setActiveWindow(&window);
    edit.setFocus();
    const auto type = [&] {
        QTest::keyClick(&edit, Qt::Key_A);
        QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
        return edit.text();
    };
    {
        const BusyGuard run(&window);
        EXPECT_EQ(type(), "");
        EXPECT_FALSE(window.close());
        QMessageBox question(QMessageBox::Question, "", "Continuer ?", QMessageBox::Yes | QMessageBox::No);
        InNextDialog([&](QWidget&) { QTest::mouseClick(question.button(QMessageBox::No), Qt::LeftButton); });
        EXPECT_EQ(question.exec(), QMessageBox::No);
        QTest::mouseClick(&Child<QPushButton>(window, "cmdCancel"), Qt::LeftButton);
        EXPECT_FALSE(run.StillVisible());
        EXPECT_TRUE(RefusedWhileBusy()) << "cancelled, but still under way";
        EXPECT_EQ(host.beeps, 2);
    }
    QApplication::setActiveWindow(&window);
    EXPECT_EQ(type(), "an");
    EXPECT_TRUE(window.close() && !RefusedWhileBusy());
}
