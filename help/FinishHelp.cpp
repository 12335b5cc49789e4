// SPDX-License-Identifier: MIT

// finish_help entities PAGE...: writes what is not ASCII in pages as entities, for viewers that take them for
// Windows-1252 whatever they say.
// finish_help finish FILE: takes the times out of a freshly compiled help file, so that the same topics make
// the same file, gives its contexts bare names, and reads it back: the compiler reports success for files
// that it could not make. What is wrong goes to the error output.

#include <QFile>
#include <QtEndian>
#include <cstdio>
#include <optional>

#include "platform/qt/help/ChmFile.h"

namespace {

constexpr auto compilersFolder = "/proc/self/cwd/";

int Complain(const QString& what) {
    std::fprintf(stderr, "finish_help: %s\n", what.toUtf8().constData());
    return 1;
}

bool Write(QFile& file, const QByteArray& bytes) {
    return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size()) && file.flush();
}

int WriteEntities(const QString& path) {
    QFile page(path);
    if (!page.open(QIODevice::ReadWrite)) return Complain(path + QStringLiteral(" is missing"));
    QByteArray ascii;
    for (const uint letter : QString::fromUtf8(page.readAll()).toUcs4()) {
        ascii += letter < 0x80 ? QByteArray(1, static_cast<char>(letter))
                               : "&#" + QByteArray::number(letter) + ';';
    }
    return Write(page, ascii) ? 0 : Complain(path + QStringLiteral(" cannot be written"));
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

// The format's numbers of variable length: seven bits a byte, the highest first.
QByteArray Packed(quint64 number) {
    QByteArray packed(1, static_cast<char>(number & 0x7F));
    while (number >>= 7) packed.prepend(static_cast<char>(0x80 | (number & 0x7F)));
    return packed;
}

quint64 Unpack(const QByteArray& bytes, qsizetype& at) {
    quint64 number = 0;
    while (at < bytes.size()) {
        const char byte = bytes.at(at++);
        number = number << 7 | (byte & 0x7F);
        if ((byte & 0x80) == 0) break;
    }
    return number;
}

// The strings without the folder that the compiler ran in; each begins where it began.
QByteArray BareNames(QByteArray strings) {
    const QByteArray folder(compilersFolder);
    for (qsizetype at = strings.indexOf(folder); at >= 0; at = strings.indexOf(folder, at)) {
        const qsizetype stop = strings.indexOf('\0', at);
        if (stop < 0) break;
        const QByteArray name = strings.sliced(at + folder.size(), stop - at - folder.size());
        strings.replace(at, stop - at, name + QByteArray(folder.size(), '\0'));
    }
    return strings;
}

// The compiler packs the strings. They are put, as they are, behind everything else, and the list of objects
// says so in as many bytes as before.
bool PutStrings(QByteArray& bytes, const QByteArray& strings) {
    constexpr qsizetype firstSection =
        0x38;  // where the file's own section begins, which knows the file's size
    constexpr qsizetype sizeInSection = 8;
    constexpr qsizetype contentPlace = 0x58;
    const QByteArray name = QByteArrayLiteral("\x09/#STRINGS");
    const qsizetype entry = bytes.indexOf(name);
    if (entry < contentPlace) return false;
    const auto numberAt = [&](qsizetype at) { return qFromLittleEndian<quint64>(bytes.constData() + at); };
    qsizetype at = entry + name.size();
    Unpack(bytes, at);
    Unpack(bytes, at);
    if (Unpack(bytes, at) != static_cast<quint64>(strings.size())) return false;
    const quint64 content = numberAt(contentPlace);
    const QByteArray place = QByteArray(1, '\0') + Packed(static_cast<quint64>(bytes.size()) - content) +
                             Packed(static_cast<quint64>(strings.size()));
    if (entry + name.size() + place.size() != at) return false;
    bytes.replace(entry + name.size(), place.size(), place);
    bytes += strings;
    const auto size = static_cast<qsizetype>(numberAt(firstSection)) + sizeInSection;
    if (size + 8 > bytes.size()) return false;
    qToLittleEndian<quint64>(static_cast<quint64>(bytes.size()), bytes.data() + size);
    return true;
}

int Finish(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return Complain(path + QStringLiteral(" is missing"));
    QByteArray bytes = file.readAll();
    const auto compiled = ChmFile::Open(path, ChmFile::DigestOf(bytes));
    const auto strings = compiled ? compiled->Read(QStringLiteral("/#STRINGS")) : std::nullopt;
    if (!strings || !ClearTimes(bytes) || !PutStrings(bytes, BareNames(*strings))) {
        return Complain(path + QStringLiteral(" is no compiled help file"));
    }
    if (!Write(file, bytes)) return Complain(path + QStringLiteral(" cannot be written"));
    const auto help = ChmFile::Open(path, ChmFile::DigestOf(bytes));
    if (!help) return Complain(path + QStringLiteral(" cannot be read back"));
    for (const std::vector<HelpEntry>& list : {help->Contents(), help->Index()}) {
        for (const HelpEntry& entry : list) {
            if (!entry.path.isEmpty() && !help->Read(entry.path)) {
                return Complain(entry.path + QStringLiteral(" is missing"));
            }
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const QByteArray what(argc > 2 ? argv[1] : "");
    if (what == "finish" && argc == 3) return Finish(QFile::decodeName(argv[2]));
    if (what != "entities") return Complain(QStringLiteral("finish FILE or entities PAGE..."));
    for (int i = 2; i < argc; ++i) {
        if (WriteEntities(QFile::decodeName(argv[i])) != 0) return 1;
    }
    return 0;
}
