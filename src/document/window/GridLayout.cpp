// SPDX-License-Identifier: MIT
#include "document/window/GridLayout.h"

#include <cmath>

namespace GridLayout {

namespace {

int Edge(int k, int side) {
    return static_cast<int>(std::lround(static_cast<float>(k) * static_cast<float>(side) / 9.0F));
}

}  // namespace

QRect CellPlace(int index, const QSize& area) {
    const int column = (index - 1) % 9;
    const int row = (index - 1) / 9;
    const QPoint topLeft(Edge(column, area.width()), Edge(row, area.height()));
    const QPoint next(Edge(column + 1, area.width()), Edge(row + 1, area.height()));
    return {topLeft, QSize(next.x() - topLeft.x(), next.y() - topLeft.y())};
}

int BarThickness(int k) {
    return k % 3 == 0 ? 4 : 1;
}

QRect VerticalBar(int k, const QSize& area) {
    const int thickness = BarThickness(k);
    return {Edge(k, area.width()) - thickness / 2, 0, thickness, area.height()};
}

QRect HorizontalBar(int k, const QSize& area) {
    const int thickness = BarThickness(k);
    return {0, Edge(k, area.height()) - thickness / 2, area.width(), thickness};
}

}  // namespace GridLayout
