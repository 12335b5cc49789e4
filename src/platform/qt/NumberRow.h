// SPDX-License-Identifier: MIT
#pragma once

class QKeyEvent;

namespace platform_qt {

// What a key says about digits, 0..9; -1: nothing.

// The character that was typed, out of whatever key: a keypad's, a number row's.
int TypedDigit(const QKeyEvent& event);
// The key itself, whatever is typed with it: its place in the number row, where layouts hide their digits
// behind Shift or type accents, or its face.
int DigitKey(const QKeyEvent& event);

}  // namespace platform_qt
