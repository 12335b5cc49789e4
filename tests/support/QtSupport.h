#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>

// Runs what is waiting in the event loop, deletions included.
inline void ServeEvents() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

// A named child that must exist.
template <class Kind>
Kind& Child(const QObject& parent, const QString& name) {
    auto* child = parent.findChild<Kind*>(name);
    if (!child) throw std::runtime_error("no child named " + name.toStdString());
    return *child;
}

// Does something in the modal dialog that the next call opens.
void InNextDialog(std::function<void(QWidget& dialog)> act);
