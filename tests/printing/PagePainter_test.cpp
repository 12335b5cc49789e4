// SPDX-License-Identifier: MIT
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
    PageLayout Make(const PrintedGrid& grid, bool landscape, const PageInk& ink = {}) const {
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

TEST_F(PageOnPaper, EveryDigitStandsInItsPlaceAndNoOtherIsThere) {
    static const QRegularExpression word(
        R"re(xMin="(.+)" yMin="(.+)" xMax="(.+)" yMax="(.+)">(.*)</word>)re");
    const PrintedGrid grid = MixedGrid();
    for (const bool landscape : {false, true}) {
        const PageLayout page = Make(grid, landscape);
        std::multiset<std::tuple<int, int, int>> expected, found;  // cell; its ninth; digit, 10 x a value
        for (int i = 0; i < 810; ++i) {
            const PrintedCell& cell = grid.cells[static_cast<std::size_t>(i / 10)];
            if (i % 10 == 0 && cell.value > 0) expected.insert({i / 10, 5, cell.value * 10});
            if (cell.candidates.test(static_cast<std::size_t>(i % 10)))
                expected.insert({i / 10, i % 10, i % 10});
        }
        const double side = page.grid.width() / 9;
        for (auto words = word.globalMatch(OutputOf("pdftotext", {"-bbox", file, "-"})); words.hasNext();) {
            const auto next = words.next();
            const auto at = [&](int i) { return next.captured(i).toDouble() * 25.4 / 72; };
            const QRectF box(QPointF(at(1), at(2)), QPointF(at(3), at(4)));
            if (next.captured(5) == grid.caption) continue;
            EXPECT_GE(box.height(), 6.5 * 25.4 / 72) << "nobody reads smaller ones";
            const QPointF place = (box.center() - page.grid.topLeft()) / side;
            const int column = static_cast<int>(place.x() * 3), row = static_cast<int>(place.y() * 3);
            const int digit = next.captured(5).toInt();
            found.insert({row / 3 * 9 + column / 3, row % 3 * 3 + column % 3 + 1,
                          box.height() < side / 4 ? digit : digit * 10});
        }
        EXPECT_EQ(found, expected);
    }
}

TEST_F(PageOnPaper, ItsInksAndLinesAreTheAskedOnes) {
    const ColorTable::Colors colors{0xC0FFFF, 0, 0, 0x0000FF, 0x008000, 0, 0xFF00FF};  // red last
    const QRgb inks[] = {0xFFFF0000, 0xFF008000, 0xFFFF00FF};
    PrintedGrid grid;
    grid.cells[0] = {5, true, {}};
    grid.cells[1] = {5, false, {}};
    grid.cells[2] = {0, false, 1022};
    for (const bool black : {false, true}) {
        Make(grid, false, {colors, black});
        const QImage image = Raster({"-r", "300"});
        int dots[3]{};  // of the ink, in each cell
        for (int i = 0; i < 3; ++i) {
            const QImage cell = image.copy(545 + 157 * i, 190, 140, 140);
            EXPECT_EQ(cell.pixel(0, 0), black ? 0xFFFFFFFF : 0xFFFFFFC0);
            for (int dot = 0; dot < 140 * 140; ++dot)
                dots[i] += cell.pixel(dot % 140, dot / 140) == (black ? 0xFF000000 : inks[i]) ? 1 : 0;
            EXPECT_GT(dots[i], 0) << i << black;
        }
        EXPECT_TRUE(!black || dots[0] > dots[1] * 6 / 5);
        for (int n = 0; n < 20; ++n) {
            const double middle = (n < 10 ? 45 : 15) + 0.4 + n % 10 * (120 - 0.8) / 9;
            for (const double off : {-0.6, -0.3, 0.0, 0.3, 0.6}) {
                const int dot = static_cast<int>((middle + off) * 300 / 25.4);
                const QRgb color = n < 10 ? image.pixel(dot, 1000) : image.pixel(1000, dot);
                EXPECT_EQ(qGray(color) < 128, std::abs(off) < (n % 10 % 3 == 0 ? 0.4 : 0.1)) << n << off;
            }
        }
    }
}

}  // namespace
