// SPDX-License-Identifier: MIT
#include "shell/wSplash.h"

#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include "diagnostics/ErrorHandling.h"
#include "platform/Host.h"

namespace {
constexpr QSize splashSize(480, 300);
constexpr int displayTime = 3000;  // milliseconds
}  // namespace

wSplash::wSplash(QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      lblVersion_(new QLabel(this)),
      tmrClose_(new QTimer(this)) {
    setObjectName(QStringLiteral("wSplash"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QStringLiteral("Ninarix"));
    setFixedSize(splashSize);
    Trap("wSplash", "Form_Load", [this] {
        const platform::Application& application = *platform::TheHost().application;
        lblVersion_->setObjectName(QStringLiteral("lblVersion"));
        lblVersion_->setText(
            QStringLiteral("%1.%2").arg(application.MajorVersion()).arg(application.MinorVersion()));
        QFont digits(QStringLiteral("Arial"));
        digits.setPixelSize(20);
        lblVersion_->setFont(digits);
        lblVersion_->setStyleSheet(QStringLiteral("color: #24476f"));
        lblVersion_->adjustSize();
        lblVersion_->move(width() - lblVersion_->width() - 24, height() - lblVersion_->height() - 16);
    });
    tmrClose_->setSingleShot(true);
    tmrClose_->setInterval(displayTime);
    connect(tmrClose_, &QTimer::timeout, this,
            [this] { Trap("wSplash", "tmrClose_Timer", [this] { close(); }); });
    tmrClose_->start();
}

void wSplash::Present() {
    // At start-up the window manager has not placed the owner yet, so the screen is the measure.
    move(parentWidget()->screen()->availableGeometry().center() - rect().center());
    show();
    raise();
}

void wSplash::StayOpen() {
    tmrClose_->stop();
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, false);  // hides it
    Present();
    activateWindow();
}

void wSplash::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QIcon(QStringLiteral(":/icons/splash.svg")).paint(&painter, rect());
}

void wSplash::mousePressEvent(QMouseEvent* /*event*/) {
    Trap("wSplash", "Form_Click", [this] {
        if (!tmrClose_->isActive()) close();
    });
}

void wSplash::keyPressEvent(QKeyEvent* event) {
    Trap("wSplash", "Form_KeyDown", [&] {
        if (event->key() == Qt::Key_Escape && !tmrClose_->isActive()) close();
    });
}
