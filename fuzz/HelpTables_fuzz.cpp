// SPDX-License-Identifier: MIT
#include "Fuzz.h"
#include "platform/qt/help/HelpTables.h"
#include "platform/qt/help/TopicIndex.h"

// Any bytes as the tables of a help file and as words to look for.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto next = [&] { return QByteArray::fromStdString(input.ConsumeRandomLengthString(400)); };
    const QStringList objects{"/", "/a.htm", "/a1/b.htm", QString::fromUtf8(next())};
    const QByteArray strings = next();
    for (const QString& topic : HelpTables::TopicsOf(next(), strings, objects))
        Check(objects.contains(topic) && topic.size() > 1, "a topic");
    const QStringList words = TopicIndex::Words(QString::fromUtf8(next()));
    const QString sitemap =
        QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRemainingBytesAsString()));
    for (const HelpEntry& entry : HelpTables::ContentsOf(sitemap))
        Check(!entry.title.isEmpty() && entry.depth >= 0 && (entry.path.isEmpty() || entry.path[0] == '/'),
              "a line");
    const QString text = TopicIndex::Fold(sitemap);
    Check(text.size() == sitemap.size(), "a folded text is as long");
    for (const QString& word : words)
        for (qsizetype at = TopicIndex::Next(text, word); at >= 0; at = TopicIndex::Next(text, word, at + 1))
            Check(text.mid(at, word.size()) == word, "a word that is found");
    return 0;
}
