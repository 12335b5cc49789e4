// SPDX-License-Identifier: MIT
#include "platform/qt/help/HelpTables.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QtEndian>
#include <algorithm>

namespace {

constexpr qsizetype numberSize = 4;
constexpr qsizetype pairSize = 2 * numberSize;
constexpr qsizetype mostPairs = 1000;
constexpr qsizetype longestPath = 4096;  // bytes

// The 32-bit number at an offset that the caller checked; debug builds assert it.
quint32 NumberAt(const QByteArray& bytes, qsizetype offset) {
    return qFromLittleEndian<quint32>(QByteArrayView(bytes).sliced(offset, numberSize).data());
}

// What an attribute's value says: it has entities, but no marks.
QString PlainText(QString value) {
    return QTextDocumentFragment::fromHtml(value.replace(QLatin1Char('<'), QLatin1String("&lt;")))
        .toPlainText();
}

// "topic.htm" as contents and links write it, "/topic.htm" as the file does.
QString ObjectPath(QString local) {
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return local.startsWith(QLatin1Char('/')) ? local : QLatin1Char('/') + local;
}

// Compilers store the path that a topic had when the file was built: its end is the topic's own.
QString ObjectAtEndOf(const QString& path, const QStringList& objects) {
    const QString whole = ObjectPath(path);
    QString longest;
    for (const QString& object : objects) {
        const bool proper = object.size() > 1 && object.startsWith(QLatin1Char('/'));
        if (!proper || object.size() <= longest.size()) continue;
        if (whole.endsWith(object, Qt::CaseInsensitive)) longest = object;
    }
    return longest;
}

}  // namespace

std::vector<HelpEntry> HelpTables::ContentsOf(const QString& sitemap) {
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

QHash<int, QString> HelpTables::TopicsOf(const QByteArray& table, const QByteArray& strings,
                                         const QStringList& objects) {
    QHash<int, QString> topics;
    if (table.size() < numberSize) return topics;
    const qsizetype said = std::min<qsizetype>(NumberAt(table, 0), table.size() - numberSize);
    const qsizetype pairs = std::min(said / pairSize, mostPairs);
    for (qsizetype pair = 0; pair < pairs; ++pair) {
        const qsizetype place = numberSize + pair * pairSize;
        const qsizetype offset = NumberAt(table, place + numberSize);
        const qsizetype stop = strings.indexOf('\0', offset);
        if (stop < 0 || stop - offset > longestPath) continue;
        const QString path = QString::fromUtf8(strings.sliced(offset, stop - offset));
        const QString topic = ObjectAtEndOf(path, objects);
        if (!topic.isEmpty()) topics.insert(static_cast<int>(NumberAt(table, place)), topic);
    }
    return topics;
}
