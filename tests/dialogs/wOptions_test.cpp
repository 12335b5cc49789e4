#include "settings/dialogs/wOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

#include "DialogSupport.h"
#include "settings/ColorTable.h"

namespace {

using Colours = platform::ColourDialogs::CustomColours;

class OptionsDialog : public testing::Test {
  protected:
    static std::string FileBytes() { return ScriptedHost::ReadFile(IniParamProcs::IniFilePath()); }
    static void ShowPage(wOptions& dialog, int page) {
        dialog.show();
        Child<QTabWidget>(dialog, "tbsOnglets").setCurrentIndex(page - 1);
    }
    // What the user sees in a field, as it is stored.
    static std::string Shown(const wOptions& dialog, const char* name) {
        const auto& field = Child<QWidget>(dialog, name);
        EXPECT_TRUE(field.isVisible()) << name;
        if (auto* box = qobject_cast<const QCheckBox*>(&field)) return box->isChecked() ? "1" : "0";
        if (auto* list = qobject_cast<const QComboBox*>(&field))
            return std::to_string(list->currentText().toInt() / 10 - 1);
        return dynamic_cast<const QLineEdit&>(field).text().toStdString();
    }
    static void Enter(const wOptions& dialog, const char* name, const char* text) {
        auto& field = Child<QWidget>(dialog, name);
        if (auto* box = qobject_cast<QCheckBox*>(&field)) return box->click();
        if (auto* list = qobject_cast<QComboBox*>(&field)) return list->setCurrentIndex(std::stoi(text));
        dynamic_cast<QLineEdit&>(field).setText(text);
    }
    void AnswerColour(std::optional<std::uint32_t> colour) {
        host.onChooseColour = [colour](std::uint32_t, Colours&) { return colour; };
    }

    ScriptedHost host;
};

const struct {
    int page;
    const char *field, *key, *other;
} fields[] = {
    {1, "chkNoSplash", "NoSplash", "1"},       {1, "chkLinesWidth", "LinesWidth", "1"},
    {1, "chkConfigOnNew", "ConfigOnNew", "0"}, {3, "txtMarginLeft", "MarginLeft", "x"},
    {3, "txtMarginTop", "MarginTop", "12.25"}, {3, "txtGridSize", "GridSize", "99,5 mm"},
    {4, "chkLevelAsk", "LevelAsk", "1"},       {4, "cboResolLoop", "ResolLoop", "8"},
};

TEST_F(OptionsDialog, EachFieldBelongsToItsKeyAndStartsWithItsDefault) {
    wOptions first(nullptr);
    first.chkColorChanged().setChecked(true);
    first.cmdCommands_Click(1);
    Settings::ForEach([](const auto& row) {
        const bool here = row.section == "Options" && row.key != "NoAutoMasks" && row.key != "GridHelpNone";
        EXPECT_EQ(Settings::IsMissing(row), !here) << row.key;
    });
    const std::string defaults = FileBytes();
    for (const auto& [page, field, key, other] : fields) {
        ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "");
        wOptions dialog(nullptr);
        ShowPage(dialog, page);
        const std::string line = std::string(key) + "=" + Shown(dialog, field) + "\r\n";
        ASSERT_NE(defaults.find(line), std::string::npos) << line;
        Enter(dialog, field, other);
        dialog.chkColorChanged().setChecked(true);
        Press(dialog, 1);
        std::string expected = defaults;
        expected.replace(defaults.find(line), line.size(), std::string(key) + "=" + other + "\r\n");
        EXPECT_EQ(FileBytes(), expected);
        wOptions again(nullptr);
        ShowPage(again, page);
        EXPECT_EQ(Shown(again, field), other);
    }
}

