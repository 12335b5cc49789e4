// SPDX-License-Identifier: MIT
#include "settings/dialogs/wLevel.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTest>

#include "DialogSupport.h"

namespace {

TEST(LevelDialog, ShowsTheStoredLevelAndOnlyOkStoresAnother) {
    const ScriptedHost host;
    const struct {
        const char* shown;
        int chosen, way;  // a way without "Ok", or 3
        const char* stored;
    } cases[] = {{"Moyen", 4, 0, "missing"}, {"Moyen", 4, 1, "missing"}, {"Moyen", 4, 2, "missing"},
                 {"Moyen", 4, 3, "14"},      {"Difficile", 7, 3, "07"},  {"Débutant", 6, 3, "16"},
                 {"Facile", 5, 2, "16"},     {"Facile", 5, 3, "05"},     {"Moyen", 4, 3, "14"}};
    for (const auto& [shown, chosen, way, stored] : cases) {
        wLevel dialog(nullptr);
        for (const auto* option : dialog.findChildren<QRadioButton*>())
            EXPECT_EQ(option->isChecked(), option->text() == shown) << shown;
        Child<QRadioButton>(dialog, QStringLiteral("optLevelValue(%1)").arg(chosen)).click();
        Child<QCheckBox>(dialog, "chkLevelAsk").click();
        way == 3 ? PressOk(dialog) : Leave(dialog, way);
        EXPECT_EQ(dialog.Accepted(), way == 3);
        const std::string ask = Stored("LevelAsk");
        EXPECT_EQ(ask == "missing" ? ask : ask + Stored("LevelValue"), stored);
    }
    // One that only the file offers stays.
    Settings::Write(Settings::LevelValue, 8);
    wLevel unknown(nullptr);
    PressOk(unknown);
    EXPECT_EQ(Stored("LevelValue"), "8");
}

TEST(LevelDialog, TheTabKeyMeetsTheCheckBoxBeforeOkAndF1OpensItsTopic) {
    ScriptedHost host;
    for (const char* level : {"4", "5", "6", "7"}) {
        IniParamProcs::WriteIniParam("Options", "LevelValue", level);
        wLevel dialog(nullptr);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        std::string walk;
        for (int stop = 0; stop < 5; ++stop) {
            walk += dialog.focusWidget()->objectName().toStdString() + " ";
            QTest::keyClick(dialog.focusWidget(), Qt::Key_F1);
            EXPECT_EQ(host.helpCalls.back(), "topic  250");
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        const std::string option = std::string("optLevelValue(") + level + ") ";
        EXPECT_EQ(walk, option + "chkLevelAsk cmdCommands(1) cmdCommands(0) " + option);
    }
}

}  // namespace
