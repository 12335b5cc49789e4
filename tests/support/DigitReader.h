// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

// Reads digits off a picture, as an eye would: by where there is ink and by what shape it has.
namespace DigitReader {

// What stands in a part of a picture.
struct Finding {
    int digit = 0;   // the one that looks most like the ink; 0: there is no ink
    QColor ink;      // where it is strongest
    int height = 0;  // in pixels
};

// `part` in pixels of the image, which has 32 bits a pixel. Everything that differs from `paper` is ink.
Finding Read(const QImage& image, const QRect& part, const QColor& paper);

// A part of a grid's picture: cell 1..81 of 9 x 9, or its ninth 1..9 of 3 x 3, without the `margin` pixels at
// the cell's edges where lines are.
QRect CellPart(const QImage& image, int index, int margin);
QRect CandidatePart(const QImage& image, int index, int ninth, int margin);

}  // namespace DigitReader