TEST_F(OptionsDialog, EachSwatchShowsItsColourAndChangesItWithOk) {
    for (std::size_t line = 0; line < Settings::Colors.size(); ++line) {
        const Settings::Color& row = Settings::Colors[line];
        std::filesystem::remove(IniParamProcs::IniFilePath());
        Settings::Write(row, 0x00CC10U);
        wOptions dialog(nullptr);
        ShowPage(dialog, 2);
        int announcements = 0;
        QObject::connect(&dialog, &wOptions::ColorsChanged, [&] { ++announcements; });
        const auto& grid = dynamic_cast<const QGridLayout&>(*Child<QFrame>(dialog, "frmPages(2)").layout());
        const auto at = [&](int column) {
            return grid.itemAtPosition(static_cast<int>(line), column)->widget();
        };
        EXPECT_EQ(dynamic_cast<const QLabel&>(*at(1)).text().toStdString(), row.label);
        EXPECT_EQ(at(0)->accessibleName().toStdString(), row.label);
        const auto shown = [&] { return at(0)->grab().toImage().pixelColor(20, 12); };
        EXPECT_EQ(shown(), QColor(0x10, 0xCC, 0));
        // Neither the same colour nor a cancelled chooser is a change.
        for (const auto& answer : {std::optional<std::uint32_t>(0x00CC10), std::optional<std::uint32_t>()}) {
            AnswerColour(answer);
            QTest::mouseClick(at(0), Qt::LeftButton);
            EXPECT_FALSE(dialog.chkColorChanged().isChecked());
        }
        AnswerColour(0x2000DD);
        QTest::mouseClick(at(0), Qt::LeftButton);
        EXPECT_EQ(shown(), QColor(0xDD, 0, 0x20));
        EXPECT_EQ(Stored(row.key), "52240");
        EXPECT_EQ(announcements, 0);
        Press(dialog, 1);
        EXPECT_EQ(announcements, 1);
        EXPECT_EQ(Stored(row.key), "2097373");
        ColorTable::Colors expected = ColorTable::Defaults;
        expected[row.Index()] = 0x2000DD;
        EXPECT_EQ(ColorTable::Shared(), expected);
    }
}

TEST_F(OptionsDialog, WithoutOkNothingIsWrittenAndWithoutANewColourNoColour) {
    ColorTable::Shared() = ColorTable::Defaults;
    for (const int way : {0, 1, 2}) {
        wOptions dialog(nullptr);
        dialog.chkColorChanged().setChecked(true);
        Leave(dialog, way);
        EXPECT_EQ(FileBytes(), "");
    }
    wOptions dialog(nullptr);
    Press(dialog, 1);
    EXPECT_EQ(Stored("Color_0") + Stored("GridSize"), "missing120");
}

TEST_F(OptionsDialog, AWrongNumberOfAttemptsIsHealedByOk) {
    for (const char* wrong : {"12", "-1", "abc", "9"}) {
        IniParamProcs::WriteIniParam("Options", "ResolLoop", wrong);
        wOptions dialog(nullptr);
        EXPECT_EQ(Child<QComboBox>(dialog, "cboResolLoop").currentText(), "10") << wrong;
        Press(dialog, 1);
        EXPECT_EQ(Stored("ResolLoop"), "0") << wrong;
    }
}

TEST_F(OptionsDialog, LayoutFieldsTakeTypedDigitsOnlyAndNoBackspace) {
    wOptions dialog(nullptr);
    ShowPage(dialog, 3);
    for (const char* name : {"txtMarginLeft", "txtMarginTop", "txtGridSize"}) {
        auto& field = Child<QLineEdit>(dialog, name);
        field.setText(QString());
        QTest::keyClicks(&field, QStringLiteral("09a.,-/: "));
        QTest::keyClick(&field, Qt::Key_Backspace);
        QTest::keyClick(&field, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier);
        EXPECT_EQ(field.text(), "09") << name;
        QTest::keyClick(&field, Qt::Key_Left);
        QTest::keyClick(&field, Qt::Key_Delete);
        QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
        QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(field.text(), "02,5") << name;
        const QWidget* before = dialog.focusWidget();
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_NE(dialog.focusWidget(), before) << name;
    }
    QTest::keyClick(&Child<QLineEdit>(dialog, "txtGridSize"), Qt::Key_Return);
    EXPECT_EQ(Stored("GridSize"), "02,5");
}

TEST_F(OptionsDialog, EveryTabShowsItsPageAndF1ItsTopic) {
    host.HelpFile("help.chm");
    wOptions dialog(nullptr);
    dialog.show();
    const auto& tabs = Child<QTabWidget>(dialog, "tbsOnglets");
    EXPECT_EQ(tabs.count(), 4);
    for (int i = 0; i < 4; ++i) {
        const char* captions[] = {"Divers", "Couleurs", "Impression", "Niveau"};
        EXPECT_EQ(tabs.tabText(i), captions[i]);
        if (i > 0) ShowPage(dialog, i + 1);
        QTest::keyClick(&dialog, Qt::Key_F1);
        EXPECT_EQ(host.helpCalls.back(), "topic help.chm " + std::to_string(210 + 10 * i));
        for (int page = 0; page <= 4; ++page) {
            const auto& frame = Child<QFrame>(dialog, QStringLiteral("frmPages(%1)").arg(page));
            EXPECT_EQ(frame.isVisible(), page == i + 1) << "page " << page << " on tab " << i;
        }
    }
    QTest::keyClick(&dialog, Qt::Key_F2);
    EXPECT_EQ(host.helpCalls.size(), 4U);
}

}  // namespace
