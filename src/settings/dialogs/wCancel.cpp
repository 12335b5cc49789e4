// SPDX-License-Identifier: MIT
#include "settings/dialogs/wCancel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>

#include "platform/qt/DialogParts.h"
#include "settings/HelpContexts.h"

namespace {
constexpr int redrawInterval = 40;  // milliseconds
constexpr int unseenTime = 200;
}  // namespace

wCancel::wCancel(QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      pbProgress_(new QProgressBar(this)),
      cmdCancel_(new QPushButton(tr("Annuler"), this)),
      redraw_(new QTimer(this)),
      appear_(new QTimer(this)) {
    setObjectName(QStringLiteral("wCancel"));
    setWindowTitle(QStringLiteral("Calcul en cours..."));
    pbProgress_->setObjectName(QStringLiteral("pbProgress"));
    pbProgress_->setAccessibleName(QStringLiteral("Avancement du calcul"));
    pbProgress_->setRange(0, 100);
    pbProgress_->setMinimumWidth(260);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    connect(cmdCancel_, &QPushButton::clicked, this, &wCancel::cmdCancel_Click);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(12);
    layout->addWidget(pbProgress_);
    layout->addWidget(cmdCancel_, 0, Qt::AlignHCenter);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    platform_qt::HelpOnF1(*this, [] { return HelpContext::Calcul; });
    // An attempt takes microseconds and sets the bar, and a bar that changes paints at once; drawing it a
    // few times a second keeps the run fast.
    redraw_->setInterval(redrawInterval);
    connect(redraw_, &QTimer::timeout, this,
            [this] { pbProgress_->setValue(static_cast<int>(std::lround(percent_))); });
    appear_->setInterval(unseenTime);
    connect(appear_, &QTimer::timeout, this, [this] {
        // Over a question of the run it would hide that.
        if (QApplication::activeModalWidget()) return;
        appear_->stop();
        redraw_->start();
        show();
    });
}

void wCancel::Open() {
    open_ = true;
    appear_->start();
}

void wCancel::Progress(double percent) {
    percent_ = percent;
}

void wCancel::cmdCancel_Click() {
    open_ = false;
    appear_->stop();
    hide();
}

void wCancel::closeEvent(QCloseEvent* event) {
    cmdCancel_Click();
    event->accept();
}

void wCancel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return cmdCancel_Click();
    QWidget::keyPressEvent(event);
}
