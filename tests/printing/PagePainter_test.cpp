#include "printing/PagePainter.h"

#include <QImage>
#include <QRegularExpression>
#include <set>

#include "PrintingSupport.h"
#include "printing/PageLayout.h"
#include "printing/Printing.h"

namespace {

class PageOnPaper : public testing::Test {
  protected:
    PageLayout Make(const PrintedGrid& grid, const std::string& settings, bool landscape,
                    const PageInk& ink = {}) const {
        ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "[Options]\n" + settings);
        const PageLayout page = LayoutFromSettings(Settings::IniSnapshot(), landscape);
        ScriptedHost::WriteFile(file.toStdString(), Printing::RenderPdf(grid, page, ink).toStdString());
        return page;
    }
    QImage Raster(const QStringList& options) const {
        OutputOf("pdftoppm", QStringList{"-singlefile", file, file} + options);
        return QImage(file + ".ppm");
    }

    ScriptedHost host;
    QString file = QString::fromStdString(host.PathOf("page"));
};

TEST_F(PageOnPaper, LinesStandWhereARulerFindsThem) {
    for (const bool landscape : {false, true}) {
        const double thick = landscape ? 0.4 : 0.8;
        Make({}, landscape ? "MarginLeft=101.5\nMarginTop=62,5\nLinesWidth=1\n" : "", landscape);
        for (const bool down : {false, true}) {
            // A line of pixels across the page, 50 to a millimetre, where no digit stands.
            const QString at = QString::number(landscape ? 5500 : 3000);
            const QImage image = Raster(down ? QStringList{"-r", "1270", "-x", at, "-W", "1"}
                                             : QStringList{"-r", "1270", "-y", at, "-H", "1"});
            EXPECT_NEAR(down ? image.height() : image.width(), down != landscape ? 297 * 50 : 210 * 50, 5);
            for (int k = 0; k <= 9; ++k) {
                const double width = k % 3 == 0 ? thick : thick / 4;
                const double start = landscape ? (down ? 62.5 : 101.5) : (down ? 15 : 45);
                const double middle = start + thick / 2 + k * (120 - thick) / 9;
                for (const double share : {-0.8, -0.3, 0.0, 0.3, 0.8}) {
                    const int pixel = static_cast<int>((middle + share * width) * 50);
                    EXPECT_EQ(qGray(down ? image.pixel(0, pixel) : image.pixel(pixel, 0)) < 128,
                              std::abs(share) < 0.5)
                        << "line " << k << " at " << share;
                }
            }
        }
    }
}

TEST_F(PageOnPaper, EveryDigitStandsInItsPlaceAtItsSizeAndNoOtherIsThere) {
    static const QRegularExpression word(
        R"re(xMin="(.+)" yMin="(.+)" xMax="(.+)" yMax="(.+)">(.*)</word>)re");
    const PrintedGrid grid = MixedGrid();
    for (const bool landscape : {false, true}) {
        const PageLayout page = Make(grid, landscape ? "GridSize=60\n" : "", landscape);
        std::multiset<std::pair<int, int>> expected, found;  // cell; candidate, or 10 x value
        for (int i = 0; i < 810; ++i) {
            const PrintedCell& cell = grid.cells[static_cast<std::size_t>(i / 10)];
            if (i % 10 == 0 && cell.value > 0) expected.insert({i / 10, cell.value * 10});
            if (cell.candidates.test(static_cast<std::size_t>(i % 10))) expected.insert({i / 10, i % 10});
        }
        const double side = (page.grid.width() - page.thickLine) / 9;
        for (auto words = word.globalMatch(OutputOf("pdftotext", {"-bbox", file, "-"})); words.hasNext();) {
            const auto next = words.next();
            const auto at = [&](int i) { return next.captured(i).toDouble() * 25.4 / 72; };
            const QRectF box(QPointF(at(1), at(2)), QPointF(at(3), at(4)));
            const bool caption = next.captured(5) == grid.caption;
            const bool small = box.height() < side / 4;
            const int digit = next.captured(5).toInt();
            // In cells from the grid's corner; where digits stand in a cell: in the middle, or three by three
            // with equal gaps. This font's line is 1.117 times as high as it is large, its 0 0.556 as wide.
            const QPointF place =
                (box.center() - page.grid.topLeft()) / side - QPointF(0.5, 0.5) * page.thickLine / side;
            const int cell = static_cast<int>(place.y()) * 9 + static_cast<int>(place.x());
            const double size = caption ? 3 / side : small ? 1.0 / 12 : 0.8;
            EXPECT_NEAR(box.height() / side, 1.117 * size, small ? 0.002 : 0.02) << digit;
            const QPointF step = (QPointF(1, 1) + QPointF(0.556, 1.117) * size) / 4;
            const QPointF middle =
                QPointF(cell % 9 + 0.5, cell / 9 + 0.5) +
                (small ? QPointF(step.x() * ((digit - 1) % 3 - 1), step.y() * ((digit - 1) / 3 - 1))
                       : QPointF());
            const QPointF off = caption ? box.center() - page.footer.center() : place - middle;
            EXPECT_LT(std::max(std::abs(off.x()), std::abs(off.y())), 0.03) << cell << ": " << digit;
            if (!caption) found.insert({cell, small ? digit : digit * 10});
            if (caption) expected.insert({-1, 0}), found.insert({-1, 0});
        }
        EXPECT_TRUE(found.contains({-1, 0})) << "the caption";
        EXPECT_EQ(found, expected);
    }
}

TEST_F(PageOnPaper, EachKindOfDigitHasItsInkAndGivensAreHeavierInBlack) {
    const ColorTable::Colors colors{0xC0FFFF, 0, 0xFF0000, 0x0000FF, 0x008000, 0, 0xFF00FF};  // red last
    const QRgb paper = 0xFFFFFFC0, lines = 0xFF0000FF;
    const std::pair<PrintedCell, QRgb> kinds[] = {
        {{5, true, {}}, 0xFFFF0000}, {{5, false, {}}, 0xFF008000}, {{0, false, 1022}, 0xFFFF00FF}};
    int blackDots[3] = {};
    for (int i = 0; i < 6; ++i) {
        const auto& [cell, ink] = kinds[i / 2];
        PrintedGrid grid;
        grid.cells.fill(cell);
        Make(grid, "", false, {colors, i % 2 == 1});
        const QImage image = Raster({"-r", "300", "-x", "500", "-y", "160", "-W", "600", "-H", "600"});
        std::set<QRgb> found;
        for (int dot = 0; dot < image.width() * image.height(); ++dot) {
            found.insert(image.pixel(dot % image.width(), dot / image.width()));
            blackDots[i / 2] += image.pixel(dot % image.width(), dot / image.width()) == 0xFF000000;
        }
        std::set<QRgb> expected = i % 2 == 1 ? std::set<QRgb>{} : std::set<QRgb>{paper, lines, ink};
        for (const QRgb color : {paper, lines, kinds[0].second, kinds[1].second, kinds[2].second})
            EXPECT_EQ(found.contains(color), expected.contains(color)) << std::hex << color << " in " << i;
    }
    EXPECT_GT(blackDots[0], blackDots[1] * 6 / 5);
}

}  // namespace
