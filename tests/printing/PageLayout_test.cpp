// SPDX-License-Identifier: MIT
#include "printing/PageLayout.h"

#include "PrintingSupport.h"

namespace {

TEST(PageLayout, WhatIsAskedStandsWhereItFitsOnThePaper) {
    const ScriptedHost host;
    const struct {
        const char *left, *top, *size;
        bool landscape;
        QRectF grid;
        double footerTop;  // 0: there is no room for it
    } cases[] = {
        {"12.5", "7,25", " 99,5 ", false, {12.5, 7.25, 99.5, 99.5}, 282},
        {"x", "12 cm", "211", false, {5, 15, 200, 200}, 282},
        {"91", "178", "0", true, {88.5, 79, 120, 120}, 200},
        {"9", "166", "120", false, {9, 166, 120, 120}, 287},
        {"99", "166.1", "120", false, {85, 166, 120, 120}, 287},
        {"1", "2", "205", false, {5, 5, 200, 200}, 282},
        {"1", "2", "200", true, {48.5, 5, 200, 200}, 0},
        {"1e300", "0", "1e-300", true, {143.5, 5, 10, 10}, 195},
        {"nan", "-5", "inf", false, {45, 15, 120, 120}, 282},
    };
    for (const auto& [left, top, size, landscape, grid, footerTop] : cases) {
        SCOPED_TRACE(std::string(left) + " " + top + " " + size);
        for (const auto& [row, text] :
             {std::pair{Settings::MarginLeft, left}, {Settings::MarginTop, top}, {Settings::GridSize, size}})
            Settings::Write(row, text);
        const PageLayout page = LayoutFromSettings(Settings::IniSnapshot(), landscape);
        EXPECT_EQ(page.paper, landscape ? QSizeF(297, 210) : QSizeF(210, 297));
        EXPECT_EQ(page.grid, grid);
        EXPECT_EQ(page.footer, footerTop > 0 ? QRectF(10, footerTop, page.paper.width() - 20, 5) : QRectF());
    }
}

}  // namespace
