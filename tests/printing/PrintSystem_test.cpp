#include "printing/PrintSystem.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <csignal>
#include <optional>

#include "PrintingSupport.h"
#include "support/QtSupport.h"

namespace {

using namespace std::chrono_literals;
using PrintSystem::Outcome;

std::optional<PrintSystem::Printers> Ask(std::chrono::milliseconds bound = 20s) {
    std::optional<PrintSystem::Printers> answer;
    PrintSystem::PrinterQuery query(bound);
    QObject::connect(&query, &PrintSystem::PrinterQuery::Answered,
                     [&](const PrintSystem::Printers& printers) { answer = printers; });
    EXPECT_FALSE(answer);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 10000));
    return answer;
}

// A real print server with three printers, reached through a socket in the test's own folder.
class PrintServer : public testing::Test {
  protected:
    void SetUp() override {
        const QString program =
            QStandardPaths::findExecutable("cupsd", {"/usr/sbin", "/usr/local/sbin", "/usr/bin"});
        if (program.isEmpty()) GTEST_SKIP() << "cupsd is not installed";
        const std::string root = host.folder.string();
        for (const char* folder : {"cache", "spool", "tmp", "state"}) {
            std::filesystem::create_directory(host.folder / folder);
        }
        ScriptedHost::WriteFile(host.PathOf("files.conf"),
                                "ServerRoot " + root + "\nCacheDir " + root + "/cache\nRequestRoot " + root +
                                    "/spool\nTempDir " + root + "/tmp\nStateDir " + root +
                                    "/state\nAccessLog /dev/null\nErrorLog /dev/null\nPageLog /dev/null\n");
        ScriptedHost::WriteFile(host.PathOf("cupsd.conf"),
                                "Listen " + root + "/socket\nBrowsing No\nPreserveJobFiles Yes\n");
        ScriptedHost::WriteFile(host.PathOf("printers.conf"), Printer("Default", "Bureau", "Idle", "Yes") +
                                                                  Printer("", "Rejette", "Idle", "No") +
                                                                  Printer("", "Arretee", "Stopped", "Yes"));
        qputenv("CUPS_SERVER", QByteArray::fromStdString(root + "/socket"));
        server.start(program, {"-f", "-c", QString::fromStdString(host.PathOf("cupsd.conf")), "-s",
                               QString::fromStdString(host.PathOf("files.conf"))});
        if (!QTest::qWaitFor([&] { return std::filesystem::exists(host.PathOf("socket")); }, 10000)) {
            GTEST_SKIP() << "cupsd does not start here: " << server.readAllStandardError().toStdString();
        }
    }
    void TearDown() override {
        server.kill();
        server.waitForFinished();
        qunsetenv("CUPS_SERVER");
    }
    static std::string Printer(const std::string& kind, const std::string& name, const std::string& state,
                               const std::string& accepting) {
        return "<" + kind + "Printer " + name + ">\nDeviceURI file:/dev/null\nState " + state +
               "\nAccepting " + accepting + "\n</" + kind + "Printer>\n";
    }
    // What the server has received, job by job.
    std::vector<std::string> Jobs() const {
        std::vector<std::string> jobs;
        for (const auto& entry : std::filesystem::directory_iterator(host.folder / "spool")) {
            if (entry.path().filename().string().front() == 'd') {
                jobs.push_back(ScriptedHost::ReadFile(entry.path().string()));
            }
        }
        return jobs;
    }

    ScriptedHost host;
    QProcess server;
};

TEST_F(PrintServer, NamesItsPrintersAndItsDefault) {
    const auto printers = Ask();
    ASSERT_TRUE(printers);
    EXPECT_EQ(printers->names, (QStringList{"Arretee", "Bureau", "Rejette"}));
    EXPECT_EQ(printers->byDefault, "Bureau");
}

TEST_F(PrintServer, ReceivesTheWholeDocument) {
    const QByteArray document = "%PDF-1.4\n" + QByteArray(300000, 'x');
    EXPECT_EQ(PrintSystem::Send("Bureau", "Été -t", document, nullptr), Outcome::Accepted);
    EXPECT_EQ(Jobs(), std::vector{document.toStdString()});
}

TEST_F(PrintServer, APrinterThatDoesNotPrintGetsNothing) {
    for (const char* printer : {"Rejette", "Arretee", "Inconnue"}) {
        EXPECT_EQ(PrintSystem::Send(printer, "Titre", "%PDF-1.4\n", nullptr), Outcome::Failed) << printer;
    }
    EXPECT_TRUE(Jobs().empty());
}

TEST_F(PrintServer, AcceptsAndStaysSilentWithoutHoldingAnybodyUp) {
    kill(static_cast<pid_t>(server.processId()), SIGSTOP);
    const auto printers = Ask(100ms);
    ASSERT_TRUE(printers);
    EXPECT_TRUE(printers->names.isEmpty());
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(PrintSystem::Send("Bureau", "Titre", "%PDF-1.4\n", nullptr, 400ms), Outcome::Failed);
    EXPECT_LT(clock.elapsed(), 4000);
}

class Commands : public testing::Test {
  protected:
    ScriptedHost host;
    PrintCommands commands{host};
};

TEST_F(Commands, ThatAreMissingMeanNoPrinterAndAFailure) {
    commands.HideTheSystems();
    const auto printers = Ask();
    ASSERT_TRUE(printers);
    EXPECT_TRUE(printers->names.isEmpty());
    EXPECT_EQ(PrintSystem::Send("Bureau", "Titre", "x", nullptr), Outcome::Failed);
}

TEST_F(Commands, ThatLastCanBeLeft) {
    commands.Set("lpstat", "exit 0");
    commands.Set("lp", PrintCommands::Hangs);
    InNextDialog([](QWidget& window) { window.findChild<QPushButton*>()->click(); });
    EXPECT_EQ(PrintSystem::Send("Bureau", "Titre", "x", nullptr), Outcome::Cancelled);
}

}  // namespace
