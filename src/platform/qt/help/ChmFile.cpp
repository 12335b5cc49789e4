// SPDX-License-Identifier: MIT
#include "platform/qt/help/ChmFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <chm_lib.h>
#include <string_view>

#include "platform/SealedCopy.h"

namespace {

constexpr qint64 largestHelpFile = 64 << 20;  // bytes
constexpr quint64 largestObject = 16 << 20;   // bytes, unpacked
constexpr std::size_t mostObjects = 10000;

std::optional<QByteArray> WholeFile(const QString& path) {
    // A pipe or a device would keep its reader waiting.
    if (!QFileInfo(path).isFile()) return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestHelpFile) return std::nullopt;
    return file.readAll();
}

}  // namespace

QByteArray ChmFile::DigestOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

std::unique_ptr<ChmFile> ChmFile::Open(const QString& path, const QByteArray& digest) {
    const std::optional<QByteArray> bytes = WholeFile(path);
    if (!bytes || DigestOf(*bytes) != digest) return nullptr;
    // The library opens its file by name and reads on as long as it is open: so it gets the name of a copy of
    // the checked bytes.
    const platform::SealedCopy copy(
        std::string_view(bytes->constData(), static_cast<std::size_t>(bytes->size())));
    chmFile* opened = copy.Name().empty() ? nullptr : chm_open(copy.Name().c_str());
    if (!opened) return nullptr;
    std::unique_ptr<ChmFile> file(new ChmFile(opened));
    if (!chm_enumerate(opened, CHM_ENUMERATE_ALL, &ChmFile::Collect, file.get())) return nullptr;
    file->ReadTables();
    return file->Home().isEmpty() ? nullptr : std::move(file);
}

ChmFile::~ChmFile() {
    chm_close(file_);
}

int ChmFile::Collect(chmFile* /*file*/, chmUnitInfo* object, void* self) {
    auto& objects = static_cast<ChmFile*>(self)->objects_;
    if (objects.size() >= mostObjects) return CHM_ENUMERATOR_FAILURE;
    const QString path = QString::fromUtf8(object->path);
    objects.emplace(path.toLower(), Object{path, object->start, object->length, object->space});
    return CHM_ENUMERATOR_CONTINUE;
}

bool ChmFile::Has(const QString& object) const {
    return objects_.count(object.toLower()) != 0;
}

std::optional<QByteArray> ChmFile::Read(const QString& object) const {
    const auto found = objects_.find(object.toLower());
    if (found == objects_.end() || found->second.length > largestObject) return std::nullopt;
    const auto length = static_cast<qsizetype>(found->second.length);
    chmUnitInfo unit{};
    unit.start = found->second.start;
    unit.length = found->second.length;
    unit.space = found->second.space;
    QByteArray bytes(length, '\0');
    auto* target = reinterpret_cast<unsigned char*>(bytes.data());
    if (length > 0 && chm_retrieve_object(file_, &unit, target, 0, length) != length) return std::nullopt;
    return bytes;
}

QStringList ChmFile::Objects() const {
    QStringList paths;
    for (const auto& [key, object] : objects_) paths.append(object.path);
    return paths;
}

QString ChmFile::Home() const {
    const auto first = std::find_if(contents_.begin(), contents_.end(),
                                    [](const HelpEntry& entry) { return !entry.path.isEmpty(); });
    return first == contents_.end() ? QString() : first->path;
}

void ChmFile::ReadTables() {
    for (const auto& [path, object] : objects_) {
        const bool contents = path.endsWith(QLatin1String(".hhc"));
        if (!contents && !path.endsWith(QLatin1String(".hhk"))) continue;
        if (const auto sitemap = Read(path))
            (contents ? contents_ : index_) = HelpTables::ContentsOf(QString::fromUtf8(*sitemap));
    }
    topics_ = HelpTables::TopicsOf(Read(QStringLiteral("/#IVB")).value_or(QByteArray()),
                                   Read(QStringLiteral("/#STRINGS")).value_or(QByteArray()), Objects());
}
