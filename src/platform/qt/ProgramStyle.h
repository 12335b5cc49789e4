// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace platform_qt {

// The desktop's style, but for
// - when icons are made. The toolkit asks for some as soon as a menu bar or an inner window is made, most are
//   never seen, and one made of picture files loads every picture plug-in that there is: 2 ms of the start.
//   Here an icon is made when it is painted first.
// - the ground of a tool bar, which is the window's: a gradient as wide as that took 0.4 ms at every step of
// a
//   resize.
// - tool buttons: they show that they have the keyboard, and an arrow that opens a menu has no second one.
class ProgramStyle : public QProxyStyle {
  public:
    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

}  // namespace platform_qt
