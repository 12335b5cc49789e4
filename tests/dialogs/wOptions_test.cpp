#include "settings/dialogs/wOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTabWidget>

#include "DialogSupport.h"
#include "settings/ColorTable.h"
#include "settings/dialogs/WrappedCheckBox.h"

namespace {

class OptionsDialog : public testing::Test {
  protected:
    static std::string FileText() { return ScriptedHost::ReadFile(IniParamProcs::IniFilePath()); }
    static void ShowPage(wOptions& dialog, int page) {
        dialog.show();
        Child<QTabWidget>(dialog, "tbsOnglets").setCurrentIndex(page - 1);
    }
    // What the user enters and sees in a field: true, a text, the text of a list.
    static const char* Entry(const QWidget& field) { return field.metaObject()->userProperty().name(); }
    static std::string Shown(wOptions& dialog, int page, const char* name) {
        ShowPage(dialog, page);
        const auto& field = Child<QWidget>(dialog, name);
        EXPECT_TRUE(field.isVisible()) << name;
        return field.property(Entry(field)).toString().toStdString();
    }

    ScriptedHost host;
};

TEST_F(OptionsDialog, EachFieldBelongsToItsKeyAndOnlyOkWrites) {
    wOptions first(nullptr);
    first.chkColorChanged().setChecked(true);
    for (const int way : {0, 1, 2}) Leave(first, way);
    EXPECT_EQ(FileText(), "");
    first.cmdCommands_Click(1);
    Settings::ForEach([](const auto& row) {
        const bool here = row.section == "Options" && row.key != "NoAutoMasks" && row.key != "GridHelpNone";
        EXPECT_EQ(Settings::IsMissing(row), !here) << row.key;
    });
    const QString defaults = QString::fromStdString(FileText());
    const struct {
        int page;
        const char *field, *key, *first, *other, *stored;
    } fields[] = {
        {1, "chkNoSplash", "NoSplash", "false", "true", "1"},
        {1, "chkLinesWidth", "LinesWidth", "false", "true", "1"},
        {1, "chkConfigOnNew", "ConfigOnNew", "true", "false", "0"},
        {3, "txtMarginLeft", "MarginLeft", "45", "x", "x"},
        {3, "txtMarginTop", "MarginTop", "15", "12.25", "12.25"},
        {3, "txtGridSize", "GridSize", "120", "99,5 mm", "99,5 mm"},
        {4, "chkLevelAsk", "LevelAsk", "false", "true", "1"},
        {4, "cboResolLoop", "ResolLoop", "10", "90", "8"},
    };
    for (const auto& [page, name, key, byDefault, other, stored] : fields) {
        std::filesystem::remove(IniParamProcs::IniFilePath());
        wOptions dialog(nullptr);
        EXPECT_EQ(Shown(dialog, page, name), byDefault) << name;
        auto& field = Child<QWidget>(dialog, name);
        field.setProperty(Entry(field), other);
        dialog.chkColorChanged().setChecked(true);
        Press(dialog, 1);
        QString expected = defaults;
        expected.replace(QRegularExpression(key + QStringLiteral("=[^\r]*")),
                         key + QStringLiteral("=") + stored);
        EXPECT_EQ(FileText(), expected.toStdString());
        wOptions again(nullptr);
        EXPECT_EQ(Shown(again, page, name), other);
    }
    std::filesystem::remove(IniParamProcs::IniFilePath());
    wOptions(nullptr).cmdCommands_Click(1);
    EXPECT_EQ(Stored("Color_0") + Stored("GridSize"), "missing120")
        << "colours that nobody changed are written";
    for (const char* wrong : {"12", "-1", "abc", "9"}) {
        IniParamProcs::WriteIniParam("Options", "ResolLoop", wrong);
        wOptions dialog(nullptr);
        EXPECT_EQ(Shown(dialog, 4, "cboResolLoop"), "10") << wrong;
        Press(dialog, 1);
        EXPECT_EQ(Stored("ResolLoop"), "0") << wrong;
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
        auto* swatch = grid.itemAtPosition(static_cast<int>(line), 0)->widget();
        const auto& label =
            dynamic_cast<const QLabel&>(*grid.itemAtPosition(static_cast<int>(line), 1)->widget());
        EXPECT_EQ(label.text().toStdString(), row.label);
        EXPECT_EQ(swatch->accessibleName(), label.text());
        // A cancelled chooser or the same colour is no change.
        for (const int chosen : {-1, 0x00CC10, 0}) {
            EXPECT_FALSE(dialog.chkColorChanged().isChecked());
            EXPECT_EQ(swatch->grab().toImage().pixelColor(20, 12), QColor(0x10, 0xCC, 0));
            host.onChooseColour = [&](std::uint32_t initial, auto&) -> std::optional<std::uint32_t> {
                EXPECT_EQ(initial, 0x00CC10U);
                return chosen < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(chosen));
            };
            QTest::mouseClick(swatch, Qt::LeftButton);
        }
        EXPECT_EQ(swatch->grab().toImage().pixelColor(20, 12), Qt::black);
        for (const QPoint& corner : {QPoint(0, 0), QPoint(55, 23)})
            EXPECT_NE(swatch->grab().toImage().pixelColor(corner), Qt::black) << "it has no frame";
        EXPECT_EQ(Stored(row.key) + std::to_string(announcements), "522400");
        Press(dialog, 1);
        EXPECT_EQ(Stored(row.key) + std::to_string(announcements), "01");
        ColorTable::Colors expected = ColorTable::Defaults;
        expected[row.Index()] = 0;
        EXPECT_EQ(ColorTable::Shared(), expected);
    }
}

