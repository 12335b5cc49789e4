// SPDX-License-Identifier: MIT
#include "platform/qt/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace platform_qt {

namespace {

// Of a channel 0..255: screens show numbers brighter than in proportion. As a table, because every digit
// that is painted asks.
double Linear(int channel) {
    static const auto table = [] {
        std::array<double, 256> values{};
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double share = static_cast<double>(i) / 255;
            values[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return values;
    }();
    return table[static_cast<std::size_t>(channel)];
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.red()) + 0.7152 * Linear(color.green()) + 0.0722 * Linear(color.blue());
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

QColor Mixed(const QColor& one, const QColor& other, int share) {
    const auto mix = [share](int a, int b) { return (a * share + b * (255 - share)) / 255; };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

QColor FocusColor(const QPalette& palette) {
    return Legible(palette.color(QPalette::Highlight), palette.color(QPalette::Window), ShapeContrast);
}

QColor Legible(const QColor& ink, const QColor& background, double contrast) {
    if (Contrast(ink, background) >= contrast) return ink;
    const bool blackIsFarther = Contrast(Qt::black, background) >= Contrast(Qt::white, background);
    const QColor goal(blackIsFarther ? Qt::black : Qt::white);
    // Towards the goal the contrast may fall first, where the ink is on the background's other side; from
    // there on it rises.
    int none = 0;
    int all = 255;
    while (none + 1 < all) {
        const int share = (none + all) / 2;
        (Contrast(Mixed(goal, ink, share), background) >= contrast ? all : none) = share;
    }
    return Mixed(goal, ink, all);
}

}  // namespace platform_qt
