// SPDX-License-Identifier: MIT
#include "platform/qt/help/HelpWindow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "platform/qt/help/ChmFile.h"
#include "platform/qt/help/TopicIndex.h"
#include "platform/qt/help/TopicView.h"

namespace {

constexpr QSize firstHelpSize(960, 680);
constexpr int navigationWidth = 260;
constexpr int pathRole = Qt::UserRole;

}  // namespace

HelpWindow::HelpWindow() : QWidget(nullptr, Qt::Window), topic_(new TopicView(this)) {
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Aide de Ninarix"));
    // Left open, it does not keep the program alive.
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(firstHelpSize);
    auto* splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(BuildNavigation());
    splitter->addWidget(BuildTopic());
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({navigationWidth, firstHelpSize.width() - navigationWidth});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(splitter);
    connect(topic_, &TopicView::TopicMissing, this, &HelpWindow::TopicMissing);
    connect(topic_, &QTextBrowser::sourceChanged, this, &HelpWindow::TopicShown);
}

HelpWindow::~HelpWindow() = default;

QWidget* HelpWindow::BuildNavigation() {
    auto* side = new QWidget(this);
    words_ = new QLineEdit(side);
    words_->setObjectName(QStringLiteral("words"));
    words_->setPlaceholderText(QStringLiteral("Rechercher dans l'aide"));
    words_->setAccessibleName(words_->placeholderText());
    words_->setClearButtonEnabled(true);
    contents_ = new QTreeWidget(side);
    contents_->setObjectName(QStringLiteral("contents"));
    contents_->setAccessibleName(QStringLiteral("Sommaire"));
    contents_->setHeaderHidden(true);
    hits_ = new QListWidget(side);
    hits_->setObjectName(QStringLiteral("hits"));
    hits_->setAccessibleName(QStringLiteral("Rubriques trouvées"));
    hits_->setWordWrap(true);
    nothingFound_ = new QLabel(side);
    nothingFound_->setObjectName(QStringLiteral("nothingFound"));
    nothingFound_->setTextFormat(Qt::PlainText);
    nothingFound_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    nothingFound_->setWordWrap(true);
    nothingFound_->setMargin(8);
    keywords_ = new QListWidget(side);
    keywords_->setObjectName(QStringLiteral("keywords"));
    keywords_->setAccessibleName(QStringLiteral("Index"));
    parts_ = new QTabWidget(side);
    parts_->setObjectName(QStringLiteral("parts"));
    parts_->setDocumentMode(true);
    parts_->addTab(contents_, QStringLiteral("&Sommaire"));
    parts_->addTab(keywords_, QStringLiteral("&Index"));
    lists_ = new QStackedWidget(side);
    lists_->addWidget(parts_);
    lists_->addWidget(hits_);
    lists_->addWidget(nothingFound_);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(words_);
    layout->addWidget(lists_);
    connect(words_, &QLineEdit::textChanged, this, &HelpWindow::Search);
    connect(contents_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        const QString path = item ? item->data(0, pathRole).toString() : QString();
        if (!path.isEmpty() && path != topic_->Topic()) topic_->Follow(path);
    });
    for (QListWidget* list : {hits_, keywords_}) {
        connect(list, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
            if (item) topic_->Follow(item->data(pathRole).toString());
        });
        // The one that is chosen already, after another topic was read meanwhile.
        connect(list, &QListWidget::itemActivated, this,
                [this](const QListWidgetItem* item) { topic_->Follow(item->data(pathRole).toString()); });
    }
    return side;
}

