// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <array>

class QPainter;
class QRectF;

// The digits of one size, ready to be painted. A text is laid out anew whenever it is painted, which for a
// grid's digits took longer than everything else: 45 us a cell with six candidates, now 9.
class DigitGlyphs {
  public:
    // The last few sizes that were asked for are kept.
    static const DigitGlyphs& OfSize(double pixels);

    const QFontMetricsF& Metrics() const { return metrics_; }
    // In the middle of the place, with the painter's pen.
    void Paint(QPainter& painter, const QString& text, const QRectF& place) const;

  private:
    struct Digit {
        QGlyphRun run;
        double advance = 0;
    };

    explicit DigitGlyphs(int pixels);

    int pixels_;
    QFont font_;
    QFontMetricsF metrics_;
    std::array<Digit, 9> digits_;
};
