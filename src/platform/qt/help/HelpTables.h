// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

// One line of a table of contents. A heading without a topic of its own has an empty path.
struct HelpEntry {
    QString title;
    QString path;   // of an object of the file, "/niveau.htm"
    int depth = 0;  // 0 for the outermost lines
};

// The tables inside a compiled help file, read from any bytes.
namespace HelpTables {

// The lines of a contents file that have a title.
std::vector<HelpEntry> ContentsOf(const QString& sitemap);

// The topics by their help contexts, as far as the table is sound and its topics are among the objects.
// `table` is a byte count, then pairs of context number and offset among the strings, all 32-bit.
QHash<int, QString> TopicsOf(const QByteArray& table, const QByteArray& strings, const QStringList& objects);

}  // namespace HelpTables