QToolButton* HelpWindow::AddButton(QWidget* bar, const char* name, const char* caption, const QIcon& icon) {
    auto* button = new QToolButton(bar);
    button->setObjectName(QLatin1String(name));
    button->setText(QString::fromUtf8(caption));
    button->setIcon(icon);
    button->setToolButtonStyle(icon.isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    bar->layout()->addWidget(button);
    return button;
}

QWidget* HelpWindow::BuildTopic() {
    auto* side = new QWidget(this);
    auto* bar = new QWidget(side);
    auto* buttons = new QHBoxLayout(bar);
    buttons->setContentsMargins(0, 0, 0, 0);
    const QIcon arrowLeft = style()->standardIcon(QStyle::SP_ArrowBack, nullptr, this);
    const QIcon arrowRight = style()->standardIcon(QStyle::SP_ArrowForward, nullptr, this);
    QToolButton* back = AddButton(bar, "back", "Précédent", arrowLeft);
    QToolButton* forward = AddButton(bar, "forward", "Suivant", arrowRight);
    QToolButton* home = AddButton(bar, "home", "Sommaire", {});
    buttons->addStretch();
    connect(back, &QToolButton::clicked, topic_, &QTextBrowser::backward);
    connect(forward, &QToolButton::clicked, topic_, &QTextBrowser::forward);
    connect(home, &QToolButton::clicked, this, &HelpWindow::ShowContents);
    connect(topic_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(topic_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    topic_->setObjectName(QStringLiteral("topic"));
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(bar);
    layout->addWidget(topic_);
    return side;
}

void HelpWindow::File(std::unique_ptr<ChmFile> file) {
    topic_->File(file.get());
    index_.reset();
    file_ = std::move(file);
    words_->clear();
    FillContents();
}

void HelpWindow::FillContents() {
    const QSignalBlocker quiet(contents_);
    contents_->clear();
    std::vector<QTreeWidgetItem*> parents;  // the last line of each depth
    for (const HelpEntry& entry : file_->Contents()) {
        const auto depth = std::min(static_cast<std::size_t>(entry.depth), parents.size());
        auto* item = depth == 0 ? new QTreeWidgetItem(contents_) : new QTreeWidgetItem(parents[depth - 1]);
        item->setText(0, entry.title);
        item->setData(0, pathRole, entry.path);
        parents.resize(depth);
        parents.push_back(item);
    }
    contents_->expandAll();
    const QSignalBlocker silent(keywords_);
    keywords_->clear();
    for (const HelpEntry& entry : file_->Index()) {
        auto* item = new QListWidgetItem(entry.title, keywords_);
        item->setData(pathRole, entry.path);
    }
}

void HelpWindow::ShowContents() {
    words_->clear();
    parts_->setCurrentWidget(contents_);
    topic_->Follow(file_->Home());
    contents_->setFocus();
}

bool HelpWindow::ShowTopic(const QString& object) {
    if (!file_->Read(object)) return false;
    topic_->Follow(object);
    topic_->setFocus();
    return true;
}

// The contents follow the topic, and the words searched for are marked in it.
void HelpWindow::TopicShown(const QUrl& topic) {
    const QSignalBlocker quiet(contents_);
    const QString path = topic.path();
    for (QTreeWidgetItemIterator line(contents_); *line; ++line) {
        if ((*line)->data(0, pathRole).toString().compare(path, Qt::CaseInsensitive) == 0) {
            contents_->setCurrentItem(*line);
            break;
        }
    }
    const QString title = topic_->documentTitle();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Aide de Ninarix")
                                   : QStringLiteral("%1 - Aide de Ninarix").arg(title));
    topic_->Mark(TopicIndex::Words(words_->text()));
}

void HelpWindow::Search() {
    const QStringList words = TopicIndex::Words(words_->text());
    topic_->Mark(words);
    if (words.isEmpty()) return lists_->setCurrentWidget(parts_);
    if (!index_) index_ = std::make_unique<TopicIndex>(*file_);
    const QSignalBlocker quiet(hits_);
    hits_->clear();
    for (const TopicIndex::Hit& hit : index_->Find(words_->text())) {
        auto* item = new QListWidgetItem(hit.title, hits_);
        item->setData(pathRole, hit.path);
    }
    nothingFound_->setText(
        QStringLiteral("Aucune rubrique ne contient « %1 ».").arg(words_->text().trimmed()));
    lists_->setCurrentWidget(hits_->count() > 0 ? static_cast<QWidget*>(hits_) : nothingFound_);
}

void HelpWindow::ShowBeside(QWidget* modal) {
    if (modal != this && modal != modal_) BelongTo(modal);
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
}

// A window that belongs to a modal one is not blocked by it. A message box stands in for the whole program,
// whose runs leave nothing but modal windows alive: there the help is modal itself.
void HelpWindow::BelongTo(QWidget* modal) {
    const bool wasVisible = isVisible();
    const QPoint place = pos();
    if (modal_) modal_->removeEventFilter(this);
    modal_ = modal;
    setParent(modal, Qt::Window);
    setWindowModality(qobject_cast<QMessageBox*>(modal) ? Qt::WindowModal : Qt::NonModal);
    // Otherwise the window manager finds a new place for it.
    if (wasVisible) move(place);
    if (modal) modal->installEventFilter(this);
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == modal_ && event->type() == QEvent::Hide) {
        // The dialog's owner destroys it next, and with it all that belongs to it.
        const bool wasVisible = isVisible();
        BelongTo(nullptr);
        if (wasVisible) show();
    }
    return QWidget::eventFilter(watched, event);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
    if (words_->text().isEmpty()) {
        close();
    } else {
        words_->clear();
    }
}
