// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

namespace platform_qt {

// What text needs against its background to be read by weak eyes, and what a frame or a mark needs.
inline constexpr double TextContrast = 4.5;
inline constexpr double ShapeContrast = 3;

// How far two opaque colours are apart in luminance: 1, none, to 21, black and white.
double Contrast(const QColor& one, const QColor& other);

// `share` 0..255 of the one, the rest of the other.
QColor Mixed(const QColor& one, const QColor& other, int share);

// The frame of what has the keyboard, seen on the window's background.
QColor FocusColor(const QPalette& palette);

// The ink itself where it is `contrast` or more from the background, else the nearest shade of it towards
// black or white that is; plain black or white where none is.
QColor Legible(const QColor& ink, const QColor& background, double contrast = TextContrast);

}  // namespace platform_qt
