#include "platform/qt/Contrast.h"

#include <algorithm>
#include <cmath>

namespace platform_qt {

namespace {

// Of a channel, 0..1: screens show numbers brighter than in proportion.
double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

// `share` 0..255 of the one, the rest of the other.
QColor Mixed(const QColor& one, const QColor& other, int share) {
    const auto mix = [share](int a, int b) { return (a * share + b * (255 - share)) / 255; };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax(Luminance(one), Luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
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
