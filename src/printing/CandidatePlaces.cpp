// SPDX-License-Identifier: MIT
#include "printing/CandidatePlaces.h"

#include <QFontMetricsF>
#include <QRectF>
#include <algorithm>

double CandidateSize(const QSizeF& cell, double legible) {
    const double fits = std::min(cell.height() / 4, cell.width() / 2.2);
    return std::max(cell.height() / 12, std::min(legible, fits));
}

std::array<QRectF, 9> CandidatePlaces(const QRectF& cell, const QFontMetricsF& metrics) {
    const double width = metrics.horizontalAdvance(QLatin1Char('0'));
    const double height = metrics.height();
    const double gapX = (cell.width() - 3 * width) / 4;
    const double gapY = (cell.height() - 3 * height) / 4;
    std::array<QRectF, 9> places;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto column = static_cast<double>(i % 3);
        const auto row = static_cast<double>(i / 3);
        places[i] = QRectF(cell.left() + gapX + (width + gapX) * column,
                           cell.top() + gapY + (height + gapY) * row, width, height);
    }
    return places;
}
