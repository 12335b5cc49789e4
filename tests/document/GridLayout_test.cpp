#include "document/GridLayout.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace {

class Layout : public testing::TestWithParam<QSize> {};

TEST_P(Layout, CellsCoverEveryPixelOnce) {
    const QSize area = GetParam();
    std::vector<int> covered(static_cast<std::size_t>(area.width() * area.height()));
    for (int i = 1; i <= 81; ++i) {
        const QRect place = GridLayout::CellPlace(i, area);
        ASSERT_TRUE(QRect(QPoint(0, 0), area).contains(place)) << i;
        EXPECT_LE(std::abs(place.width() * 9 - area.width()), 9) << i;
        EXPECT_LE(std::abs(place.height() * 9 - area.height()), 9) << i;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                ++covered[static_cast<std::size_t>(y * area.width() + x)];
            }
        }
    }
    EXPECT_TRUE(std::all_of(covered.begin(), covered.end(), [](int times) { return times == 1; }));
}

TEST_P(Layout, BarsLieOnTheEdgesOfTheCells) {
    const QSize area = GetParam();
    for (int k = 0; k <= 9; ++k) {
        const int thickness = k == 0 || k == 3 || k == 6 || k == 9 ? 4 : 1;
        const QRect vertical = GridLayout::VerticalBar(k, area);
        const QRect horizontal = GridLayout::HorizontalBar(k, area);
        EXPECT_EQ(vertical.width(), thickness) << k;
        EXPECT_EQ(horizontal.height(), thickness) << k;
        EXPECT_EQ(vertical.height(), area.height()) << k;
        EXPECT_EQ(horizontal.width(), area.width()) << k;
        EXPECT_NEAR(vertical.left() + thickness / 2.0, k * area.width() / 9.0, 1.0) << k;
        EXPECT_NEAR(horizontal.top() + thickness / 2.0, k * area.height() / 9.0, 1.0) << k;
    }
    // Half of the frame lies outside.
    EXPECT_EQ(GridLayout::VerticalBar(0, area).left(), -2);
    EXPECT_EQ(GridLayout::HorizontalBar(9, area).top(), area.height() - 2);
}

TEST(LayoutOrder, CellsRunRowByRow) {
    const QSize area(900, 1800);
    EXPECT_EQ(GridLayout::CellPlace(1, area), QRect(0, 0, 100, 200));
    EXPECT_EQ(GridLayout::CellPlace(9, area), QRect(800, 0, 100, 200));
    EXPECT_EQ(GridLayout::CellPlace(10, area), QRect(0, 200, 100, 200));
    EXPECT_EQ(GridLayout::CellPlace(81, area), QRect(800, 1600, 100, 200));
}

INSTANTIATE_TEST_SUITE_P(Sizes, Layout,
                         testing::Values(QSize(180, 180), QSize(181, 199), QSize(640, 477),
                                         QSize(1003, 333)));

}  // namespace
