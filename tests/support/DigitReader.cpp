#include "support/DigitReader.h"

#include <QFont>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <utility>

namespace DigitReader {

namespace {

constexpr int side = 20;   // of the shapes that are compared
constexpr int faint = 60;  // of 765: below it a pixel is paper

using Shape = std::array<int, side * side>;  // 0 paper, 255 ink

int Distance(QRgb one, QRgb other) {
    return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
           std::abs(qBlue(one) - qBlue(other));
}

template <class Visit>
void ForEachPixel(const QImage& image, const QRect& part, Visit visit) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = part.left(); x <= part.right(); ++x) visit(x, y, line[x]);
    }
}

// Where there is at least a quarter of the strongest ink, and that ink.
std::pair<QRect, QRgb> FindInk(const QImage& image, const QRect& part, QRgb paper) {
    QRgb strongest = paper;
    ForEachPixel(image, part, [&](int, int, QRgb color) {
        if (Distance(color, paper) > Distance(strongest, paper)) strongest = color;
    });
    const int least = std::max(faint, Distance(strongest, paper) / 4);
    QRect place;
    ForEachPixel(image, part, [&](int x, int y, QRgb color) {
        if (Distance(color, paper) > least) place |= QRect(x, y, 1, 1);
    });
    return {place, strongest};
}

// The ink stretched to a square; a narrow digit stays narrow.
Shape ShapeOf(const QImage& image, const QRect& place, QRgb paper, QRgb ink) {
    const int margin = std::max(0, place.height() / 2 - place.width()) / 2;
    QImage square(place.width() + 2 * margin, place.height(), QImage::Format_Grayscale8);
    square.fill(0);
    ForEachPixel(image, place, [&](int x, int y, QRgb color) {
        square.scanLine(y - place.top())[x - place.left() + margin] =
            static_cast<uchar>(Distance(color, paper) * 255 / Distance(ink, paper));
    });
    square = square.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                 .convertToFormat(QImage::Format_Grayscale8);
    Shape shape{};
    for (int y = 0; y < side; ++y) std::copy_n(square.constScanLine(y), side, shape.begin() + y * side);
    return shape;
}

// A digit as tall as the ink that it is compared with: at few pixels a glyph has a shape of its own.
Shape Model(int digit, int height) {
    QImage page(3 * height, 3 * height, QImage::Format_RGB32);
    QRect place;
    for (int size = height; place.height() < height; ++size) {
        page.fill(Qt::white);
        QFont font(QStringLiteral("Arial"));
        font.setPixelSize(size);
        QPainter painter(&page);
        painter.setFont(font);
        painter.drawText(page.rect(), Qt::AlignCenter, QString::number(digit));
        painter.end();
        place = FindInk(page, page.rect(), qRgb(255, 255, 255)).first;
    }
    return ShapeOf(page, place, qRgb(255, 255, 255), qRgb(0, 0, 0));
}

const Shape& ModelOf(int digit, int height) {
    static std::map<std::pair<int, int>, Shape> models;
    const auto [model, isNew] = models.try_emplace({digit, height});
    if (isNew) model->second = Model(digit, height);
    return model->second;
}

int Difference(const Shape& one, const Shape& other) {
    int sum = 0;
    for (std::size_t i = 0; i < one.size(); ++i) sum += std::abs(one[i] - other[i]);
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
    const auto [place, ink] = FindInk(image, part, paper.rgb());
    if (place.isEmpty()) return {};
    Finding finding;
    finding.ink = ink;
    finding.place = QRectF((place.left() - part.left()) / double(part.width()),
                           (place.top() - part.top()) / double(part.height()),
                           place.width() / double(part.width()), place.height() / double(part.height()));
    const Shape shape = ShapeOf(image, place, paper.rgb(), ink);
    const auto difference = [&, height = place.height()](int digit) {
        return Difference(shape, ModelOf(digit, height));
    };
    finding.digit = 1;
    for (int d = 2; d <= 9; ++d) {
        if (difference(d) < difference(finding.digit)) finding.digit = d;
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
