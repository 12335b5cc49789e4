// Takes the times out of a freshly compiled help file, so that the same topics make the same file, and reads
// it back: the compiler reports success for files that it could not make. finish_help FILE; what is wrong
// goes to the error output.

#include <QFile>
#include <cstdio>

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

}  // namespace

int main(int argc, char** argv) {
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
