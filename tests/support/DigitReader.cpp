// SPDX-License-Identifier: MIT
#include "support/DigitReader.h"

#include <QFont>
#include <QPainter>
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <map>

namespace DigitReader {

namespace {

constexpr int side = 20;   // of the shapes that are compared
constexpr int faint = 60;  // of 765: below it a pixel is paper

struct Ink {
    QColor color;  // where it is strongest
    QRect place;   // in the part, where there is at least a quarter of that
    QImage shape;  // its darkness stretched to a square; a narrow digit stays narrow
};

Ink InkOf(const QImage& image, const QRect& part, QRgb paper) {
    Ink ink;
    const auto distance = [paper](QRgb color) {
        return std::abs(qRed(color) - qRed(paper)) + std::abs(qGreen(color) - qGreen(paper)) +
               std::abs(qBlue(color) - qBlue(paper));
    };
    const auto forEachPixel = [&](const auto& visit) {
        for (int y = 0; y < part.height(); ++y) {
            const auto* line =
                reinterpret_cast<const QRgb*>(image.constScanLine(part.top() + y)) + part.left();
            for (int x = 0; x < part.width(); ++x) visit(x, y, line[x]);
        }
    };
    int strongest = 0;
    forEachPixel([&](int, int, QRgb color) {
        if (distance(color) <= strongest) return;
        strongest = distance(color);
        ink.color = color;
    });
    QImage page(part.size(), QImage::Format_Grayscale8);
    page.fill(0);
    forEachPixel([&](int x, int y, QRgb color) {
        if (distance(color) == 0) return;
        if (distance(color) > std::max(faint, strongest / 4)) ink.place |= QRect(x, y, 1, 1);
        page.scanLine(y)[x] = static_cast<uchar>(distance(color) * 255 / strongest);
    });
    const int margin = std::max(0, ink.place.height() / 2 - ink.place.width()) / 2;
    ink.shape = page.copy(ink.place.adjusted(-margin, 0, margin, 0))
                    .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .convertToFormat(QImage::Format_Grayscale8);
    return ink;
}

// A digit as tall as the ink that it is compared with: at few pixels a glyph has a shape of its own.
const QImage& Model(int digit, int height) {
    static std::map<std::pair<int, int>, Ink> models;
    Ink& model = models[{digit, height}];
    QFont font(QStringLiteral("Arial"));
    for (int size = height + height / 4; model.place.height() < height; ++size) {
        QImage page(3 * height, 3 * height, QImage::Format_RGB32);
        page.fill(Qt::white);
        font.setPixelSize(size);
        QPainter painter(&page);
        painter.setFont(font);
        painter.drawText(page.rect(), Qt::AlignCenter, QString::number(digit));
        painter.end();
        model = InkOf(page, page.rect(), qRgb(255, 255, 255));
    }
    return model.shape;
}

int Difference(const QImage& one, const QImage& other) {
    int sum = 0;
    for (int i = 0; i < side * side; ++i) sum += std::abs(one.constBits()[i] - other.constBits()[i]);
    return sum;
}

// Part `number`, from 1 row by row, of count x count.
QRect Part(const QRect& whole, int count, int number) {
    const QSizeF size = QSizeF(whole.size()) / count;
    const QPointF corner((number - 1) % count * size.width(), (number - 1) / count * size.height());
    return QRectF(whole.topLeft() + corner, size).toRect();
}

}  // namespace

Finding Read(const QImage& image, const QRect& part, const QColor& paper) {
    const Ink ink = InkOf(image, part, paper.rgb());
    if (ink.place.isEmpty()) return {};
    Finding finding{0, ink.color, ink.place.height()};
    int least = INT_MAX;
    for (int d = 1; d <= 9; ++d) {
        const int difference = Difference(ink.shape, Model(d, ink.place.height()));
        if (difference < least) finding.digit = d;
        least = std::min(least, difference);
    }
    return finding;
}

QRect CellPart(const QImage& image, int index, int margin) {
    return Part(image.rect(), 9, index).adjusted(margin, margin, -margin, -margin);
}

QRect CandidatePart(const QImage& image, int index, int ninth, int margin) {
    return Part(Part(image.rect(), 9, index), 3, ninth).intersected(CellPart(image, index, margin));
}

}  // namespace DigitReader
