#include "printing/wPrinter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "PrintingSupport.h"

namespace {

TEST(PrinterDialog, OffersTheFileAndTheLastPrinterAtOnceAndThePrintersWhenTheyArrive) {
    const PrintingHost host;
    const std::string salon = "\\nsystem default destination: Salon";
    const struct {
        std::string byDefault, stored, first, user, chosen;
    } cases[] = {
        {salon, "", "Fichier PDF > Fichier PDF", "", "Salon"},
        {salon, "", "Fichier PDF > Fichier PDF", "Fichier PDF", "Fichier PDF"},
        {salon, "Bureau", "Bureau,Fichier PDF > Bureau", "", "Bureau"},
        {salon, "bureau", "bureau,Fichier PDF > bureau", "", "Salon"},
        {salon, "Bureau", "Bureau,Fichier PDF > Bureau", "Fichier PDF", "Fichier PDF"},
        {salon, "Fichier PDF", "Fichier PDF > Fichier PDF", "", "Fichier PDF"},
        {"", "", "Fichier PDF > Fichier PDF", "", "Fichier PDF"},
    };
    for (const auto& [byDefault, stored, first, user, chosen] : cases) {
        host.Set("lpstat", "printf 'Bureau\\nSalon" + byDefault + "\\n'");
        Settings::Write(Settings::Printer, stored);
        const wPrinter dialog(MixedGrid(), nullptr);
        auto& list = Child<QComboBox>(dialog, "cboPrinter");
        const auto shown = [&list] {
            QString names;
            for (int i = 0; i < list.count(); ++i) names += (i > 0 ? "," : "") + list.itemText(i);
            return (names + " > " + list.currentText()).toStdString();
        };
        EXPECT_EQ(shown(), first);
        list.setCurrentText(QString::fromStdString(user));
        if (!user.empty()) emit list.activated(list.currentIndex());
        EXPECT_TRUE(Eventually([&] { return list.count() == 3; }));
        EXPECT_EQ(shown(), "Bureau,Salon,Fichier PDF > " + chosen);
        EXPECT_EQ(dialog.Choice().toFile, chosen == "Fichier PDF");
    }
}

// Each choice is one key, and the picture shows it.
TEST(PrinterDialog, OnlyOkWritesTheChoicesAndThePictureFollowsThem) {
    PrintingHost host;
    host.HelpFile("help.chm");
    Settings::Write(Settings::Colors[0], 0xFFFFU);
    for (const char* key : {"Orientation", "Noir&Blanc"})
        IniParamProcs::WriteIniParam("Impression", key, "?");
    const struct {
        const char *choose, *leave, *stored;
        bool landscape, blackAndWhite;
    } cases[] = {{"chkBlackWhite", "cmdCommands(0)", "??", false, true},
                 {"optOrientation(1)", "cmdCommands(1)", "10", true, false},
                 {"chkBlackWhite", "cmdCommands(1)", "11", true, true},
                 {"optOrientation(0)", "cmdCommands(1)", "01", false, true}};
    for (const auto& [choose, leave, stored, landscape, blackAndWhite] : cases) {
        wPrinter dialog(MixedGrid(), nullptr);
        dialog.show();
        QTest::mouseClick(&Child<QAbstractButton>(dialog, choose), Qt::LeftButton, {}, {5, 5});
        EXPECT_EQ(Child<QRadioButton>(dialog, "optOrientation(0)").isChecked(), !landscape);
        EXPECT_EQ(Child<QCheckBox>(dialog, "chkBlackWhite").isChecked(), blackAndWhite);
        const QImage picture = dialog.grab().toImage();
        const QPoint middle(picture.width() - 16 - 420 / 2, picture.height() / 2);
        // Beside the upright paper and on the lying one; in the first cell's corner.
        EXPECT_EQ(picture.pixelColor(middle + QPoint(190, 0)) == Qt::white, landscape);
        const QPointF corner = QPointF(48, 18) - QPointF(landscape ? 297 : 210, landscape ? 210 : 297) / 2;
        EXPECT_EQ(picture.pixelColor(middle + (corner * 412 / 297).toPoint()),
                  blackAndWhite ? Qt::white : Qt::yellow);
        QTest::keyClick(&dialog, Qt::Key_F1);
        QTest::mouseClick(&Child<QPushButton>(dialog, leave), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.windowTitle(), "Imprimer la grille");
        EXPECT_EQ(dialog.Accepted(), stored[0] != '?');
        const IniParamProcs::IniSnapshot now;
        EXPECT_EQ(now.Read("Impression", "Orientation", "") + now.Read("Impression", "Noir&Blanc", ""),
                  stored);
    }
    EXPECT_EQ(Settings::Read(Settings::Printer), "Fichier PDF");
    EXPECT_EQ(host.helpCalls, std::vector<std::string>(4, "topic help.chm 230"));
}

}  // namespace
