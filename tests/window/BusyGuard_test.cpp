// SPDX-License-Identifier: MIT
#include "document/window/BusyGuard.h"

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
    window.show();
    {
        const BusyGuard run(&window);
        QTest::keyClick(&edit, Qt::Key_A);
        EXPECT_FALSE(window.close());
        QMessageBox question(QMessageBox::Question, "", "Continuer ?", QMessageBox::Yes | QMessageBox::No);
        InNextDialog([&](QWidget&) { QTest::mouseClick(question.button(QMessageBox::No), Qt::LeftButton); });
        EXPECT_EQ(question.exec(), QMessageBox::No);
        QTest::mouseClick(&Child<QPushButton>(window, "cmdCancel"), Qt::LeftButton);
        EXPECT_FALSE(run.StillVisible());
        EXPECT_TRUE(RefusedWhileBusy()) << "cancelled, but still under way";
    }
    QTest::keyClick(&edit, Qt::Key_B);
    EXPECT_EQ(edit.text(), "b");
    EXPECT_TRUE(window.close() && !RefusedWhileBusy());
}
