// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

namespace IniParamProcs {
class IniSnapshot;
}

// Where everything stands on the paper. Lengths are millimetres from the paper's upper left corner.
struct PageLayout {
    QSizeF paper;
    // Up to the outer edges of the frame's lines: what a ruler laid on the page measures.
    QRectF grid;
    double thickLine = 0;  // frame and boxes
    double thinLine = 0;
    // Empty where the grid leaves no room for it.
    QRectF footer;
};

// A4 with the margins and the size of the settings, which hold whatever text the user typed, with a point or
// a comma. What is no number, or would leave the paper, gives way to what fits on it.
PageLayout LayoutFromSettings(const IniParamProcs::IniSnapshot& settings, bool landscape);
