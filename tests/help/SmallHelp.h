// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>

#include "platform/qt/help/ChmFile.h"
#include "support/ScriptedHost.h"

// A small help file with all that is odd in others, compiled from the folder "small".
class SmallHelp : public testing::Test {
  protected:
    static auto Bytes(const auto& path) { return QByteArray::fromStdString(ScriptedHost::ReadFile(path)); }
    QString Write(const char* name, const QByteArray& bytes) {
        ScriptedHost::WriteFile(host_.PathOf(name), bytes.toStdString());
        return QString::fromStdString(host_.PathOf(name));
    }
    static auto Open(const QString& file) {
        return ChmFile::Open(file, ChmFile::DigestOf(Bytes(file.toStdString())));
    }

    ScriptedHost host_;
    const QString file_ = QString::fromStdString(host_.PathOf("Aide.chm"));
    const int ignored_ = [this] {
        std::filesystem::copy(SMALL_HELP, host_.folder, std::filesystem::copy_options::recursive);
        // Its return code says nothing.
        return std::system(
            ("cd " + host_.folder.string() + " && " CHMCMD " Aide.hhp >/dev/null 2>&1").c_str());
    }();
};
