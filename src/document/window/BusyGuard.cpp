// SPDX-License-Identifier: MIT
#include "document/window/BusyGuard.h"

#include <QApplication>
#include <QEvent>
#include <cassert>

#include "platform/Host.h"

namespace {

BusyGuard* activeGuard = nullptr;

bool IsUserInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::Close:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
            return true;
        default:
            return false;
    }
}

// What comes and goes by itself, as tool tips and the splash do.
bool IsTransient(const QWidget& widget) {
    const Qt::WindowType type = widget.windowType();
    return type != Qt::Window && type != Qt::SubWindow && type != Qt::Widget;
}

}  // namespace

BusyGuard::BusyGuard(QWidget* owner) : progress_(owner->window()) {
    assert(!activeGuard);
    activeGuard = this;
    qApp->installEventFilter(this);
    progress_.Open();
}

BusyGuard::~BusyGuard() {
    qApp->removeEventFilter(this);
    activeGuard = nullptr;
    platform::TheHost().pointer->Shape(platform::PointerShape::Default);
}

BusyGuard* BusyGuard::Current() {
    return activeGuard;
}

bool BusyGuard::eventFilter(QObject* target, QEvent* event) {
    if (!IsUserInput(event->type())) return false;
    if (target->isWidgetType()) {
        const QWidget* window = static_cast<QWidget*>(target)->window();
        if (window == &progress_ || window->isModal()) return false;
        if (event->type() == QEvent::Close && IsTransient(*static_cast<QWidget*>(target))) return false;
    } else if (event->type() != QEvent::Shortcut) {
        // Native windows pass their input on to widgets, which come by here again.
        return false;
    }
    // A close event counts as agreed unless it is refused.
    event->ignore();
    if (event->type() == QEvent::Close) platform::TheHost().messages->Beep();
    return true;
}

bool RefusedWhileBusy() {
    if (!BusyGuard::Active()) return false;
    platform::TheHost().messages->Beep();
    return true;
}
