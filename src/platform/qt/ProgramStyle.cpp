// SPDX-License-Identifier: MIT
#include "platform/qt/ProgramStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPointer>
#include <QStyleOption>

#include "platform/qt/Contrast.h"

namespace platform_qt {

namespace {

class LateIcon : public QIconEngine {
  public:
    LateIcon(const ProgramStyle& style, QStyle::StandardPixmap kind) : style_(&style), kind_(kind) {}

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

    QPointer<const ProgramStyle> style_;
    QStyle::StandardPixmap kind_;
    QIcon icon_;
};

}  // namespace

// Only where no plug-in of the desktop's chooses by what it is asked for.
QIcon ProgramStyle::standardIcon(StandardPixmap kind, const QStyleOption* /*option*/,
                                 const QWidget* /*widget*/) const {
    return QIcon(new LateIcon(*this, kind));
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    if (element != CE_ToolBar) QProxyStyle::drawControl(element, option, painter, widget);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (control != CC_ToolButton || !tool) {
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
    QStyleOptionToolButton shown = *tool;
    if (shown.features & QStyleOptionToolButton::Arrow) shown.features &= ~QStyleOptionToolButton::HasMenu;
    shown.state &= ~State_HasFocus;
    QProxyStyle::drawComplexControl(control, &shown, painter, widget);
    if (!(tool->state & State_HasFocus)) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(FocusColor(shown.palette), 2));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(shown.rect).adjusted(1, 1, -1, -1), 4, 4);
    painter->restore();
}

}  // namespace platform_qt