TEST_F(OptionsDialog, ALongCaptionIsWrappedAndNeverCut) {
    WrappedCheckBox box("Un deux trois quatre cinq six sept huit neuf dix onze douze treize", nullptr);
    int whole = 0;  // dots of ink, in a single line
    for (int width = 900; width > 150; width -= 15) {
        box.resize(width, box.heightForWidth(width));
        const QImage image = box.grab().toImage();
        int dots = 0, bottom = 0;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QPoint dot(i % image.width(), i / image.width());
            if (image.pixelColor(dot).lightness() >= 100 || dot.x() <= 20) continue;
            ++dots;
            bottom = dot.y();
        }
        if (width == 900) whole = dots;
        EXPECT_NEAR(dots, whole, whole / 20) << width;
        EXPECT_NEAR(bottom + box.fontMetrics().descent(), image.height() - 3, 2) << width;
    }
}

TEST_F(OptionsDialog, LayoutFieldsTakeTypedDigitsOnlyAndNoBackspace) {
    wOptions dialog(nullptr);
    ShowPage(dialog, 3);
    QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
    for (const char* name : {"txtMarginLeft", "txtMarginTop", "txtGridSize"}) {
        auto& field = Child<QLineEdit>(dialog, name);
        field.setFocus();
        field.setText(QString());
        QTest::keyClicks(&field, QStringLiteral("09a.,-/: "));
        QTest::keyClick(&field, Qt::Key_Backspace);
        QTest::keyClick(&field, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier);
        EXPECT_EQ(field.text(), "09") << name;
        QTest::keyClick(&field, Qt::Key_Left);
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(field.text(), "02,5") << name;
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_NE(dialog.focusWidget(), &field);
    }
    QTest::keyClick(&Child<QLineEdit>(dialog, "txtGridSize"), Qt::Key_Return);
    EXPECT_EQ(Stored("GridSize"), "02,5");
}

TEST_F(OptionsDialog, EveryTabShowsItsPageAndF1ItsTopic) {
    host.HelpFile("help.chm");
    wOptions dialog(nullptr);
    dialog.show();
    auto& tabs = Child<QTabWidget>(dialog, "tbsOnglets");
    std::string seen;
    for (int i = 0; i < tabs.count(); tabs.setCurrentIndex(++i)) {
        seen += tabs.tabText(i).toStdString();
        ExpectLaidOut(dialog);
        QTest::keyClick(&dialog, Qt::Key_F1);
        for (int page = 0; page <= 4; ++page)
            if (Child<QFrame>(dialog, QStringLiteral("frmPages(%1)").arg(page)).isVisible())
                seen += std::to_string(page);
    }
    EXPECT_EQ(dialog.windowTitle(), "Préférences");
    EXPECT_EQ(seen, "Divers1Couleurs2Impression3Niveau4");
    QTest::keyClick(&dialog, Qt::Key_F2);
    const std::string help = "topic help.chm ";
    EXPECT_EQ(host.helpCalls,
              std::vector<std::string>({help + "210", help + "220", help + "230", help + "240"}));
}

}  // namespace
