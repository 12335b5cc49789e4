#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <string>

#include "printing/PagePainter.h"
#include "settings/IniParamProcs.h"
#include "support/ScriptedHost.h"

// Runs a command to its end and returns what it wrote.
inline QByteArray OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    }
    return process.readAllStandardOutput();
}

// Print commands of the test's own, in front of the system's: what "lp" and "lpstat" do is a line of shell.
class PrintCommands {
  public:
    explicit PrintCommands(const ScriptedHost& host) : folder_(host.folder / "bin"), path_(qgetenv("PATH")) {
        std::filesystem::create_directory(folder_);
        qputenv("PATH", QByteArray::fromStdString(folder_.string()) + ":" + path_);
    }
    ~PrintCommands() { qputenv("PATH", path_); }
    PrintCommands(const PrintCommands&) = delete;
    PrintCommands& operator=(const PrintCommands&) = delete;

    void Set(const std::string& command, const std::string& line) const {
        const auto file = folder_ / command;
        ScriptedHost::WriteFile(file.string(), "#!/bin/sh\n" + line + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    // No command is found at all.
    void HideTheSystems() const { qputenv("PATH", QByteArray::fromStdString(folder_.string())); }

    static constexpr const char* Hangs = "exec tail -f /dev/null";

  private:
    std::filesystem::path folder_;
    QByteArray path_;
};

// Row by row 1 to 9; every third cell is a value, every other one of those a given; the rest are candidates.
inline PrintedGrid MixedGrid() {
    PrintedGrid grid;
    grid.caption = QStringLiteral("Été");
    for (int i = 0; i < 81; ++i) {
        PrintedCell& cell = grid.cells[static_cast<std::size_t>(i)];
        if (i % 3 == 0) {
            cell.value = i % 9 + i / 9 % 3 + 1;
            cell.locked = i % 2 == 0;
        } else {
            for (int d = 1; d <= 9; ++d)
                cell.candidates.set(static_cast<std::size_t>(d), (i * 7 + d) % 4 != 0);
        }
    }
    return grid;
}
