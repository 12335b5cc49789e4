// SPDX-License-Identifier: MIT
#pragma once

#include <array>

class QFontMetricsF;
class QRectF;
class QSizeF;

// The small digits 1 to 9 of a cell, on the screen and on paper alike.

// The size of their font: a twelfth of the cell's height, but never less than `legible` as far as three rows
// and columns of it fit.
double CandidateSize(const QSizeF& cell, double legible);

// Where they stand: three rows of three, with equal gaps between them and to the cell's edges.
std::array<QRectF, 9> CandidatePlaces(const QRectF& cell, const QFontMetricsF& metrics);
