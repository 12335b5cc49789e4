// SPDX-License-Identifier: MIT
#include "shell/FocusRing.h"

#include <QAction>
#include <QKeyEvent>
#include <QShortcut>
#include <QToolBar>
#include <algorithm>
#include <utility>

#include "document/window/BusyGuard.h"

FocusRing::FocusRing(QWidget* window) : QObject(window), window_(window) {
    for (const auto& [key, step] :
         {std::pair{QKeyCombination(Qt::Key_F6), 1}, {Qt::SHIFT | Qt::Key_F6, -1}}) {
        connect(new QShortcut(key, window), &QShortcut::activated, this, [this, step = step] { Walk(step); });
    }
}

void FocusRing::Add(QWidget* part, std::function<QWidget*()> stop) {
    regions_.push_back({part, std::move(stop)});
}

void FocusRing::Add(QToolBar* bar) {
    for (QAction* action : bar->actions()) bar->widgetForAction(action)->installEventFilter(this);
    Add(bar, [bar] { return bar->widgetForAction(bar->actions().constFirst()); });
}

void FocusRing::Walk(int step) {
    if (BusyGuard::Active()) return;
    const QWidget* focus = window_->focusWidget();
    const auto here = std::ranges::find_if(regions_, [focus](const Region& region) {
        return focus && focus->hasFocus() && (region.widget == focus || region.widget->isAncestorOf(focus));
    });
    const auto count = static_cast<int>(regions_.size());
    int place = here == regions_.end() ? (step > 0 ? -1 : count) : static_cast<int>(here - regions_.begin());
    for (int n = 0; n < count; ++n) {
        place = (place + step + count) % count;
        QWidget* stop = regions_[static_cast<std::size_t>(place)].stop();
        if (!stop || !stop->isVisible()) continue;
        return stop->setFocus(step > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    auto* tool = qobject_cast<QWidget*>(watched);
    auto* bar = tool ? qobject_cast<QToolBar*>(tool->parentWidget()) : nullptr;
    if (!bar || event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent&>(*event).key();
    const QList<QAction*> tools = bar->actions();
    const auto last = static_cast<int>(tools.size()) - 1;
    int place = 0;
    while (place < last && bar->widgetForAction(tools[place]) != tool) ++place;
    if (key == Qt::Key_Right) {
        ++place;
    } else if (key == Qt::Key_Left) {
        --place;
    } else if (key == Qt::Key_Home) {
        place = 0;
    } else if (key == Qt::Key_End) {
        place = last;
    } else {
        return QObject::eventFilter(watched, event);
    }
    if (QWidget* next = bar->widgetForAction(tools[std::clamp(place, 0, last)]); next->isVisible()) {
        next->setFocus(Qt::OtherFocusReason);
    }
    return true;
}
