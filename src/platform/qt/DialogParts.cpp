#include "platform/qt/DialogParts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <utility>

#include "platform/Host.h"

namespace platform_qt {

namespace {

// What has the keyboard leaves the key to the window that it is in.
class HelpKey : public QObject {
  public:
    HelpKey(QWidget& window, std::function<int()> topic) : QObject(&window), topic_(std::move(topic)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool pressed = event->type() == QEvent::KeyPress;
        if (!pressed || static_cast<const QKeyEvent&>(*event).key() != Qt::Key_F1 || topic_() == 0) {
            return QObject::eventFilter(watched, event);
        }
        const platform::Host& host = platform::TheHost();
        host.help->ShowTopic(host.application->HelpFile(), topic_());
        return true;
    }

  private:
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
    window.installEventFilter(new HelpKey(window, std::move(topic)));
}

}  // namespace platform_qt
