#include "support/QtSupport.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <utility>

void InNextDialog(std::function<void(QWidget& dialog)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr) << "no modal dialog was opened";
        act(*dialog);
        // Whatever the test did: the call that opened the dialog comes back.
        dialog->hide();
    });
}
