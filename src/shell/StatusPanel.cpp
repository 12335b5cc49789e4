// SPDX-License-Identifier: MIT
#include "shell/StatusPanel.h"

#include <QEvent>
#include <QPainter>

#include "platform/qt/Contrast.h"

StatusPanel::StatusPanel(QWidget* parent, const QString& name) : QLabel(parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setContentsMargins(3, 1, 3, 1);
}

void StatusPanel::Show(const QString& text) {
    if (text == this->text()) return;
    const QSize before = sizeHint();
    // A label of a fixed size asks for no layout.
    if (isVisible()) setFixedSize(size());
    setText(text);
    if (sizeHint() != before) FreeSize();
}

void StatusPanel::FreeSize() {
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void StatusPanel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FreeSize();
}

void StatusPanel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(platform_qt::FocusColor(palette()));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void StatusPanel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void StatusPanel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}
