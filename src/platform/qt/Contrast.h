#pragma once

#include <QColor>

namespace platform_qt {

// What text needs against its background to be read by weak eyes, and what a frame or a mark needs.
inline constexpr double TextContrast = 4.5;
inline constexpr double ShapeContrast = 3;

// How far two opaque colours are apart in luminance: 1, none, to 21, black and white.
double Contrast(const QColor& one, const QColor& other);

// The ink itself where it is `contrast` or more from the background, else the nearest shade of it towards
// black or white that is; plain black or white where none is.
QColor Legible(const QColor& ink, const QColor& background, double contrast = TextContrast);

}  // namespace platform_qt
