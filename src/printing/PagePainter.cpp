// SPDX-License-Identifier: MIT
#include "printing/PagePainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/QtHost.h"
#include "printing/CandidatePlaces.h"
#include "printing/PageLayout.h"

namespace {

// Fonts come in whole units: with hundredths of a millimetre their sizes are exact enough.
constexpr double unitsPerMm = 100;
constexpr double digitRatio = 0.8;                    // of the cell's height
constexpr double legibleCandidate = 6.5 * 25.4 / 72;  // 6.5 points, in millimetres
constexpr double footerTextSize = 3;                  // millimetres

QFont PaperFont(double units, bool bold = false) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(units))));
    font.setBold(bold);
    // Fitting glyphs to the pixels of a screen would move them on the paper.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

class Page {
  public:
    Page(QPainter& painter, const PrintedGrid& grid, const PageLayout& layout, const PageInk& ink)
        : painter_(painter),
          grid_(grid),
          layout_(layout),
          ink_(ink),
          frame_(layout.grid.topLeft() * unitsPerMm, layout.grid.size() * unitsPerMm),
          pitch_((frame_.width() - layout.thickLine * unitsPerMm) / 9) {}

    void Paint() const {
        if (!ink_.blackAndWhite) painter_.fillRect(frame_, Ink(0));
        for (int i = 0; i < 81; ++i) PaintCell(i);
        // Thick lines last: they cross the thin ones.
        for (int k = 0; k <= 9; ++k) {
            if (k % 3 != 0) PaintLines(k, layout_.thinLine);
        }
        for (int k = 0; k <= 9; k += 3) PaintLines(k, layout_.thickLine);
        PaintFooter();
    }

  private:
    QColor Ink(std::size_t index) const {
        return ink_.blackAndWhite ? QColor(Qt::black) : platform_qt::FromLowRed(ink_.colors[index]);
    }

    // The middle of line k, from the frame's outer edge. All lines are one pitch apart.
    double LineMiddle(int k) const { return layout_.thickLine * unitsPerMm / 2 + k * pitch_; }

    void PaintLines(int k, double millimetres) const {
        // On a screen a line of much less than a pixel would be too pale to see.
        const double halfPixel = 0.5 / painter_.deviceTransform().m11();
        const double width = std::max(millimetres * unitsPerMm, halfPixel);
        const double start = std::clamp(LineMiddle(k) - width / 2, 0.0, frame_.width() - width);
        painter_.fillRect(QRectF(frame_.left() + start, frame_.top(), width, frame_.height()), Ink(2));
        painter_.fillRect(QRectF(frame_.left(), frame_.top() + start, frame_.width(), width), Ink(2));
    }

    void PaintCell(int index) const {
        const PrintedCell& cell = grid_.cells[static_cast<std::size_t>(index)];
        const QRectF place(frame_.left() + LineMiddle(index % 9), frame_.top() + LineMiddle(index / 9),
                           pitch_, pitch_);
        if (cell.value == 0) return PaintCandidates(cell, place);
        painter_.setFont(PaperFont(digitRatio * pitch_, cell.locked && ink_.blackAndWhite));
        painter_.setPen(Ink(cell.locked ? 3 : 4));
        painter_.drawText(place, Qt::AlignCenter | Qt::TextDontClip, QString::number(cell.value));
    }

    void PaintCandidates(const PrintedCell& cell, const QRectF& place) const {
        if (cell.candidates.none()) return;
        const QFont font = PaperFont(CandidateSize(place.size(), legibleCandidate * unitsPerMm));
        const auto places = CandidatePlaces(place, QFontMetricsF(font));
        painter_.setFont(font);
        painter_.setPen(Ink(6));
        for (std::size_t d = 1; d <= 9; ++d) {
            if (!cell.candidates.test(d)) continue;
            painter_.drawText(places[d - 1], Qt::AlignCenter | Qt::TextDontClip, QString::number(d));
        }
    }

    void PaintFooter() const {
        if (layout_.footer.isEmpty()) return;
        const QRectF place(layout_.footer.topLeft() * unitsPerMm, layout_.footer.size() * unitsPerMm);
        const QFont font = PaperFont(footerTextSize * unitsPerMm);
        painter_.setFont(font);
        painter_.setPen(Qt::black);
        painter_.drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                          QFontMetricsF(font).elidedText(grid_.caption, Qt::ElideMiddle, place.width()));
    }

    QPainter& painter_;
    const PrintedGrid& grid_;
    const PageLayout& layout_;
    const PageInk& ink_;
    QRectF frame_;
    double pitch_;  // of the lines, which is a cell with one line
};

}  // namespace

void PaintPage(QPainter& painter, double unitsPerMillimetre, const PrintedGrid& grid, const PageLayout& page,
               const PageInk& ink) {
    painter.save();
    painter.scale(unitsPerMillimetre / unitsPerMm, unitsPerMillimetre / unitsPerMm);
    Page(painter, grid, page, ink).Paint();
    painter.restore();
}
