// Before compiling, finish_help --entities TOPIC...: writes every character beyond ASCII as an entity. Other
// readers of help files take the text for an older encoding, whatever a topic says about itself.
//
// After it, finish_help FILE: takes the times out of a freshly compiled help file, so that the same topics
// make the same file, and reads it back: the compiler reports success for files that it could not make.
//
// What is wrong goes to the error output.

#include <QFile>
#include <cstdio>
#include <span>
#include <string_view>

#include "platform/qt/help/ChmFile.h"

namespace {

int Complain(const QString& what) {
    std::fprintf(stderr, "finish_help: %s\n", what.toUtf8().constData());
    return 1;
}

// One time stands in the file's header, one at the start of the object "/#SYSTEM" behind its version 3, an
// item number and the item's length.
bool ClearTimes(QByteArray& bytes) {
    constexpr qsizetype headerTime = 16;
    const QByteArray noTime(4, '\0');
    const QByteArray before = QByteArrayLiteral("\x03\0\0\0\x0A\0\x04\0");
    const qsizetype system = bytes.indexOf(before);
    if (system < headerTime || system + before.size() + noTime.size() > bytes.size()) return false;
    bytes.replace(headerTime, noTime.size(), noTime);
    bytes.replace(system + before.size(), noTime.size(), noTime);
    return true;
}

QByteArray WithEntities(const QString& text) {
    QByteArray plain;
    for (const char32_t character : text.toUcs4()) {
        plain += character < 128 ? QByteArray(1, static_cast<char>(character))
                                 : "&#" + QByteArray::number(character) + ';';
    }
    return plain;
}

int WriteEntities(std::span<char* const> topics) {
    for (const char* topic : topics) {
        QFile file(QFile::decodeName(topic));
        if (!file.open(QIODevice::ReadWrite))
            return Complain(file.fileName() + QStringLiteral(" is missing"));
        const QByteArray plain = WithEntities(QString::fromUtf8(file.readAll()));
        if (!file.resize(0) || !file.seek(0) || file.write(plain) != plain.size() || !file.flush()) {
            return Complain(file.fileName() + QStringLiteral(" cannot be written"));
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<char* const> words(argv, static_cast<std::size_t>(argc));
    if (argc > 1 && words[1] == std::string_view("--entities")) return WriteEntities(words.subspan(2));
    if (argc != 2) return Complain(QStringLiteral("one file is expected"));
    const QString path = QFile::decodeName(argv[1]);
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return Complain(path + QStringLiteral(" is missing"));
    QByteArray bytes = file.readAll();
    if (!ClearTimes(bytes)) return Complain(path + QStringLiteral(" is no compiled help file"));
    if (!file.seek(0) || file.write(bytes) != bytes.size() || !file.flush()) {
        return Complain(path + QStringLiteral(" cannot be written"));
    }
    const auto help = ChmFile::Open(path, ChmFile::DigestOf(bytes));
    if (!help) return Complain(path + QStringLiteral(" cannot be read back"));
    for (const HelpEntry& entry : help->Contents()) {
        if (!entry.path.isEmpty() && !help->Read(entry.path)) {
            return Complain(entry.path + QStringLiteral(" is missing"));
        }
    }
    return 0;
}
