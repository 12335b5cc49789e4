// SPDX-License-Identifier: MIT
#include "platform/qt/QtMessageBoxes.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "platform/qt/DialogParts.h"
#include "platform/qt/QtHost.h"

namespace platform_qt {

namespace {

constexpr int widestText = 640;  // pixels

struct Choice {
    platform::MessageButton answer;
    QString caption;
    QMessageBox::ButtonRole role;
};

std::vector<Choice> ChoicesOf(int style) {
    using platform::MessageButton;
    const Choice ok{MessageButton::Ok, QStringLiteral("OK"), QMessageBox::AcceptRole};
    const Choice cancel{MessageButton::Cancel, QStringLiteral("Annuler"), QMessageBox::RejectRole};
    const Choice yes{MessageButton::Yes, QStringLiteral("&Oui"), QMessageBox::YesRole};
    const Choice no{MessageButton::No, QStringLiteral("&Non"), QMessageBox::NoRole};
    switch (style & 7) {
        case platform::MessageStyle::OkCancel:
            return {ok, cancel};
        case platform::MessageStyle::YesNoCancel:
            return {yes, no, cancel};
        case platform::MessageStyle::YesNo:
            return {yes, no};
        default:
            return {ok};
    }
}

QMessageBox::Icon IconOf(int style) {
    switch (style & 0xF0) {
        case platform::MessageStyle::Stop:
            return QMessageBox::Critical;
        case platform::MessageStyle::Exclamation:
            return QMessageBox::Warning;
        case platform::MessageStyle::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// The toolkit wraps texts of more than some 420 pixels, in the middle of lines that belong together.
void WidenToText(const QMessageBox& box) {
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!label) return;
    const int natural = label->fontMetrics().size(0, box.text()).width();
    label->setMinimumWidth(std::min(natural, widestText) + 8);
}

}  // namespace

platform::MessageButton QtMessageBoxes::Show(std::string_view text, int style, int helpContext) {
    QMessageBox box(DialogOwner());
    HelpOnF1(box, [helpContext] { return helpContext; });
    box.setWindowTitle(FromUtf8(platform::TheHost().application->Title()));
    box.setIcon(IconOf(style));
    box.setTextFormat(Qt::PlainText);
    box.setText(FromUtf8(text).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace('\r', '\n'));
    const std::vector<Choice> choices = ChoicesOf(style);
    std::vector<QPushButton*> buttons;
    buttons.reserve(choices.size());
    for (const Choice& choice : choices) buttons.push_back(box.addButton(choice.caption, choice.role));
    const std::size_t defaultIndex = static_cast<unsigned>(style >> 8) & 3U;
    if (defaultIndex < buttons.size()) box.setDefaultButton(buttons[defaultIndex]);
    box.setEscapeButton(buttons.back());
    WidenToText(box);
    box.exec();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (box.clickedButton() == buttons[i]) return choices[i].answer;
    }
    return choices.back().answer;
}

void QtMessageBoxes::Beep() {
    QApplication::beep();
}

}  // namespace platform_qt
