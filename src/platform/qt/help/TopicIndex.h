// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class ChmFile;

// The text of every topic that the contents name, for the search. Accents and case make no difference.
class TopicIndex {
  public:
    struct Hit {
        QString title;
        QString path;
    };

    explicit TopicIndex(const ChmFile& file);

    // The topics in which every word begins some word: those with all of them in the title first, then by
    // the order of the contents.
    std::vector<Hit> Find(const QString& words) const;

    // The text without accents and case, as long as the text itself.
    static QString Fold(const QString& text);
    // The folded words of what was typed.
    static QStringList Words(const QString& typed);
    // Where a folded word begins a word of a folded text, from a position on; -1 if nowhere.
    static qsizetype Next(const QString& text, const QString& word, qsizetype from = 0);

  private:
    struct Topic {
        Hit hit;
        QString title;  // folded, as is the text
        QString text;
    };
    std::vector<Topic> topics_;
};
