// SPDX-License-Identifier: MIT
#include "platform/qt/help/TopicView.h"

#include <QFontInfo>
#include <QImage>
#include <QPalette>
#include <QUrl>

#include "platform/qt/help/ChmFile.h"
#include "platform/qt/help/TopicIndex.h"

namespace {

QString TopicScheme() {
    return QStringLiteral("aide");
}

}  // namespace

TopicView::TopicView(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(false);
    document()->setDocumentMargin(16);
    QFont text = font();
    text.setPointSizeF(1.15 * QFontInfo(text).pointSizeF());
    setFont(text);
    // Topics are pages with pictures of a light window, also on a dark desktop.
    QPalette page = palette();
    page.setColor(QPalette::Base, Qt::white);
    page.setColor(QPalette::Text, QColor(0x20, 0x24, 0x2b));
    page.setColor(QPalette::Link, QColor(0x0b, 0x57, 0xa4));
    setPalette(page);
}

void TopicView::File(const ChmFile* file) {
    file_ = file;
    clearHistory();
}

void TopicView::Follow(const QString& object) {
    QUrl url;
    url.setScheme(TopicScheme());
    url.setPath(object);
    setSource(url);
}

void TopicView::doSetSource(const QUrl& url, QTextDocument::ResourceType /*type*/) {
    if (url.scheme() != TopicScheme()) return;
    if (!file_ || !file_->Read(url.path())) {
        emit TopicMissing();
        return;
    }
    QTextBrowser::doSetSource(url, QTextDocument::HtmlResource);
}

QVariant TopicView::loadResource(int type, const QUrl& name) {
    if (!file_ || name.scheme() != TopicScheme()) return {};
    const auto bytes = file_->Read(name.path());
    if (!bytes) return {};
    if (type == QTextDocument::ImageResource) return Picture(*bytes);
    return *bytes;
}

// Pictures have twice the pixels of the size that they are shown at: sharp on a fine screen, and smoothly
// halved on others.
QImage TopicView::Picture(const QByteArray& bytes) const {
    // Without a palette: halving mixes colours.
    QImage picture = QImage::fromData(bytes).convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) return picture;
    if (devicePixelRatioF() < 1.5) {
        return picture.scaled(picture.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    picture.setDevicePixelRatio(2);
    return picture;
}

void TopicView::Mark(const QStringList& words) {
    QList<QTextEdit::ExtraSelection> marks;
    const QString text = TopicIndex::Fold(document()->toPlainText());
    for (const QString& word : words) {
        for (qsizetype at = TopicIndex::Next(text, word); at >= 0;
             at = TopicIndex::Next(text, word, at + 1)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(document());
            mark.cursor.setPosition(static_cast<int>(at));
            mark.cursor.setPosition(static_cast<int>(at + word.size()), QTextCursor::KeepAnchor);
            mark.format.setBackground(QColor(0xff, 0xe8, 0x7a));
            marks.append(mark);
        }
    }
    setExtraSelections(marks);
}
