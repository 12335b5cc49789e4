#include "settings/dialogs/wLevel.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <string>

#include "settings/IniParamProcs.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

using IniParamProcs::ReadIniParam;
using IniParamProcs::WriteIniParam;

class LevelDialog : public testing::Test {
  protected:
    static std::string Chosen(const wLevel& dialog) {
        for (const auto* option : dialog.findChildren<QRadioButton*>()) {
            if (option->isChecked()) return option->text().toStdString();
        }
        return {};
    }
    static void ChangeEverything(wLevel& dialog) {
        dialog.show();
        Child<QRadioButton>(dialog, "optLevelValue(4)").click();
        Child<QCheckBox>(dialog, "chkLevelAsk").click();
    }
    static void Press(wLevel& dialog, int index) {
        QTest::mouseClick(&Child<QPushButton>(dialog, QStringLiteral("cmdCommands(%1)").arg(index)),
                          Qt::LeftButton);
    }
    std::string Settings() const { return ReadIniParam("Options", "LevelAsk", "none") + " " + Level(); }
    static std::string Level() { return ReadIniParam("Options", "LevelValue", "none"); }

    ScriptedHost host;
};

TEST_F(LevelDialog, EachStoredLevelSelectsItsOwnOption) {
    for (const auto& [stored, caption] :
         {std::pair{"7", "Débutant"}, {"6", "Facile"}, {"5", "Moyen"}, {"4", "Difficile"}}) {
        WriteIniParam("Options", "LevelValue", stored);
        EXPECT_EQ(Chosen(wLevel(nullptr)), caption);
    }
}

TEST_F(LevelDialog, OkWritesBothKeys) {
    wLevel dialog(nullptr);
    ChangeEverything(dialog);
    Press(dialog, 1);
    EXPECT_TRUE(dialog.Accepted());
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(Settings(), "1 4");
}

TEST_F(LevelDialog, OkWithoutAnOptionKeepsTheStoredLevel) {
    WriteIniParam("Options", "LevelValue", "8");
    wLevel dialog(nullptr);
    dialog.show();
    EXPECT_EQ(Chosen(dialog), "");
    Press(dialog, 1);
    EXPECT_EQ(Settings(), "0 8");
}

TEST_F(LevelDialog, EveryOtherWayOutWritesNothing) {
    const std::function<void(wLevel&)> waysOut[] = {
        [](wLevel& dialog) { Press(dialog, 0); },
        [](wLevel& dialog) { dialog.close(); },
        [](wLevel& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
    };
    for (const auto& leave : waysOut) {
        wLevel dialog(nullptr);
        ChangeEverything(dialog);
        leave(dialog);
        EXPECT_FALSE(dialog.Accepted());
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(Settings(), "none none");
    }
}

}  // namespace
