// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QString>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

// What the test program was called with, GoogleTest's own options taken out.
inline std::vector<std::string> programArguments;

// Runs what is waiting in the event loop, deletions included.
inline void ServeEvents() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

// Serves events until something is true; false after a minute, which a busy machine may need.
inline bool Eventually(const std::function<bool()>& isTrue) {
    return QTest::qWaitFor(isTrue, 60'000);
}

// A named child that must exist.
template <class Kind>
Kind& Child(const QObject& parent, const QString& name) {
    auto* child = parent.findChild<Kind*>(name);
    if (!child) throw std::runtime_error("no child named " + name.toStdString());
    return *child;
}

// Does something in the next modal window that opens, as soon as it is on screen and waits; then hides it, so
// that the call that opened it comes back. Several wait for one window each, in their order; one that never
// saw its window fails the test.
void InNextDialog(std::function<void(QWidget& dialog)> act);
