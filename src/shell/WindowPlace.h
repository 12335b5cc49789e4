// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>

class QWidget;

// Where a window stands on the screen, from one start to the next. It is kept in the user's state folder.
namespace WindowPlace {

// To its last place, made to fit today's screens. False, and nothing done, when none is known.
bool Restore(QWidget& window);
void Keep(const QWidget& window);

// What a window can have of the screen that it is on, its own frame and title taken off.
QSize Room(const QWidget& window);

}  // namespace WindowPlace
