#pragma once

#include <array>

class QFontMetricsF;
class QRectF;

// Where the small digits 1 to 9 stand in a cell, on the screen and on paper alike: three rows of three, with
// equal gaps between them and to the cell's edges.
std::array<QRectF, 9> CandidatePlaces(const QRectF& cell, const QFontMetricsF& metrics);
