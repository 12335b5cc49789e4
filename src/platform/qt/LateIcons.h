// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace platform_qt {

// The desktop's style, but for when it makes its icons. The toolkit asks for some as soon as a menu bar or an
// inner window is made, most are never seen, and one made of picture files loads every picture plug-in that
// there is: 2 ms of the start. Here an icon is made when it is painted first.
class LateIcons : public QProxyStyle {
  public:
    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
};

}  // namespace platform_qt
