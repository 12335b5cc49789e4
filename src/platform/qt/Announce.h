#pragma once

#include <QString>

namespace platform_qt {

// Has assistive technology, when there is any, say a text, wherever the keyboard is. Nothing is seen of it.
void Announce(const QString& text);

}  // namespace platform_qt
