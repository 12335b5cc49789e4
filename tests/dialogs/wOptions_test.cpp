#include "settings/dialogs/wOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <map>
#include <string>

#include "settings/ColorTable.h"
#include "settings/IniParamProcs.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

using IniParamProcs::ReadIniParam;
using IniParamProcs::WriteIniParam;
using Colours = platform::ColourDialogs::CustomColours;

class OptionsDialog : public testing::Test {
  protected:
    void SetUp() override { ColorTable::Shared() = ColorTable::Defaults; }

    static void Press(wOptions& dialog, int index) {
        dialog.show();
        QTest::mouseClick(&Child<QPushButton>(dialog, QStringLiteral("cmdCommands(%1)").arg(index)),
                          Qt::LeftButton);
    }
    static QLineEdit& Field(const wOptions& dialog, const char* name) {
        return Child<QLineEdit>(dialog, QLatin1String(name));
    }
    static std::string Option(const char* key) { return ReadIniParam("Options", key, "missing"); }
    void AnswerColour(std::uint32_t colour) {
        host.onChooseColour = [colour](std::uint32_t, Colours&) { return colour; };
    }
    std::string SettingsFile() const { return ScriptedHost::ReadFile(IniParamProcs::IniFilePath()); }

    ScriptedHost host;
};

TEST_F(OptionsDialog, AFirstStartWritesEveryDefaultWithoutBeingSeen) {
    wOptions dialog(nullptr);
    dialog.chkColorChanged().setChecked(true);
    dialog.cmdCommands_Click(1);
    const std::map<const char*, const char*> defaults{
        {"Color_0", "16777215"}, {"Color_1", "65535"}, {"Color_2", "0"},    {"Color_3", "255"},
        {"Color_4", "0"},        {"Color_5", "255"},   {"Color_6", "0"},    {"GridSize", "120"},
        {"MarginTop", "15"},     {"MarginLeft", "45"}, {"LinesWidth", "0"}, {"NoSplash", "0"},
        {"ConfigOnNew", "1"},    {"LevelAsk", "0"},    {"LevelValue", "5"}, {"ResolLoop", "0"},
    };
    for (const auto& [key, value] : defaults) EXPECT_EQ(Option(key), value) << key;
    EXPECT_EQ(Option("NoAutoMasks"), "missing");
}

// Every key comes into its field, and out of it again, when it is not a default.
TEST_F(OptionsDialog, EveryKeyMakesTheRoundTrip) {
    const std::map<const char*, const char*> stored{
        {"Color_0", "1"},       {"Color_1", "2"},    {"Color_2", "3"},    {"Color_3", "4"},
        {"Color_4", "5"},       {"Color_5", "6"},    {"Color_6", "7"},    {"GridSize", "99,5 mm"},
        {"MarginTop", "12.25"}, {"MarginLeft", "x"}, {"LinesWidth", "1"}, {"NoSplash", "1"},
        {"ConfigOnNew", "0"},   {"LevelAsk", "1"},   {"LevelValue", "7"}, {"ResolLoop", "8"},
    };
    for (const auto& [key, value] : stored) WriteIniParam("Options", key, value);
    wOptions dialog(nullptr);
    std::filesystem::remove(IniParamProcs::IniFilePath());
    dialog.chkColorChanged().setChecked(true);
    Press(dialog, 1);
    for (const auto& [key, value] : stored) EXPECT_EQ(Option(key), value) << key;
}

TEST_F(OptionsDialog, AnnulerAndTheCloseBoxWriteNothing) {
    for (const bool closeBox : {false, true}) {
        wOptions dialog(nullptr);
        AnswerColour(0x123456);
        dialog.lblColors_Click(0);
        Field(dialog, "txtGridSize").setText(QStringLiteral("77"));
        if (closeBox) {
            dialog.show();
            dialog.close();
        } else {
            Press(dialog, 0);
        }
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(SettingsFile().find("[Options]"), std::string::npos);
        EXPECT_EQ(ColorTable::Shared(), ColorTable::Defaults);
    }
}

