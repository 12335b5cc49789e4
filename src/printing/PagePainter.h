// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <array>
#include <bitset>
#include <cstdint>

#include "settings/ColorTable.h"

class QPainter;
struct PageLayout;

struct PrintedCell {
    int value = 0;  // 0: empty
    bool locked = false;
    std::bitset<10> candidates;  // bit d: the small digit d is shown
};

struct PrintedGrid {
    std::array<PrintedCell, 81> cells;  // row by row
    QString caption;
};

struct PageInk {
    ColorTable::Colors colors = ColorTable::Defaults;
    // Black on white paper; heavier digits then tell the givens from the other values.
    bool blackAndWhite = false;
};

// Paints the page with its corner at the painter's origin. The one routine for the picture on the screen and
// for the paper.
void PaintPage(QPainter& painter, double unitsPerMillimetre, const PrintedGrid& grid, const PageLayout& page,
               const PageInk& ink);
