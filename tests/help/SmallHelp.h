#pragma once

#include <cstdlib>

#include "platform/qt/help/ChmFile.h"
#include "support/ScriptedHost.h"

// A small help file with all that is odd in others, compiled from the folder "small".
class SmallHelp : public testing::Test {
  protected:
    static auto Bytes(const auto& path) { return QByteArray::fromStdString(ScriptedHost::ReadFile(path)); }
    // Of the parts as they lie in the test's folder; the compiler's return code says nothing.
    QByteArray Compiled() {
        const std::string work = "cd " + host_.folder.string() + " && cp -rn " SMALL_HELP "/. .; ";
        EXPECT_GE(std::system((work + CHMCMD " Aide.hhp >/dev/null 2>&1").c_str()), 0);
        return Bytes(host_.PathOf("Aide.chm"));
    }
    QString Write(const char* name, const QByteArray& bytes) {
        ScriptedHost::WriteFile(host_.PathOf(name), bytes.toStdString());
        return QString::fromStdString(host_.PathOf(name));
    }
    static auto Open(const QString& file) {
        return ChmFile::Open(file, ChmFile::DigestOf(Bytes(file.toStdString())));
    }

    ScriptedHost host_;
    const QString file_ = Write("Aide.chm", Compiled());
};
