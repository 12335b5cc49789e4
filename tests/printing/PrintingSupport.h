// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include "printing/PagePainter.h"
#include "settings/Settings.h"
#include "support/PrintingHost.h"
#include "support/QtSupport.h"

// Runs a command to its end and returns what it wrote.
inline QString OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0)
        << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

// Every third cell is a value, every other one of those a given; the rest are candidates.
inline PrintedGrid MixedGrid() {
    PrintedGrid grid;
    grid.caption = QStringLiteral("Été");
    for (std::size_t i = 0; i < 81; ++i) {
        PrintedCell& cell = grid.cells[i];
        cell.value = i % 3 == 0 ? static_cast<int>(i % 9 + i / 9 % 3 + 1) : 0;
        cell.locked = i % 6 == 0;
        for (std::size_t d = 1; d <= 9; ++d) cell.candidates.set(d, i % 3 != 0 && (i * 7 + d) % 4 != 0);
    }
    return grid;
}
