// SPDX-License-Identifier: MIT
#include "platform/qt/DialogParts.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <utility>

#include "platform/Host.h"

namespace platform_qt {

namespace {

// Sees the key before what has the keyboard does: the name field of the toolkit's file dialog keeps every
// key.
class HelpKey : public QObject {
  public:
    HelpKey(QWidget& window, std::function<int()> topic)
        : QObject(&window), window_(window), topic_(std::move(topic)) {
        qApp->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool pressed =
            event->type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(*event).key() == Qt::Key_F1;
        const auto* widget = pressed ? qobject_cast<QWidget*>(watched) : nullptr;
        if (!widget || widget->window() != &window_ || topic_() == 0) {
            return QObject::eventFilter(watched, event);
        }
        const platform::Host& host = platform::TheHost();
        host.help->ShowTopic(host.application->HelpFile(), topic_());
        return true;
    }

  private:
    const QWidget& window_;
    std::function<int()> topic_;
};

}  // namespace

QWidget* CommandRow(QWidget* dialog, const std::function<void(int)>& click) {
    auto* row = new QWidget(dialog);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    for (const auto& [index, caption] : {std::pair{1, "Ok"}, std::pair{0, "Annuler"}}) {
        auto* button = new QPushButton(QLatin1String(caption), row);
        button->setObjectName(QStringLiteral("cmdCommands(%1)").arg(index));
        button->setDefault(index == 1);
        QObject::connect(button, &QPushButton::clicked, dialog, [click, index = index] { click(index); });
        layout->addWidget(button);
    }
    return row;
}

void HelpOnF1(QWidget& window, std::function<int()> topic) {
    new HelpKey(window, std::move(topic));  // the window's child
}

}  // namespace platform_qt
