// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QStatusBar;

namespace platform_qt {

// Where what is announced lives. The last one counts.
void AnnounceIn(QStatusBar& bar);

// Has screen readers speak a text at once, whatever has the keyboard; nothing is to be seen of it. Without a
// status bar, or when nobody listens, nothing happens.
void Announce(const QString& text);

}  // namespace platform_qt
