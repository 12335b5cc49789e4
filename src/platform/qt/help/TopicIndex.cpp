// SPDX-License-Identifier: MIT
#include "platform/qt/help/TopicIndex.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <algorithm>

#include "platform/qt/help/ChmFile.h"

namespace {

bool HasAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(),
                       [&text](const QString& word) { return TopicIndex::Next(text, word) >= 0; });
}

}  // namespace

TopicIndex::TopicIndex(const ChmFile& file) {
    for (const HelpEntry& entry : file.Contents()) {
        const auto html = file.Read(entry.path);
        if (!html) continue;
        const QString text = QTextDocumentFragment::fromHtml(QString::fromUtf8(*html)).toPlainText();
        topics_.push_back({{entry.title, entry.path}, Fold(entry.title), Fold(text)});
    }
}

std::vector<TopicIndex::Hit> TopicIndex::Find(const QString& typed) const {
    const QStringList words = Words(typed);
    std::vector<Hit> hits;
    if (words.isEmpty()) return hits;
    for (const Topic& topic : topics_) {
        if (HasAll(topic.title, words)) hits.push_back(topic.hit);
    }
    for (const Topic& topic : topics_) {
        if (!HasAll(topic.title, words) && HasAll(topic.title + QLatin1Char('\n') + topic.text, words)) {
            hits.push_back(topic.hit);
        }
    }
    return hits;
}

QString TopicIndex::Fold(const QString& text) {
    QString folded = text;
    for (QChar& letter : folded) {
        if (letter.decompositionTag() == QChar::Canonical) letter = letter.decomposition().at(0);
        letter = letter == QChar(0x2019) ? QChar(u'\'') : letter.toLower();
    }
    return folded;
}

QStringList TopicIndex::Words(const QString& typed) {
    static const QRegularExpression between(QStringLiteral(R"([^\w+]+)"),
                                            QRegularExpression::UseUnicodePropertiesOption);
    return Fold(typed.normalized(QString::NormalizationForm_C)).split(between, Qt::SkipEmptyParts);
}

qsizetype TopicIndex::Next(const QString& text, const QString& word, qsizetype from) {
    for (qsizetype at = text.indexOf(word, from); at >= 0; at = text.indexOf(word, at + 1)) {
        if (at == 0 || !text.at(at - 1).isLetterOrNumber()) return at;
    }
    return -1;
}
