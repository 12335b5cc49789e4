// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>
#include <memory>

class ChmFile;

// Shows the topics of a help file and follows the links between them. Links that lead out of the file are
// not followed.
class TopicView : public QTextBrowser {
    Q_OBJECT

  public:
    explicit TopicView(QWidget* parent);

    // Forgets the topics seen before. The file must outlive the view, or be replaced.
    void File(const ChmFile* file);
    // Shows a topic as a link to it would.
    void Follow(const QString& object);
    // The topic on view, "/niveau.htm".
    QString Topic() const { return source().path(); }

    // Marks every word that begins with one of these; folded as the search folds them.
    void Mark(const QStringList& words);

    QVariant loadResource(int type, const QUrl& name) override;

  signals:
    // The file does not have the topic, and the view keeps what it shows.
    void TopicMissing();

  protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;

  private:
    QImage Picture(const QByteArray& bytes) const;

    const ChmFile* file_ = nullptr;
};
