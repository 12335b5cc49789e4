// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

class ChmFile;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;
class QTabWidget;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class TopicIndex;
class TopicView;

// The help window: table of contents, index and search on the left, the topic on the right. Closing hides it.
class HelpWindow : public QWidget {
    Q_OBJECT

  public:
    HelpWindow();
    ~HelpWindow() override;

    void File(std::unique_ptr<ChmFile> file);
    // The table of contents, with its first topic.
    void ShowContents();
    // False if the topic cannot be read; the window then keeps what it shows.
    bool ShowTopic(const QString& object);

    // Brings the window up where it can be used while `modal` is open; without one it stands alone. A
    // message box waits until the help is closed, a dialog can be used beside it; both may go before it.
    void ShowBeside(QWidget* modal);

  signals:
    void TopicMissing();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* BuildNavigation();
    QWidget* BuildTopic();
    QToolButton* AddButton(QWidget* bar, const char* name, const char* caption, const QIcon& icon);
    void FillContents();
    void TopicShown(const QUrl& topic);
    void Search();
    void BelongTo(QWidget* modal);

    std::unique_ptr<ChmFile> file_;
    std::unique_ptr<TopicIndex> index_;  // made by the first search
    QPointer<QWidget> modal_;            // what the window belongs to, if anything
    TopicView* topic_;
    QTabWidget* parts_ = nullptr;  // contents and index
    QTreeWidget* contents_ = nullptr;
    QListWidget* keywords_ = nullptr;
    QListWidget* hits_ = nullptr;
    QLineEdit* words_ = nullptr;
    QLabel* nothingFound_ = nullptr;
    QStackedWidget* lists_ = nullptr;
};
