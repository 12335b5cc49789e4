#include "document/window/GridLayout.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

TEST(Layout, CellsCoverEveryPixelOnceAndRunRowByRow) {
    for (const QSize area : {QSize(180, 180), QSize(181, 199), QSize(640, 477), QSize(1003, 333)}) {
        std::vector<int> cellAt(static_cast<std::size_t>(area.width() * area.height()));
        for (int i = 1; i <= 81; ++i) {
            const QRect place = GridLayout::CellPlace(i, area);
            ASSERT_TRUE(QRect(QPoint(0, 0), area).contains(place)) << i;
            for (int y = place.top(); y <= place.bottom(); ++y) {
                for (int x = place.left(); x <= place.right(); ++x) {
                    int& cell = cellAt[static_cast<std::size_t>(y * area.width() + x)];
                    EXPECT_EQ(cell, 0) << i;
                    cell = i;
                }
            }
        }
        // The middle of every ninth of a side belongs to its cell, and no pixel to none.
        for (int i = 1; i <= 81; ++i) {
            const int x = area.width() * (2 * ((i - 1) % 9) + 1) / 18;
            const int y = area.height() * (2 * ((i - 1) / 9) + 1) / 18;
            EXPECT_EQ(cellAt[static_cast<std::size_t>(y * area.width() + x)], i);
        }
        EXPECT_EQ(std::count(cellAt.begin(), cellAt.end(), 0), 0);
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
