#include "printing/Printing.h"

#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

#include "PrintingSupport.h"
#include "support/QtSupport.h"

namespace {

class Print : public testing::Test {
  protected:
    Print() { commands.Set("lpstat", "[ \"$1\" = -e ] && echo Bureau"); }

    // Answers the dialog with this printer, or cancels it without one.
    static void On(const QString& printer) {
        InNextDialog([printer](QWidget& dialog) {
            auto& list = Child<QComboBox>(dialog, "cboPrinter");
            EXPECT_TRUE(QTest::qWaitFor([&] { return list.count() == 2; }));
            list.setCurrentText(printer);
            const char* button = printer.isEmpty() ? "cmdCommands(0)" : "cmdCommands(1)";
            Child<QPushButton>(dialog, button).click();
        });
        Printing::PrintGrid(MixedGrid());
    }
    void ToFile(const std::string& path) {
        host.ExpectFile(path);
        On("Fichier PDF");
    }
    void ExpectFailure() {
        ASSERT_EQ(host.boxes.size(), 1U);
        EXPECT_EQ(host.boxes.front().text, "Impossible d'initialiser l'imprimante.");
        EXPECT_EQ(host.boxes.front().style, 48);
    }
    // A failed write leaves no file beside the target either.
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(host.folder / "out")) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    ScriptedHost host;
    PrintCommands commands{host};
    bool made = std::filesystem::create_directory(host.folder / "out");
    std::string target = host.PathOf("out/page.pdf");
};

TEST_F(Print, AFileIsAskedForAndHoldsThePage) {
    IniParamProcs::WriteIniParam("Files", "LastSaved", "/grilles");
    ToFile(target);
    ASSERT_EQ(host.questions.size(), 1U);
    EXPECT_TRUE(host.questions.front().save);
    EXPECT_EQ(host.questions.front().filter, "Fichiers PDF|*.pdf");
    EXPECT_EQ(host.questions.front().folder, "/grilles");
    EXPECT_EQ(host.questions.front().proposedName, "Été");
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_TRUE(OutputOf("pdftotext", {QString::fromStdString(target), "-"}).contains("Été"));
}

TEST_F(Print, LeavingEitherQuestionWritesNothing) {
    On({});
    ToFile("");
    EXPECT_TRUE(Files().empty());
}

TEST_F(Print, AFileThatCannotBeMadeIsReported) {
    for (const char* place : {"missing/page.pdf", "out", "out/"}) {
        host.boxes.clear();
        host.Expect(platform::MessageButton::Ok);
        ToFile(host.PathOf(place));
        ExpectFailure();
    }
    EXPECT_TRUE(Files().empty());
}

TEST_F(Print, AFullDiskIsReportedAndTheOldFileStands) {
    ScriptedHost::WriteFile(target, "old");
    host.Expect(platform::MessageButton::Ok);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{2000, before.rlim_max};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    ToFile(target);
    setrlimit(RLIMIT_FSIZE, &before);
    ExpectFailure();
    EXPECT_EQ(ScriptedHost::ReadFile(target), "old");
    EXPECT_EQ(Files().size(), 1U);
}

TEST_F(Print, APrinterGetsThePageUnderTheGridsNameAndMayRejectIt) {
    commands.Set("lp", "echo \"$@\" >" + host.PathOf("call") + "; cat >" + target + "; exit 1");
    host.Expect(platform::MessageButton::Ok);
    On("Bureau");
    EXPECT_TRUE(ScriptedHost::ReadFile(host.PathOf("call")).starts_with("-d Bureau -t Été "));
    EXPECT_TRUE(OutputOf("pdftotext", {QString::fromStdString(target), "-"}).contains("Été"));
    ExpectFailure();
}

}  // namespace
