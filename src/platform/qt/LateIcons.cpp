// SPDX-License-Identifier: MIT
#include "platform/qt/LateIcons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPointer>

namespace platform_qt {

namespace {

class LateIcon : public QIconEngine {
  public:
    LateIcon(const LateIcons& style, QStyle::StandardPixmap kind) : style_(&style), kind_(kind) {}

    void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State state) override {
        Made().paint(painter, area, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Made().pixmap(size, 1.0, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Made().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return Made().availableSizes(mode, state);
    }
    bool isNull() override { return Made().isNull(); }
    QIconEngine* clone() const override { return new LateIcon(*this); }

  private:
    const QIcon& Made() {
        if (icon_.isNull() && style_) icon_ = style_->baseStyle()->standardIcon(kind_);
        return icon_;
    }

    QPointer<const LateIcons> style_;
    QStyle::StandardPixmap kind_;
    QIcon icon_;
};

}  // namespace

// Only where no plug-in of the desktop's chooses by what it is asked for.
QIcon LateIcons::standardIcon(StandardPixmap kind, const QStyleOption* /*option*/,
                              const QWidget* /*widget*/) const {
    return QIcon(new LateIcon(*this, kind));
}

}  // namespace platform_qt
