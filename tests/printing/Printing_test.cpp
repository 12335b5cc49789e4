// SPDX-License-Identifier: MIT
#include "printing/Printing.h"

#include <QComboBox>
#include <QPushButton>

#include "PrintingSupport.h"

namespace {

class Print : public testing::Test {
  protected:
    Print() { host.Set("lpstat", "[ \"$1\" = -e ] && echo Bureau"); }

    // Answers the dialog with this printer, or cancels it without one. True: no failure was reported.
    bool On(const QString& printer) {
        InNextDialog([printer](QWidget& dialog) {
            auto& list = Child<QComboBox>(dialog, "cboPrinter");
            EXPECT_TRUE(Eventually([&] { return list.count() == 2; }));
            list.setCurrentText(printer);
            Child<QPushButton>(dialog, printer.isEmpty() ? "cmdCommands(0)" : "cmdCommands(1)").click();
        });
        host.boxes.clear();
        host.AnswerAlways(platform::MessageButton::Ok);
        Printing::PrintGrid(MixedGrid());
        return host.boxes.empty();
    }
    bool ToFile(const std::string& path) {
        host.ExpectFile(path);
        return On("Fichier PDF");
    }
    void ExpectPage() const {
        EXPECT_TRUE(OutputOf("pdftotext", {QString::fromStdString(target), "-"}).contains("Été"));
    }

    PrintingHost host;
    std::string target = host.PathOf("page.pdf");
};

TEST_F(Print, AFileIsAskedForAndHoldsThePageOrAFailureIsReported) {
    Settings::Write(Settings::LastSaved, "/grilles");
    EXPECT_TRUE(On({}));
    EXPECT_TRUE(ToFile(""));
    EXPECT_FALSE(ToFile(host.PathOf("missing/page.pdf")));
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_TRUE(ToFile(target));
    const platform::FileQuestion& question = host.questions.at(1);
    EXPECT_TRUE(question.save);
    EXPECT_EQ(question.filter + question.folder + question.proposedName, "Fichiers PDF|*.pdf/grillesÉté");
    ExpectPage();
}

TEST_F(Print, APrinterGetsThePageUnderTheGridsNameAndMayRejectIt) {
    for (const bool accepted : {true, false}) {
        const std::string end = accepted ? "" : "; exit 1";
        host.Set("lp", "echo \"$@\" >" + host.PathOf("call") + "; cat >" + target + end);
        EXPECT_EQ(On("Bureau"), accepted);
        EXPECT_TRUE(ScriptedHost::ReadFile(host.PathOf("call")).starts_with("-d Bureau -t Été "));
        ExpectPage();
    }
}

}  // namespace
