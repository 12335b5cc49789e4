// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QSize>

// Where the 81 cells and the 20 line bars of a grid window lie in its inner area. The edge k of the cells,
// k = 0..9, is the rounded k-th ninth of the side, so that the cells fill the area exactly at every size.
namespace GridLayout {

inline constexpr int SmallestSide = 180;

// index 1..81, row-major.
QRect CellPlace(int index, const QSize& area);

// Bars k = 0..9 run across the whole area, centred on edge k: 4 pixels thick around the boxes, 1 pixel
// inside. Half of the outer frame lies outside the area.
int BarThickness(int k);
QRect VerticalBar(int k, const QSize& area);
QRect HorizontalBar(int k, const QSize& area);

}  // namespace GridLayout
