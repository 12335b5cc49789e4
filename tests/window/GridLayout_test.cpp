#include "document/window/GridLayout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

TEST(Layout, CellsCoverEveryPixelOnceAndRunRowByRow) {
    for (const QSize area : {QSize(180, 180), QSize(181, 199), QSize(640, 477), QSize(1003, 333)}) {
        std::vector<int> cellAt(static_cast<std::size_t>(area.width() * area.height()));
        const auto at = [&](int x, int y) -> int& {
            return cellAt[static_cast<std::size_t>(y * area.width() + x)];
        };
        for (int i = 1; i <= 81; ++i) {
            const QRect place = GridLayout::CellPlace(i, area);
            ASSERT_TRUE(QRect(QPoint(0, 0), area).contains(place)) << i;
            for (int n = 0; n < place.width() * place.height(); ++n) {
                int& cell = at(place.left() + n % place.width(), place.top() + n / place.width());
                EXPECT_EQ(std::exchange(cell, i), 0);
            }
        }
        EXPECT_EQ(std::count(cellAt.begin(), cellAt.end(), 0), 0);
        for (int i = 0; i < 81; ++i) {
            EXPECT_EQ(at(area.width() * (2 * (i % 9) + 1) / 18, area.height() * (2 * (i / 9) + 1) / 18),
                      i + 1);
        }
    }
}

TEST(Layout, BarsLieOnTheEdgesOfTheCells) {
    const QSize area(1003, 333);
    for (int k = 0; k <= 9; ++k) {
        const int thickness = k % 3 == 0 ? 4 : 1;
        const QRect vertical = GridLayout::VerticalBar(k, area);
        const QRect horizontal = GridLayout::HorizontalBar(k, area);
        EXPECT_EQ(vertical.size(), QSize(thickness, area.height())) << k;
        EXPECT_EQ(horizontal.size(), QSize(area.width(), thickness)) << k;
        const QPoint corner =
            k == 9 ? QPoint(area.width(), area.height()) : GridLayout::CellPlace(k * 10 + 1, area).topLeft();
        EXPECT_EQ(vertical.left() + thickness / 2, corner.x()) << k;
        EXPECT_EQ(horizontal.top() + thickness / 2, corner.y()) << k;
        EXPECT_EQ(vertical.top() + horizontal.left(), 0) << k;
    }
}

}  // namespace
