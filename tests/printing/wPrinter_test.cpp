// SPDX-License-Identifier: MIT
#include "printing/wPrinter.h"

#include <QComboBox>
#include <QPushButton>

#include "PrintingSupport.h"

namespace {

TEST(PrinterDialog, OffersTheFileAndTheLastPrinterAtOnceAndThePrintersWhenTheyArrive) {
    const PrintingHost host;
    host.Set("lpstat", "printf 'Bureau\\nSalon\\nsystem default destination: Salon\\n'");
    const std::array<QString, 3> cases[] = {
        // What is stored, what the user chooses before the printers arrive, what is chosen then.
        {"", "", "Salon"},
        {"", "Fichier PDF", "Fichier PDF"},
        {"Bureau", "", "Bureau"},
        {"disparue", "", "Salon"},
        {"Bureau", "Fichier PDF", "Fichier PDF"},
        {"Fichier PDF", "", "Fichier PDF"},
    };
    for (const auto& [stored, user, chosen] : cases) {
        Settings::Write(Settings::Printer, stored.toStdString());
        const wPrinter dialog(MixedGrid(), nullptr);
        auto& list = Child<QComboBox>(dialog, "cboPrinter");
        EXPECT_EQ(list.currentText(), stored.isEmpty() ? "Fichier PDF" : stored);
        list.setCurrentText(user);
        if (!user.isEmpty()) emit list.activated(list.currentIndex());
        EXPECT_TRUE(Eventually([&] { return list.count() == 3; }));
        EXPECT_EQ(dialog.Choice().printer, chosen);
        EXPECT_EQ(dialog.Choice().toFile, chosen == "Fichier PDF");
    }
}

// Each choice is one key, and the picture shows it.
TEST(PrinterDialog, OnlyOkWritesTheChoicesAndThePictureFollowsThem) {
    const PrintingHost host;
    const char* cases[][3] = {{"chkBlackWhite", "cmdCommands(0)", "??"},
                              {"optOrientation(1)", "cmdCommands(1)", "10"},
                              {"chkBlackWhite", "cmdCommands(1)", "11"},
                              {"optOrientation(0)", "cmdCommands(1)", "01"}};
    for (const auto& [choose, leave, stored] : cases) {
        wPrinter dialog(MixedGrid(), nullptr);
        dialog.show();
        const auto page = [&dialog] { return dialog.grab({dialog.width() - 436, 16, 420, 420}).toImage(); };
        const QImage before = page();
        Child<QAbstractButton>(dialog, choose).click();
        EXPECT_NE(page(), before);
        Child<QPushButton>(dialog, leave).click();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.Accepted(), stored[0] != '?');
        const IniParamProcs::IniSnapshot now;
        EXPECT_EQ(now.Read("Impression", "Orientation", "?") + now.Read("Impression", "Noir&Blanc", "?"),
                  stored);
    }
    EXPECT_EQ(Settings::Read(Settings::Printer), "Fichier PDF");
}

}  // namespace
