#include "printing/Printing.h"

#include <QComboBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

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
        if (host.boxes.empty()) return true;
        EXPECT_EQ(host.boxes.front().text, "Impossible d'initialiser l'imprimante.");
        EXPECT_EQ(host.boxes.front().style, 48);
        return false;
    }
    bool ToFile(const std::string& path) {
        host.ExpectFile(path);
        return On("Fichier PDF");
    }
    static QString TextOf(const std::string& pdf) {
        return OutputOf("pdftotext", {QString::fromStdString(pdf), "-"});
    }

    PrintingHost host;
    std::string target = host.PathOf("out/page.pdf");
    bool made = std::filesystem::create_directory(host.folder / "out");
};

TEST_F(Print, AFileIsAskedForAndHoldsThePage) {
    Settings::Write(Settings::LastSaved, "/grilles");
    EXPECT_TRUE(On({}));
    EXPECT_TRUE(ToFile(""));
    EXPECT_TRUE(std::filesystem::is_empty(host.folder / "out"));
    EXPECT_TRUE(ToFile(target));
    const platform::FileQuestion& question = host.questions.at(1);
    EXPECT_TRUE(question.save);
    EXPECT_EQ(question.filter + question.folder + question.proposedName, "Fichiers PDF|*.pdf/grillesÉté");
    EXPECT_TRUE(TextOf(target).contains("Été"));
    const QString facts = OutputOf("pdfinfo", {QString::fromStdString(target)});
    EXPECT_TRUE(facts.contains(QRegularExpression("Title: *Été\nCreator: *Ninarix\n")))
        << facts.toStdString();
}

TEST_F(Print, AFailureIsReportedAndTheOldFileStands) {
    ScriptedHost::WriteFile(target, "old");
    for (const char* place : {"missing/page.pdf", "out", "out/"}) EXPECT_FALSE(ToFile(host.PathOf(place)));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{2000, before.rlim_max};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_FALSE(ToFile(target)) << "the disk is full";
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(ScriptedHost::ReadFile(target), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(host.folder / "out"), {}), 1);
}

TEST_F(Print, APrinterGetsThePageUnderTheGridsNameAndMayRejectIt) {
    for (const bool accepted : {true, false}) {
        host.Set("lp",
                 "echo \"$@\" >" + host.PathOf("call") + "; cat >" + target + (accepted ? "" : "; exit 1"));
        EXPECT_EQ(On("Bureau"), accepted);
        EXPECT_TRUE(ScriptedHost::ReadFile(host.PathOf("call")).starts_with("-d Bureau -t Été "));
        EXPECT_TRUE(TextOf(target).contains("Été"));
    }
}

}  // namespace