TEST_F(OptionsDialog, AChosenColourIsAnnouncedOnlyWhenConfirmed) {
    wOptions dialog(nullptr);
    int announcements = 0;
    QObject::connect(&dialog, &wOptions::ColorsChanged, [&] { ++announcements; });
    AnswerColour(0x00CC00);
    dialog.lblColors_Click(6);
    EXPECT_TRUE(dialog.chkColorChanged().isChecked());
    EXPECT_EQ(announcements, 0);
    Press(dialog, 1);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(Option("Color_6"), "52224");
    EXPECT_EQ(ColorTable::Shared()[6], 0x00CC00U);
}

TEST_F(OptionsDialog, TheSameColourOrACancelledChooserChangesNothing) {
    wOptions dialog(nullptr);
    AnswerColour(ColorTable::Defaults[3]);
    dialog.lblColors_Click(3);
    host.onChooseColour = [](std::uint32_t, Colours&) { return std::nullopt; };
    dialog.lblColors_Click(4);
    EXPECT_FALSE(dialog.chkColorChanged().isChecked());
    Press(dialog, 1);
    EXPECT_EQ(Option("Color_3"), "missing");
    EXPECT_EQ(Option("GridSize"), "120");
}

TEST_F(OptionsDialog, AWrongNumberOfAttemptsIsHealedByOk) {
    for (const char* wrong : {"12", "-1", "abc", "9"}) {
        WriteIniParam("Options", "ResolLoop", wrong);
        wOptions dialog(nullptr);
        EXPECT_EQ(Child<QComboBox>(dialog, "cboResolLoop").currentText(), "10") << wrong;
        Press(dialog, 1);
        EXPECT_EQ(Option("ResolLoop"), "0") << wrong;
    }
}

TEST_F(OptionsDialog, WithoutAnOptionTheLevelIsNotWritten) {
    WriteIniParam("Options", "LevelValue", "9");
    wOptions dialog(nullptr);
    Press(dialog, 1);
    EXPECT_EQ(Option("LevelValue"), "9");
}

TEST_F(OptionsDialog, LayoutFieldsTakeTypedDigitsOnlyAndNoBackspace) {
    wOptions dialog(nullptr);
    dialog.show();
    Child<QTabWidget>(dialog, "tbsOnglets").setCurrentIndex(2);
    for (const char* name : {"txtMarginLeft", "txtMarginTop", "txtGridSize"}) {
        QLineEdit& field = Field(dialog, name);
        field.setText(QString());
        QTest::keyClicks(&field, QStringLiteral("1a.,-9 "));
        EXPECT_EQ(field.text(), "19") << name;
        QTest::keyClick(&field, Qt::Key_Backspace);
        EXPECT_EQ(field.text(), "19") << name;
        QTest::keyClick(&field, Qt::Key_Left);
        QTest::keyClick(&field, Qt::Key_Delete);
        EXPECT_EQ(field.text(), "1") << name;
        QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
        QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(field.text(), "12,5") << name;
    }
    QTest::keyClick(&Field(dialog, "txtGridSize"), Qt::Key_Return);
    EXPECT_EQ(Option("GridSize"), "12,5");
}

TEST_F(OptionsDialog, TheSamplePageIsNeverShown) {
    wOptions dialog(nullptr);
    dialog.show();
    auto& tabs = Child<QTabWidget>(dialog, "tbsOnglets");
    QStringList captions;
    for (int i = 0; i < tabs.count(); ++i) {
        captions.append(tabs.tabText(i));
        tabs.setCurrentIndex(i);
        for (int page = 0; page <= 4; ++page) {
            const auto& frame = Child<QFrame>(dialog, QStringLiteral("frmPages(%1)").arg(page));
            EXPECT_EQ(frame.isVisible(), page == i + 1) << "page " << page << " on tab " << i;
        }
    }
    EXPECT_EQ(captions, QStringList({"Divers", "Couleurs", "Impression", "Niveau"}));
}

TEST_F(OptionsDialog, F1OpensTheTopicOfThePageOnView) {
    host.HelpFile("help.chm");
    wOptions dialog(nullptr);
    dialog.show();
    for (int i = 0; i < 4; ++i) {
        Child<QTabWidget>(dialog, "tbsOnglets").setCurrentIndex(i);
        QTest::keyClick(&dialog, Qt::Key_F1);
    }
    EXPECT_EQ(host.helpCalls, std::vector<std::string>({"topic help.chm 210", "topic help.chm 220",
                                                        "topic help.chm 230", "topic help.chm 240"}));
}

}  // namespace
