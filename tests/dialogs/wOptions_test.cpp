// SPDX-License-Identifier: MIT
#include "settings/dialogs/wOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTabWidget>

#include "DialogSupport.h"
#include "settings/ColorTable.h"

namespace {

class OptionsDialog : public testing::Test {
  protected:
    static std::string FileText() { return ScriptedHost::ReadFile(IniParamProcs::IniFilePath()); }
    // What the user enters and sees in a field: true, a text, the text of a list.
    static const char* Entry(const QWidget& field) { return field.metaObject()->userProperty().name(); }
    static std::string Shown(const wOptions& dialog, const char* name) {
        const auto& field = Child<QWidget>(dialog, name);
        return field.property(Entry(field)).toString().toStdString();
    }

    ScriptedHost host;
};

TEST_F(OptionsDialog, EachFieldBelongsToItsKeyAndOnlyOkWrites) {
    wOptions first(nullptr);
    for (const int way : {0, 1, 2}) Leave(first, way);
    EXPECT_EQ(FileText(), "");
    PressOk(first);
    const QString defaults = QString::fromStdString(FileText());
    EXPECT_FALSE(defaults.contains("Color_")) << "colours that nobody changed";
    const struct {
        const char *field, *key, *first, *other, *stored;
    } fields[] = {
        {"chkNoSplash", "NoSplash", "false", "true", "1"},
        {"chkLinesWidth", "LinesWidth", "false", "true", "1"},
        {"chkConfigOnNew", "ConfigOnNew", "true", "false", "0"},
        {"txtMarginLeft", "MarginLeft", "45", "x", "x"},
        {"txtMarginTop", "MarginTop", "15", "12.25", "12.25"},
        {"txtGridSize", "GridSize", "120", "99,5 mm", "99,5 mm"},
        {"chkLevelAsk", "LevelAsk", "false", "true", "1"},
        {"cboResolLoop", "ResolLoop", "10", "90", "8"},
        {"optLevelValue(7)", "LevelValue", "false", "true", "7"},
    };
    for (const auto& [name, key, byDefault, other, stored] : fields) {
        std::filesystem::remove(IniParamProcs::IniFilePath());
        wOptions dialog(nullptr);
        EXPECT_EQ(Shown(dialog, name), byDefault) << name;
        auto& field = Child<QWidget>(dialog, name);
        field.setProperty(Entry(field), other);
        PressOk(dialog);
        QString expected = defaults;
        expected.replace(QRegularExpression(key + QStringLiteral("=[^\r]*")),
                         key + QStringLiteral("=") + stored);
        EXPECT_EQ(FileText(), expected.toStdString());
        wOptions again(nullptr);
        EXPECT_EQ(Shown(again, name), other);
    }
    for (const char* wrong : {"12", "-1", "abc"}) {
        IniParamProcs::WriteIniParam("Options", "ResolLoop", wrong);
        wOptions dialog(nullptr);
        EXPECT_EQ(Shown(dialog, "cboResolLoop"), "10") << wrong;
    }
}

TEST_F(OptionsDialog, EachSwatchShowsItsColourAndChangesItWithOk) {
    for (const Settings::Color& row : Settings::Colors) {
        std::filesystem::remove(IniParamProcs::IniFilePath());
        Settings::Write(row, 0x00CC10U);
        wOptions dialog(nullptr);
        int announcements = 0;
        QObject::connect(&dialog, &wOptions::ColorsChanged, [&] { ++announcements; });
        auto& swatch = Child<QAbstractButton>(dialog, QStringLiteral("lblColors(%1)").arg(row.Index()));
        EXPECT_EQ(swatch.accessibleName().toStdString(),
                  std::string(row.label) + " : rouge 16, vert 204, bleu 0");
        const auto color = [&swatch] { return swatch.grab().toImage().pixelColor(20, 12); };
        // A cancelled chooser or the same colour is no change.
        for (const int chosen : {-1, 0x00CC10, 0}) {
            EXPECT_FALSE(dialog.chkColorChanged().isChecked());
            EXPECT_EQ(color(), QColor(0x10, 0xCC, 0));
            host.onChooseColour = [&](std::uint32_t initial, auto&) -> std::optional<std::uint32_t> {
                EXPECT_EQ(initial, 0x00CC10U);
                return chosen < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(chosen));
            };
            swatch.click();
        }
        EXPECT_EQ(color(), Qt::black);
        EXPECT_TRUE(swatch.accessibleName().endsWith(" : noir"));
        EXPECT_EQ(Stored(row.key) + std::to_string(announcements), "522400");
        PressOk(dialog);
        EXPECT_EQ(Stored(row.key) + std::to_string(announcements), "01");
        ColorTable::Colors expected = ColorTable::Defaults;
        expected[row.Index()] = 0;
        EXPECT_EQ(ColorTable::Shared(), expected);
    }
}

TEST_F(OptionsDialog, LayoutFieldsTakeTypedDigitsOnlyAndF1ShowsThePagesTopic) {
    host.HelpFile("help.chm");
    wOptions dialog(nullptr);
    std::vector<std::string> topics;
    for (const int page : {4, 1, 2, 3}) {
        Child<QTabWidget>(dialog, "tbsOnglets").setCurrentIndex(page - 1);
        QTest::keyClick(&dialog, Qt::Key_F1);
        topics.push_back("topic help.chm 2" + std::to_string(page) + "0");
    }
    EXPECT_EQ(host.helpCalls, topics);
    QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
    auto& field = Child<QLineEdit>(dialog, "txtMarginTop");
    field.setText(QString());
    QTest::keyClicks(&field, QStringLiteral("09a.,-/: "));
    QTest::keyClick(&field, Qt::Key_Backspace);
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field.text(), "092,5");
}

}  // namespace
