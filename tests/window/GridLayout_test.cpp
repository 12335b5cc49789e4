#include "document/window/GridLayout.h"

#include <gtest/gtest.h>

// Cells without a gap or an overlap, row by row, each at the pixel that is nearest.
TEST(Layout, CellsFillTheAreaEvenly) {
    for (const QSize area : {QSize(180, 180), QSize(181, 199), QSize(640, 477), QSize(1003, 333)}) {
        const auto place = [&](int row, int column) {
            return GridLayout::CellPlace(row * 9 + column + 1, area);
        };
        for (int i = 0; i < 81; ++i) {
            const QRect cell = place(i / 9, i % 9);
            const QPoint next(i % 9 < 8 ? place(i / 9, i % 9 + 1).left() : area.width(),
                              i / 9 < 8 ? place(i / 9 + 1, i % 9).top() : area.height());
            EXPECT_EQ(cell.bottomRight() + QPoint(1, 1), next) << i;
            EXPECT_TRUE(i > 0 || cell.topLeft().isNull());
            EXPECT_NEAR(cell.left(), i % 9 * area.width() / 9.0, 0.5) << i;
            EXPECT_NEAR(cell.top(), i / 9 * area.height() / 9.0, 0.5) << i;
        }
    }
}
