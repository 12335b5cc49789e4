// SPDX-License-Identifier: MIT
#include "printing/PageLayout.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/qt/QtHost.h"
#include "settings/Settings.h"

namespace {

constexpr double shortPaperSide = 210;
constexpr double longPaperSide = 297;
constexpr double smallestGrid = 10;    // below it nobody reads the digits
constexpr double unprintableEdge = 5;  // most printers leave that much of the paper white
constexpr double footerHeight = 5;
constexpr double footerGap = 1;  // below the grid at least

std::optional<double> Millimetres(const Settings::Measure& row, const Settings::IniSnapshot& settings) {
    QString text = platform_qt::FromUtf8(Settings::Read(row, settings)).trimmed();
    bool isNumber = false;
    const double number = text.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number) || number < 0) return std::nullopt;
    return number;
}

// The asked margin, without one the usual; less where that leaves no room, and never where printers cannot
// print.
double MarginThatFits(const Settings::Measure& row, const Settings::IniSnapshot& settings, double room) {
    const double margin = Millimetres(row, settings).value_or(row.byDefault);
    return std::clamp(margin, unprintableEdge, room - unprintableEdge);
}

// At the foot of the page, or closer to the edge below a large grid.
QRectF FooterPlace(const QSizeF& paper, double gridBottom) {
    const double usualTop = paper.height() - 15;
    const double lowestTop = paper.height() - unprintableEdge - footerHeight;
    const double top = std::max(usualTop, gridBottom + footerGap);
    if (top > lowestTop) return {};
    return {2 * unprintableEdge, top, paper.width() - 4 * unprintableEdge, footerHeight};
}

}  // namespace

PageLayout LayoutFromSettings(const IniParamProcs::IniSnapshot& settings, bool landscape) {
    PageLayout page;
    page.paper = landscape ? QSizeF(longPaperSide, shortPaperSide) : QSizeF(shortPaperSide, longPaperSide);
    double size = Millimetres(Settings::GridSize, settings).value_or(0);
    if (size == 0) size = Settings::GridSize.byDefault;
    size = std::clamp(size, smallestGrid, shortPaperSide - 2 * unprintableEdge);
    // The left margin is one of upright pages; on the others the grid stands in the middle.
    const double left = landscape ? (page.paper.width() - size) / 2
                                  : MarginThatFits(Settings::MarginLeft, settings, page.paper.width() - size);
    // A grid that leaves room for the footer is not moved down onto it.
    const double foot = page.paper.height() - size - footerHeight - footerGap;
    const double top = MarginThatFits(Settings::MarginTop, settings,
                                      foot >= 2 * unprintableEdge ? foot : page.paper.height() - size);
    page.grid = QRectF(left, top, size, size);

    const bool thinner = Settings::Read(Settings::LinesWidth, settings);
    // A small grid gets finer lines, so that they leave room for its digits.
    page.thickLine = (thinner ? 0.4 : 0.8) * std::min(1.0, size / 60);
    page.thinLine = page.thickLine / 4;
    page.footer = FooterPlace(page.paper, page.grid.bottom());
    return page;
}
