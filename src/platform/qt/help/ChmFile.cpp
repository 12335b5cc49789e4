#include "platform/qt/help/ChmFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QtEndian>
#include <algorithm>
#include <chm_lib.h>

#include "platform/qt/help/HelpSeal.h"

namespace {

constexpr qint64 largestHelpFile = 64 << 20;  // bytes
constexpr std::size_t mostObjects = 10000;

std::optional<QByteArray> WholeFile(const QString& path) {
    // A pipe or a device would keep its reader waiting.
    if (!QFileInfo(path).isFile()) return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestHelpFile) return std::nullopt;
    return file.readAll();
}

// The 32-bit number at an offset that the caller checked; debug builds assert it.
quint32 NumberAt(const QByteArray& bytes, qsizetype offset) {
    return qFromLittleEndian<quint32>(QByteArrayView(bytes).sliced(offset, 4).data());
}

QString PlainText(const QString& html) {
    return QTextDocumentFragment::fromHtml(html).toPlainText();
}

// "topic.htm" as contents and links write it, "/topic.htm" as the file does.
QString ObjectPath(QString local) {
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return local.startsWith(QLatin1Char('/')) ? local : QLatin1Char('/') + local;
}

std::vector<HelpEntry> EntriesOf(const QString& sitemap) {
    static const QRegularExpression mark(
        QStringLiteral(R"re(<(/?)ul\b|<param\s+name="(name|local)"\s+value="([^"]*)"|</object)re"),
        QRegularExpression::CaseInsensitiveOption);
    std::vector<HelpEntry> entries;
    HelpEntry entry;
    int depth = -1;
    for (auto found = mark.globalMatch(sitemap); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString what = match.captured(0).toLower();
        if (what == QLatin1String("<ul")) {
            ++depth;
        } else if (what == QLatin1String("</ul")) {
            --depth;
        } else if (what == QLatin1String("</object")) {
            entry.depth = std::max(depth, 0);
            if (!entry.title.isEmpty()) entries.push_back(entry);
            entry = {};
        } else if (match.captured(2).toLower() == QLatin1String("name")) {
            entry.title = PlainText(match.captured(3));
        } else {
            entry.path = ObjectPath(PlainText(match.captured(3)));
        }
    }
    return entries;
}

}  // namespace

std::unique_ptr<ChmFile> ChmFile::Open(const QString& path) {
    const std::optional<QByteArray> bytes = WholeFile(path);
    if (!bytes || !HelpSeal::IsWhole(*bytes)) return nullptr;
    chmFile* opened = chm_open(QFile::encodeName(path).constData());
    if (!opened) return nullptr;
    std::unique_ptr<ChmFile> file(new ChmFile(opened));
    if (!chm_enumerate(opened, CHM_ENUMERATE_ALL, &ChmFile::Collect, file.get())) return nullptr;
    file->ReadContents();
    file->ReadContexts();
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
    if (found == objects_.end() || found->second.length > largestHelpFile) return std::nullopt;
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

void ChmFile::ReadContents() {
    for (const auto& [path, object] : objects_) {
        if (!path.endsWith(QLatin1String(".hhc"))) continue;
        if (const auto sitemap = Read(path)) contents_ = EntriesOf(QString::fromUtf8(*sitemap));
        return;
    }
}

// The context table: a byte count, then pairs of context number and offset of the topic's path among the
// strings, all 32-bit.
void ChmFile::ReadContexts() {
    constexpr qsizetype pairSize = 8;
    const QByteArray table = Read(QStringLiteral("/#IVB")).value_or(QByteArray());
    const QByteArray strings = Read(QStringLiteral("/#STRINGS")).value_or(QByteArray());
    if (table.size() < 4) return;
    const qsizetype end = 4 + std::min<qsizetype>(NumberAt(table, 0), table.size() - 4);
    for (qsizetype pair = 4; pair + pairSize <= end; pair += pairSize) {
        const auto context = static_cast<int>(NumberAt(table, pair));
        const qsizetype offset = NumberAt(table, pair + 4);
        const qsizetype stop = strings.indexOf('\0', offset);
        if (stop < 0) continue;
        const QString topic = ObjectAtEndOf(QString::fromUtf8(strings.sliced(offset, stop - offset)));
        if (!topic.isEmpty()) topics_.insert(context, topic);
    }
}

// Compilers store the path that a topic had when the file was built: its end is the topic's own.
QString ChmFile::ObjectAtEndOf(const QString& path) const {
    const QString whole = ObjectPath(path);
    QString longest;
    for (const auto& [key, object] : objects_) {
        const bool proper = key.size() > 1 && key.startsWith(QLatin1Char('/'));
        if (!proper || key.size() <= longest.size()) continue;
        if (whole.endsWith(key, Qt::CaseInsensitive)) longest = object.path;
    }
    return longest;
}
