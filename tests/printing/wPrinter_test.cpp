#include "printing/wPrinter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <string>

#include "PrintingSupport.h"
#include "support/QtSupport.h"

namespace {

using IniParamProcs::ReadIniParam;
using IniParamProcs::WriteIniParam;

class PrinterDialog : public testing::Test {
  protected:
    PrinterDialog() {
        commands.Set("lpstat", "printf 'Bureau\\nSalon\\nsystem default destination: Salon\\n'");
    }

    static std::string List(const wPrinter& dialog) {
        const auto& list = Child<QComboBox>(dialog, "cboPrinter");
        QStringList names;
        for (int i = 0; i < list.count(); ++i) names.append(list.itemText(i));
        return names.join(QLatin1Char(',')).toStdString() + " > " + list.currentText().toStdString();
    }
    // What the list says after the system has answered.
    static std::string Answered(const wPrinter& dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Child<QComboBox>(dialog, "cboPrinter").count() > 2; }));
        return List(dialog);
    }
    static std::string Settings() {
        return ReadIniParam("Impression", "Printer", "none") + " " +
               ReadIniParam("Impression", "Orientation", "none") + " " +
               ReadIniParam("Impression", "Noir&Blanc", "none");
    }

    ScriptedHost host;
    PrintCommands commands{host};
};

TEST_F(PrinterDialog, OffersTheFileAtOnceAndThePrintersWhenTheyArrive) {
    const wPrinter dialog(MixedGrid(), nullptr);
    EXPECT_EQ(List(dialog), "Fichier PDF > Fichier PDF");
    EXPECT_EQ(Answered(dialog), "Bureau,Salon,Fichier PDF > Salon");
}

TEST_F(PrinterDialog, KeepsThePrinterOfTheLastTimeWhileItExists) {
    WriteIniParam("Impression", "Printer", "Bureau");
    const wPrinter dialog(MixedGrid(), nullptr);
    EXPECT_EQ(List(dialog), "Bureau,Fichier PDF > Bureau");
    EXPECT_EQ(Answered(dialog), "Bureau,Salon,Fichier PDF > Bureau");
    WriteIniParam("Impression", "Printer", "Cave");
    EXPECT_EQ(Answered(wPrinter(MixedGrid(), nullptr)), "Bureau,Salon,Fichier PDF > Salon");
}

TEST_F(PrinterDialog, AnAnswerDoesNotUndoTheUsersChoice) {
    const wPrinter dialog(MixedGrid(), nullptr);
    emit Child<QComboBox>(dialog, "cboPrinter").activated(0);
    EXPECT_EQ(Answered(dialog), "Bureau,Salon,Fichier PDF > Fichier PDF");
}

TEST_F(PrinterDialog, OnlyOkWritesTheChoices) {
    for (const bool ok : {false, true}) {
        wPrinter dialog(MixedGrid(), nullptr);
        dialog.show();
        Answered(dialog);
        Child<QRadioButton>(dialog, "optOrientation(1)").click();
        Child<QCheckBox>(dialog, "chkBlackWhite").click();
        Child<QPushButton>(dialog, ok ? "cmdCommands(1)" : "cmdCommands(0)").click();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.Accepted(), ok);
        EXPECT_EQ(Settings(), ok ? "Salon 1 1" : "none none none");
    }
    const wPrinter again(MixedGrid(), nullptr);
    EXPECT_TRUE(Child<QRadioButton>(again, "optOrientation(1)").isChecked());
    EXPECT_TRUE(Child<QCheckBox>(again, "chkBlackWhite").isChecked());
}

TEST_F(PrinterDialog, GarbledFlagsReadAsTheUsualPage) {
    WriteIniParam("Impression", "Orientation", "oui");
    WriteIniParam("Impression", "Noir&Blanc", "???");
    const PrintChoice choice = wPrinter(MixedGrid(), nullptr).Choice();
    EXPECT_FALSE(choice.landscape);
    EXPECT_FALSE(choice.blackAndWhite);
}

TEST_F(PrinterDialog, ThePictureFollowsTheChoices) {
    wPrinter dialog(MixedGrid(), nullptr);
    const QImage portrait = dialog.grab().toImage();
    Child<QRadioButton>(dialog, "optOrientation(1)").click();
    const QImage landscape = dialog.grab().toImage();
    // A point beside the upright paper and on the lying one.
    const QPoint beside(portrait.width() - 16 - 420 / 2 + 190, portrait.height() / 2);
    EXPECT_NE(portrait.pixelColor(beside), QColor(Qt::white));
    EXPECT_EQ(landscape.pixelColor(beside), QColor(Qt::white));
}

}  // namespace
