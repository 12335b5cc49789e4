// SPDX-License-Identifier: MIT
#include "platform/qt/PrintSystem.h"

#include <QPushButton>
#include <QTest>

#include "support/PrintingHost.h"
#include "support/QtSupport.h"

namespace {

using namespace std::chrono_literals;
namespace PrintSystem = platform_qt::PrintSystem;
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
Outcome SendTo(const QString& printer, std::chrono::milliseconds bound = 20s) {
    return PrintSystem::Send(printer, "Titre", QByteArray(300000, 'x'), nullptr, bound);
}

TEST(PrintSystem, CommandsThatAreMissingOrHangOrFailPrintNothing) {
    const PrintingHost host;
    host.Set("lpstat", "echo $LC_ALL; [ $2 != libre ] && echo printer $2 disabled since; exit 1");
    EXPECT_EQ(Ask(), "C.UTF-8:");
    host.Set("lp", "cat >" + host.PathOf("job") + "; echo $@ >>" + host.PathOf("job"));
    EXPECT_EQ(SendTo("Bureau"), Outcome::Failed) << "it is stopped";
    EXPECT_EQ(SendTo("libre"), Outcome::Accepted);
    EXPECT_EQ(ScriptedHost::ReadFile(host.PathOf("job")),
              std::string(300000, 'x') + "-d libre -t Titre -o print-scaling=none -o media=A4\n");
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
    EXPECT_EQ(SendTo("libre", 400ms), Outcome::Failed) << "nobody is held up";
    qputenv("PATH", "/nowhere");
    EXPECT_EQ(Ask(), ":");
    EXPECT_EQ(SendTo("libre"), Outcome::Failed);
}

}  // namespace
