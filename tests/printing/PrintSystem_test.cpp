#include "printing/PrintSystem.h"

#include <QPushButton>
#include <QStandardPaths>
#include <QTest>

#include "PrintingSupport.h"

namespace {

using namespace std::chrono_literals;
using PrintSystem::Outcome;

// The names, then the default.
QString Ask(std::chrono::milliseconds bound = 20s) {
    QString answer;
    PrintSystem::PrinterQuery query(bound);
    QObject::connect(&query, &PrintSystem::PrinterQuery::Answered, [&](const auto& printers) {
        answer += printers.names.join(' ') + ":" + printers.byDefault;
    });
    EXPECT_TRUE(Eventually([&] { return !answer.isEmpty(); }));
    return answer;
}
Outcome SendTo(const QString& printer, const QByteArray& pdf = "x", std::chrono::milliseconds bound = 20s) {
    return PrintSystem::Send(printer, "Titre", pdf, nullptr, bound);
}

// Faults: sentences of the real print system that are not understood, a document that is cut.
TEST(PrintSystem, PrintsOnARealServer) {
    const ScriptedHost host;
    const QString program =
        QStandardPaths::findExecutable("cupsd", {"/usr/sbin", "/usr/local/sbin", "/usr/bin"});
    if (program.isEmpty()) GTEST_SKIP() << "cupsd is not installed";
    const QString root = QString::fromStdString(host.folder.string());
    const auto write = [&](const char* name, QString text) {
        ScriptedHost::WriteFile(host.PathOf(name), text.replace('@', root + "/").toStdString());
    };
    std::filesystem::create_directory(host.PathOf("spool"));
    write("cupsd.conf", "Listen @socket\nBrowsing No\nPreserveJobFiles Yes\n");
    write("files.conf",
          "ServerRoot @\nCacheDir @\nRequestRoot @spool\nTempDir @\nStateDir @\nAccessLog /dev/null\n"
          "ErrorLog /dev/null\nPageLog /dev/null\n");
    write("printers.conf",
          "<DefaultPrinter Bureau>\nDeviceURI file:/dev/null\nAccepting Yes\n</DefaultPrinter>\n"
          "<Printer Arretee>\nDeviceURI file:/dev/null\nState Stopped\nAccepting Yes\n</Printer>\n");
    qputenv("CUPS_SERVER", (root + "/socket").toUtf8());
    QProcess server;
    server.start(program, {"-f", "-c", root + "/cupsd.conf", "-s", root + "/files.conf"});
    ASSERT_TRUE(Eventually([&] { return std::filesystem::exists(host.PathOf("socket")); }));

    EXPECT_EQ(Ask(), "Arretee Bureau:Bureau");
    EXPECT_EQ(SendTo("Arretee"), Outcome::Failed);
    const QByteArray document = "%PDF-1.4\n" + QByteArray(300000, 'x');
    EXPECT_EQ(SendTo("Bureau", document), Outcome::Accepted);
    std::string jobs;
    for (const auto& entry : std::filesystem::directory_iterator(host.PathOf("spool")))
        if (entry.path().filename().string()[0] == 'd') jobs += ScriptedHost::ReadFile(entry.path());
    EXPECT_EQ(jobs, document.toStdString());
    server.kill();
    server.waitForFinished();
    qunsetenv("CUPS_SERVER");
}

TEST(PrintSystem, CommandsThatAreMissingOrHangOrFailPrintNothing) {
    const PrintingHost host;
    host.Set("lpstat", "echo $LC_ALL; [ $2 != libre ] && echo printer $2 disabled since; exit 1");
    EXPECT_EQ(Ask(), "C.UTF-8:");
    host.Set("lp", "cat >" + host.PathOf("job") + "; echo $@ >>" + host.PathOf("job"));
    EXPECT_EQ(SendTo("Bureau"), Outcome::Failed) << "it is stopped";
    EXPECT_EQ(SendTo("libre"), Outcome::Accepted);
    EXPECT_EQ(ScriptedHost::ReadFile(host.PathOf("job")),
              "x-d libre -t Titre -o print-scaling=none -o media=A4\n");
    host.Set("lp", "kill -9 $$");
    EXPECT_EQ(SendTo("libre"), Outcome::Failed);
    host.Set("lp", "sleep 1");
    InNextDialog([](QWidget&) {});
    EXPECT_EQ(SendTo("libre"), Outcome::Accepted) << "slow is not failed";
    for (const char* hangs : {"lp", "lpstat"}) {
        host.Set(hangs, "exec sleep 60");
        InNextDialog([](QWidget& window) { window.findChild<QPushButton*>()->click(); });
        EXPECT_EQ(SendTo("libre"), Outcome::Cancelled) << hangs;
    }
    EXPECT_EQ(Ask(100ms), ":");
    EXPECT_EQ(SendTo("libre", "x", 400ms), Outcome::Failed) << "nobody is held up";
    qputenv("PATH", "/nowhere");
    EXPECT_EQ(Ask(), ":");
    EXPECT_EQ(SendTo("libre"), Outcome::Failed);
}

}  // namespace
