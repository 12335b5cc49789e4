#include "settings/dialogs/wLevel.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QTabWidget>

#include "DialogSupport.h"
#include "settings/dialogs/wOptions.h"

namespace {

// Which levels a dialog shows, from top to bottom, the chosen one marked; "Ok" after another was chosen.
template <class Dialog>
std::string Chosen(int value) {
    Dialog dialog(nullptr);
    dialog.show();
    for (auto* tabs : dialog.template findChildren<QTabWidget*>()) tabs->setCurrentIndex(3);
    std::map<int, QString> shown;
    for (auto* option : dialog.template findChildren<QRadioButton*>()) {
        const int top = option->mapTo(&dialog, QPoint()).y();
        if (option->isVisible()) shown[top] = option->text() + (option->isChecked() ? "* " : " ");
    }
    for (auto* option :
         dialog.template findChildren<QRadioButton*>(QStringLiteral("optLevelValue(%1)").arg(value))) {
        QTest::mouseClick(option, Qt::LeftButton, {}, {5, 5});
    }
    Press(dialog, 1);
    std::string all;
    for (const auto& [top, text] : shown) all += text.toStdString();
    return all;
}

template <class Dialog>
void ExpectLevels() {
    const ScriptedHost host;
    EXPECT_EQ(Chosen<Dialog>(4), "Débutant Facile Moyen* Difficile ");
    for (const auto& [value, caption] :
         {std::pair{7, "Difficile*"}, {6, "Débutant*"}, {5, "Facile*"}, {4, "Moyen*"}}) {
        EXPECT_NE(Chosen<Dialog>(value).find(caption), std::string::npos);
        EXPECT_EQ(Stored("LevelValue"), std::to_string(value));
    }
    Settings::Write(Settings::LevelValue, 8);
    EXPECT_EQ(Chosen<Dialog>(0), "Débutant Facile Moyen Difficile ");
    EXPECT_EQ(Stored("LevelValue"), "8");
}

TEST(LevelChoice, BothDialogsShowTheLevelsAndStoreTheChosenOne) {
    ExpectLevels<wLevel>();
    ExpectLevels<wOptions>();
}

TEST(LevelDialog, OnlyOkWritesAndAccepts) {
    const ScriptedHost host;
    for (const int way : {0, 1, 2, 3}) {
        wLevel dialog(nullptr);
        dialog.show();
        EXPECT_EQ(dialog.focusWidget(), &Child<QRadioButton>(dialog, "optLevelValue(5)"));
        auto& never = Child<QCheckBox>(dialog, "chkLevelAsk");
        EXPECT_FALSE(never.isChecked());
        ExpectLaidOut(dialog);
        EXPECT_EQ(dialog.windowTitle(), "Nouvelle grille");
        QTest::mouseClick(&never, Qt::LeftButton, {}, {5, 5});
        EXPECT_FALSE(dialog.Accepted());
        way == 3 ? Press(dialog, 1) : Leave(dialog, way);
        EXPECT_EQ(dialog.Accepted(), way == 3);
        EXPECT_EQ(Stored("LevelAsk") + Stored("LevelValue"), way == 3 ? "15" : "missingmissing");
    }
    EXPECT_EQ(Child<QLabel>(wLevel(nullptr), {}).text(), "Niveau de difficulté :");
    EXPECT_TRUE(Child<QCheckBox>(wLevel(nullptr), "chkLevelAsk").isChecked());
}

}  // namespace
