#include "platform/qt/DialogParts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <utility>

#include "platform/Host.h"

namespace platform_qt {

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

bool OpensHelp(const QKeyEvent& event, int helpContext) {
    if (event.key() != Qt::Key_F1 || helpContext == 0) return false;
    const platform::Host& host = platform::TheHost();
    host.help->ShowTopic(host.application->HelpFile(), helpContext);
    return true;
}

}  // namespace platform_qt
