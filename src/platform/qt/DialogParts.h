// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QWidget;

// What the program's own dialogs have in common.
namespace platform_qt {

// The row "Ok", which Enter presses, and "Annuler", at its right end. A press calls click(1) or click(0).
QWidget* CommandRow(QWidget* dialog, const std::function<void(int)>& click);

// F1 opens the help at the window's topic, whatever in it has the keyboard; `topic` is asked then. 0: none.
void HelpOnF1(QWidget& window, std::function<int()> topic);

}  // namespace platform_qt
