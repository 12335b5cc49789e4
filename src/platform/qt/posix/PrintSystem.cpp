// SPDX-License-Identifier: MIT
#include "platform/qt/PrintSystem.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcessEnvironment>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <unistd.h>

namespace platform_qt::PrintSystem {

namespace {

using namespace std::chrono_literals;

struct ToolAnswer {
    Outcome outcome = Outcome::Failed;
    QString text;
};

// A session of its own takes the terminal away: a command that wants a password fails instead of asking where
// nobody looks. The locale makes its sentences known and leaves names in UTF-8.
void PrepareTool(QProcess& process, const QString& program, const QStringList& arguments) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process.setProcessEnvironment(environment);
    process.setChildProcessModifier([] { setsid(); });
    process.setProgram(program);
    process.setArguments(arguments);
}

// Waits for the end with a window that can be left. False: the user left.
bool WaitInWindow(QProcess& process, std::chrono::milliseconds bound, QWidget* owner) {
    QProgressDialog window(QStringLiteral("Envoi à l'imprimante..."), QStringLiteral("Annuler"), 0, 0, owner);
    window.setObjectName(QStringLiteral("wSending"));
    window.setWindowTitle(QStringLiteral("Imprimer la grille"));
    window.setWindowModality(Qt::ApplicationModal);
    window.show();
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    // A command that does not read all of its input ends well all the same; its end comes after that error.
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&process, &loop] {
        if (process.state() == QProcess::NotRunning) loop.quit();
    });
    QObject::connect(&window, &QProgressDialog::canceled, &loop, &QEventLoop::quit);
    QTimer::singleShot(bound, &loop, &QEventLoop::quit);
    if (process.state() != QProcess::NotRunning) loop.exec();
    return !window.wasCanceled();
}

void EndTool(QProcess& process) {
    if (process.state() == QProcess::NotRunning) return;
    process.kill();
    process.waitForFinished(1000);
}

ToolAnswer RunTool(const QString& program, const QStringList& arguments, const QByteArray& input,
                   std::chrono::milliseconds bound, QWidget* owner) {
    // Shorter than anybody notices, longer than a healthy print system takes.
    constexpr std::chrono::milliseconds unnoticed = 300ms;
    QProcess process;
    PrepareTool(process, program, arguments);
    process.start();
    process.write(input);
    process.closeWriteChannel();
    const auto first = std::min(unnoticed, bound);
    ToolAnswer answer;
    if (!process.waitForFinished(static_cast<int>(first.count())) &&
        process.state() != QProcess::NotRunning) {
        if (!WaitInWindow(process, bound - first, owner)) answer.outcome = Outcome::Cancelled;
    }
    if (process.state() != QProcess::NotRunning || process.error() == QProcess::FailedToStart) {
        EndTool(process);
        return answer;
    }
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) {
        answer.outcome = Outcome::Accepted;
    }
    answer.text = QString::fromUtf8(process.readAllStandardOutput());
    return answer;
}

// A stopped printer would keep the job for some later day. Only a plain "no" counts: a printer that the
// network announces has no state yet. One that rejects jobs says so itself.
bool IsStopped(const QString& state, const QString& printer) {
    const QStringList lines = state.split(QLatin1Char('\n'));
    const QString stopped = QStringLiteral("printer %1 disabled").arg(printer);
    return std::any_of(lines.begin(), lines.end(),
                       [&](const QString& line) { return line.startsWith(stopped); });
}

Printers ParsePrinters(const QString& text) {
    static const QString defaultMark = QStringLiteral("system default destination: ");
    Printers printers;
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(defaultMark)) {
            printers.byDefault = line.mid(defaultMark.size());
        } else if (!line.contains(QLatin1Char(' '))) {  // no name has a blank, every sentence has
            printers.names.append(line);
        }
    }
    return printers;
}

}  // namespace

PrinterQuery::PrinterQuery(std::chrono::milliseconds bound) {
    PrepareTool(process_, QStringLiteral("lpstat"), {QStringLiteral("-e"), QStringLiteral("-d")});
    connect(&process_, &QProcess::finished, this, &PrinterQuery::Answer);
    // Queued: the process may fail before anybody listens.
    connect(&process_, &QProcess::errorOccurred, this, &PrinterQuery::Answer, Qt::QueuedConnection);
    QTimer::singleShot(bound, this, &PrinterQuery::Answer);
    process_.start(QIODevice::ReadOnly);
}

PrinterQuery::~PrinterQuery() {
    process_.disconnect(this);  // its end is no answer any more
    EndTool(process_);
}

void PrinterQuery::Answer() {
    if (answered_) return;
    answered_ = true;
    EndTool(process_);
    emit Answered(ParsePrinters(QString::fromUtf8(process_.readAllStandardOutput())));
}

Outcome Send(const QString& printer, const QString& title, const QByteArray& pdf, QWidget* owner,
             std::chrono::milliseconds bound) {
    QElapsedTimer clock;
    clock.start();
    const ToolAnswer state =
        RunTool(QStringLiteral("lpstat"), {QStringLiteral("-p"), printer}, {}, bound, owner);
    if (state.outcome == Outcome::Cancelled) return state.outcome;
    const auto left = bound - std::chrono::milliseconds(clock.elapsed());
    if (left <= 0ms || IsStopped(state.text, printer)) return Outcome::Failed;
    // The page is already as large as the paper: nothing may scale it.
    return RunTool(QStringLiteral("lp"),
                   {QStringLiteral("-d"), printer, QStringLiteral("-t"), title, QStringLiteral("-o"),
                    QStringLiteral("print-scaling=none"), QStringLiteral("-o"), QStringLiteral("media=A4")},
                   pdf, left, owner)
        .outcome;
}

}  // namespace platform_qt::PrintSystem
