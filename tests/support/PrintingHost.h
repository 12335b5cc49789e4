// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include "support/ScriptedHost.h"

// A host with print commands of its own in front of the system's: what "lp" and "lpstat" do is a line of
// shell.
class PrintingHost : public ScriptedHost {
  public:
    PrintingHost() { qputenv("PATH", QByteArray::fromStdString(PathOf("bin")) + ":" + path_); }
    ~PrintingHost() override { qputenv("PATH", path_); }

    void Set(const std::string& command, const std::string& line) const {
        std::filesystem::create_directory(PathOf("bin"));
        WriteFile(PathOf("bin/" + command), "#!/bin/sh\n" + line + "\n");
        std::filesystem::permissions(PathOf("bin/" + command), std::filesystem::perms::owner_all);
    }

  private:
    QByteArray path_ = qgetenv("PATH");
};
