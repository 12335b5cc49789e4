// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <chrono>

class QWidget;

// The system's printers, through the print system's own commands: they are processes, so a print server that
// accepts and stays silent can be left waiting.
namespace platform_qt::PrintSystem {

using namespace std::chrono_literals;

struct Printers {
    QStringList names;
    QString byDefault;  // empty: the system has none
};

// Asks for the printers without holding up its caller. A system without printers, or without a print system,
// gives an empty list.
class PrinterQuery : public QObject {
    Q_OBJECT

  public:
    explicit PrinterQuery(std::chrono::milliseconds bound = 2s);
    ~PrinterQuery() override;

  signals:
    // Once, at the latest when the bound has passed; never before the event loop runs.
    void Answered(const platform_qt::PrintSystem::Printers& printers);

  private:
    void Answer();

    QProcess process_;
    bool answered_ = false;
};

enum class Outcome { Accepted, Failed, Cancelled };

// Hands a PDF to a printer and waits for the print system's own answer. A printer that is stopped or rejects
// jobs gets nothing. After a moment a small window lets the user leave; events are served meanwhile.
Outcome Send(const QString& printer, const QString& title, const QByteArray& pdf, QWidget* owner,
             std::chrono::milliseconds bound = 20s);

}  // namespace platform_qt::PrintSystem
