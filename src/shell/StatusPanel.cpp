#include "shell/StatusPanel.h"

#include <QPainter>

#include "platform/qt/Contrast.h"

StatusPanel::StatusPanel(QWidget* parent, const QString& name) : QLabel(parent) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setContentsMargins(3, 1, 3, 1);
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
