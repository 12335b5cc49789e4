// Puts the seal into a freshly compiled help file and reads it back: the compiler reports success for files
// that it could not make. seal_help FILE; what is wrong goes to the error output.

#include <QFile>
#include <cstdio>
#include <optional>

#include "platform/qt/help/ChmFile.h"
#include "platform/qt/help/HelpSeal.h"

namespace {

int Complain(const QString& what) {
    std::fprintf(stderr, "seal_help: %s\n", what.toUtf8().constData());
    return 1;
}

bool SealInPlace(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return false;
    QByteArray bytes = file.readAll();
    return HelpSeal::Put(bytes) && file.seek(0) && file.write(bytes) == bytes.size() && file.flush();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return Complain(QStringLiteral("one file is expected"));
    const QString path = QFile::decodeName(argv[1]);
    if (!SealInPlace(path)) return Complain(path + QStringLiteral(" is missing or no compiled help file"));
    const auto file = ChmFile::Open(path);
    if (!file) return Complain(path + QStringLiteral(" cannot be read back"));
    for (const HelpEntry& entry : file->Contents()) {
        if (!entry.path.isEmpty() && !file->Read(entry.path)) {
            return Complain(entry.path + QStringLiteral(" is missing"));
        }
    }
    return 0;
}
