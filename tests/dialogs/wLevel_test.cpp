#include "settings/dialogs/wLevel.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QTabWidget>

#include "DialogSupport.h"
#include "settings/dialogs/wOptions.h"

namespace {

// The captions of the levels that a dialog shows checked; "Ok" after another was chosen.
template <class Dialog>
QString Chosen(int value) {
    Dialog dialog(nullptr);
    dialog.show();
    for (auto* tabs : dialog.template findChildren<QTabWidget*>()) tabs->setCurrentIndex(3);
    QString shown;
    for (auto* option : dialog.template findChildren<QRadioButton*>())
        if (option->isVisible() && option->isChecked()) shown += option->text();
    Child<QRadioButton>(dialog, QStringLiteral("optLevelValue(%1)").arg(value)).click();
    PressOk(dialog);
    return shown;
}

template <class Dialog>
void ExpectLevels() {
    const ScriptedHost host;
    // Each time the level that was chosen before is checked.
    const std::pair<int, const char*> choices[] = {
        {4, "Moyen"}, {7, "Difficile"}, {6, "Débutant"}, {5, "Facile"}, {4, "Moyen"}};
    for (const auto& [value, shown] : choices) {
        EXPECT_EQ(Chosen<Dialog>(value), shown);
        EXPECT_EQ(Stored("LevelValue"), std::to_string(value));
    }
    Settings::Write(Settings::LevelValue, 8);
    Dialog unknown(nullptr);
    PressOk(unknown);
    EXPECT_EQ(Stored("LevelValue"), "8");
}

TEST(LevelChoice, BothDialogsShowTheStoredLevelAndStoreTheChosenOne) {
    ExpectLevels<wLevel>();
    ExpectLevels<wOptions>();
}

TEST(LevelDialog, OnlyOkWritesAndAccepts) {
    const ScriptedHost host;
    for (const int way : {0, 1, 2, 3}) {
        wLevel dialog(nullptr);
        auto& never = Child<QCheckBox>(dialog, "chkLevelAsk");
        EXPECT_FALSE(never.isChecked());
        never.click();
        way == 3 ? PressOk(dialog) : Leave(dialog, way);
        EXPECT_EQ(dialog.Accepted(), way == 3);
        EXPECT_EQ(Stored("LevelAsk") + Stored("LevelValue"), way == 3 ? "15" : "missingmissing");
    }
    EXPECT_TRUE(Child<QCheckBox>(wLevel(nullptr), "chkLevelAsk").isChecked());
}

}  // namespace
