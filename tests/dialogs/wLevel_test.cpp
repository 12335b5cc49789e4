#include "settings/dialogs/wLevel.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>
#include <memory>

#include "DialogSupport.h"
#include "settings/Levels.h"
#include "settings/dialogs/wOptions.h"

namespace {

std::unique_ptr<QDialog> Dialog(bool options) {
    if (!options) return std::make_unique<wLevel>(nullptr);
    auto dialog = std::make_unique<wOptions>(nullptr);
    Child<QTabWidget>(*dialog, "tbsOnglets").setCurrentIndex(3);
    return dialog;
}

// "Débutant Facile Moyen* Difficile": from top to bottom, the chosen one marked.
std::string Shown(QDialog& dialog) {
    dialog.show();
    std::map<int, std::string> shown;
    for (const auto* option : dialog.findChildren<QRadioButton*>()) {
        EXPECT_TRUE(option->isVisible());
        shown[option->mapTo(&dialog, QPoint()).y()] =
            option->text().toStdString() + (option->isChecked() ? "* " : " ");
    }
    std::string all;
    for (const auto& [y, text] : shown) all += text;
    return all;
}

TEST(LevelChoice, BothDialogsShowTheLevelsAndStoreTheChosenOne) {
    const ScriptedHost host;
    for (const bool options : {false, true}) {
        for (const Settings::Level& level : Settings::Levels) {
            std::filesystem::remove(IniParamProcs::IniFilePath());
            const auto dialog = Dialog(options);
            EXPECT_EQ(Shown(*dialog), "Débutant Facile Moyen* Difficile ");
            QTest::mouseClick(
                &Child<QRadioButton>(*dialog, QStringLiteral("optLevelValue(%1)").arg(level.value)),
                Qt::LeftButton, {}, {5, 5});
            Press(*dialog, 1);
            EXPECT_EQ(Stored("LevelValue"), std::to_string(level.value));
            EXPECT_NE(Shown(*Dialog(options)).find(std::string(level.caption) + "*"), std::string::npos);
        }
        Settings::Write(Settings::LevelValue, 8);
        const auto dialog = Dialog(options);
        EXPECT_EQ(Shown(*dialog), "Débutant Facile Moyen Difficile ");
        Press(*dialog, 1);
        EXPECT_EQ(Stored("LevelValue"), "8");
    }
}

TEST(LevelDialog, OnlyOkWritesAndAccepts) {
    const ScriptedHost host;
    for (const int way : {0, 1, 2, 3}) {
        wLevel dialog(nullptr);
        dialog.show();
        EXPECT_EQ(dialog.focusWidget(), &Child<QRadioButton>(dialog, "optLevelValue(5)"));
        auto& never = Child<QCheckBox>(dialog, "chkLevelAsk");
        EXPECT_FALSE(never.isChecked());
        QTest::mouseClick(&never, Qt::LeftButton, {}, {5, 5});
        EXPECT_FALSE(dialog.Accepted());
        way == 3 ? Press(dialog, 1) : Leave(dialog, way);
        EXPECT_EQ(dialog.Accepted(), way == 3);
        EXPECT_EQ(Stored("LevelAsk") + Stored("LevelValue"), way == 3 ? "15" : "missingmissing");
    }
    EXPECT_TRUE(Child<QCheckBox>(wLevel(nullptr), "chkLevelAsk").isChecked());
}

}  // namespace
