#include "printing/PageLayout.h"

#include "PrintingSupport.h"

namespace {

class Layout : public testing::Test {
  protected:
    PageLayout Page(const std::string& left, const std::string& top, const std::string& size,
                    bool landscape = false) const {
        ScriptedHost::WriteFile(
            IniParamProcs::IniFilePath(),
            "[Options]\r\nMarginLeft=" + left + "\r\nMarginTop=" + top + "\r\nGridSize=" + size + "\r\n");
        return LayoutFromSettings(IniParamProcs::IniSnapshot(), landscape);
    }

    ScriptedHost host;
};

TEST_F(Layout, ReadsNumbersWithPointAndWithCommaAndZeroMargins) {
    EXPECT_EQ(Page("12.5", "7,25", " 99,5 ").grid, QRectF(12.5, 7.25, 99.5, 99.5));
    EXPECT_EQ(Page("0", "0", "210").grid, QRectF(0, 0, 210, 210));
}

TEST_F(Layout, TextThatIsNoNumberGivesTheUsualMeasure) {
    for (const char* text : {"", "abc", "-5", "12 cm", "1,2,3", "nan", "inf", "1e999"}) {
        EXPECT_EQ(Page(text, text, text).grid, QRectF(45, 15, 120, 120)) << text;
    }
}

TEST_F(Layout, AMarginThatPushesTheGridOffThePaperCentresIt) {
    EXPECT_EQ(Page("91", "178", "120").grid, QRectF(45, 88.5, 120, 120));
    EXPECT_EQ(Page("91", "178", "120", true).grid, QRectF(91, 45, 120, 120));
    EXPECT_EQ(Page("90", "177", "120").grid, QRectF(90, 177, 120, 120));
}

TEST_F(Layout, NoMeasureEmptiesThePageOrLeavesThePaper) {
    for (const char* size : {"0", "1e-300", "209.9", "211", "1e300"}) {
        for (const char* margin : {"0", "87", "150", "177", "1e300"}) {
            for (const bool landscape : {false, true}) {
                const PageLayout page = Page(margin, margin, size, landscape);
                EXPECT_TRUE(QRectF(QPointF(), page.paper).contains(page.grid)) << size << " " << margin;
                EXPECT_GE(page.grid.width(), 10) << size << " " << margin;
                EXPECT_LT(page.thickLine, page.grid.width() / 50) << size << " " << margin;
                EXPECT_FALSE(page.footer.intersects(page.grid)) << size << " " << margin;
                EXPECT_LE(page.footer.bottom(), page.paper.height()) << size << " " << margin;
            }
        }
    }
}

}  // namespace
