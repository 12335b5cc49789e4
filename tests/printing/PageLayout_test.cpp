#include "printing/PageLayout.h"

#include "PrintingSupport.h"

namespace {

PageLayout Layout(const std::string& left, const std::string& top, const std::string& size,
                  bool landscape = false, const std::string& more = "") {
    ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "[Options]\nMarginLeft=" + left + "\nMarginTop=" +
                                                              top + "\nGridSize=" + size + "\n" + more);
    return LayoutFromSettings(Settings::IniSnapshot(), landscape);
}

TEST(PageLayout, WhatIsAskedStandsWhereItFitsOnThePaper) {
    const ScriptedHost host;
    const struct {
        const char *left, *top, *size;
        bool landscape;
        QRectF grid;
        double footerTop;  // 0: there is no room for it
        double thickLine;
    } cases[] = {
        {"12.5", "7,25", " 99,5 ", false, {12.5, 7.25, 99.5, 99.5}, 282, 0.8},
        {"0", "0", "210", false, {0, 0, 210, 210}, 282, 0.8},
        {"x", "x", "211", false, {5, 15, 200, 200}, 282, 0.8},
        {"91", "178", "0", false, {45, 88.5, 120, 120}, 282, 0.8},
        {"91", "178", "120", true, {91, 45, 120, 120}, 195, 0.8},
        {"90", "177", "120", false, {90, 177, 120, 120}, 0, 0.8},
        {"9", "166", "120", false, {9, 166, 120, 120}, 287, 0.8},
        {"9", "166.1", "120", false, {9, 166.1, 120, 120}, 0, 0.8},
        {"1e300", "200", "30", false, {90, 200, 30, 30}, 282, 0.4},
        {"0", "0", "1e-300", true, {0, 0, 10, 10}, 195, 0.8 / 6},
    };
    for (const auto& [left, top, size, landscape, grid, footerTop, thickLine] : cases) {
        SCOPED_TRACE(std::string(left) + " " + top + " " + size);
        const PageLayout page = Layout(left, top, size, landscape);
        EXPECT_EQ(page.paper, landscape ? QSizeF(297, 210) : QSizeF(210, 297));
        EXPECT_EQ(page.grid, grid);
        EXPECT_EQ(page.footer, footerTop > 0 ? QRectF(10, footerTop, page.paper.width() - 20, 5) : QRectF());
        EXPECT_DOUBLE_EQ(page.thickLine, thickLine);
        EXPECT_DOUBLE_EQ(page.thinLine, thickLine / 4);
    }
    for (const char* text : {"", "abc", "-5", "12 cm", "1,2,3", "nan", "inf", "1e999"}) {
        EXPECT_EQ(Layout(text, text, text).grid, QRectF(45, 15, 120, 120)) << text;
    }
    EXPECT_EQ(Layout("0", "0", "60", false, "LinesWidth=1\n").thickLine, 0.4);
}

}  // namespace
