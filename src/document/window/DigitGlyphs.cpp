// SPDX-License-Identifier: MIT
#include "document/window/DigitGlyphs.h"

#include <QCoreApplication>
#include <QPainter>
#include <QRawFont>
#include <algorithm>
#include <cmath>
#include <list>

namespace {

constexpr std::size_t keptSizes = 4;  // of values and candidates, before and after a step of a resize

QFont FontOfSize(int pixels) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixels);
    return font;
}

}  // namespace

DigitGlyphs::DigitGlyphs(int pixels) : pixels_(pixels), font_(FontOfSize(pixels)), metrics_(font_) {
    const QRawFont raw = QRawFont::fromFont(font_);
    for (int d = 1; d <= 9; ++d) {
        Digit& digit = digits_[static_cast<std::size_t>(d - 1)];
        const QString text = QString::number(d);
        digit.run.setRawFont(raw);
        digit.run.setGlyphIndexes(raw.glyphIndexesForString(text));
        digit.run.setPositions({QPointF()});
        digit.advance = metrics_.horizontalAdvance(text);
    }
}

const DigitGlyphs& DigitGlyphs::OfSize(double pixels) {
    static std::list<DigitGlyphs> kept;  // the last used first
    // Fonts must not outlive the application.
    if (kept.empty()) qAddPostRoutine([] { kept.clear(); });
    const int size = std::max(1, static_cast<int>(std::lround(pixels)));
    const auto found = std::ranges::find(kept, size, &DigitGlyphs::pixels_);
    if (found != kept.end()) {
        kept.splice(kept.begin(), kept, found);
    } else {
        if (kept.size() == keptSizes) kept.pop_back();
        kept.push_front(DigitGlyphs(size));
    }
    return kept.front();
}

void DigitGlyphs::Paint(QPainter& painter, const QString& text, const QRectF& place) const {
    const int number = text.size() == 1 ? text.front().digitValue() : -1;
    if (number < 1) {  // a file may hold a value that is no digit
        painter.setFont(font_);
        painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
        return;
    }
    const auto& [run, advance] = digits_[static_cast<std::size_t>(number - 1)];
    const QPointF base(place.left() + (place.width() - advance) / 2,
                       place.top() + (place.height() - metrics_.height()) / 2 + metrics_.ascent());
    painter.drawGlyphRun(base, run);
}
