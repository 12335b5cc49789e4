#include "printing/PagePainter.h"

#include <QImage>
#include <QRegularExpression>
#include <set>
#include <vector>

#include "PrintingSupport.h"
#include "printing/PageLayout.h"
#include "printing/Printing.h"

namespace {

constexpr double millimetresPerPoint = 25.4 / 72;

struct Word {
    QString text;
    QRectF box;  // millimetres
};

class PageOnPaper : public testing::Test {
  protected:
    void Make(const PrintedGrid& grid, const PageLayout& page, const PageInk& ink = {}) const {
        ScriptedHost::WriteFile(file.toStdString(), Printing::RenderPdf(grid, page, ink).toStdString());
    }
    QImage Raster(int dpi) const {
        OutputOf("pdftoppm", {"-singlefile", "-r", QString::number(dpi), file, file});
        return QImage(file + ".ppm");
    }
    std::vector<Word> Words() const {
        static const QRegularExpression pattern(
            R"re(<word xMin="(.+)" yMin="(.+)" xMax="(.+)" yMax="(.+)">(.*)</word>)re");
        std::vector<Word> words;
        const QString text = QString::fromUtf8(OutputOf("pdftotext", {"-bbox", file, "-"}));
        for (auto found = pattern.globalMatch(text); found.hasNext();) {
            const auto word = found.next();
            const auto at = [&](int i) { return word.captured(i).toDouble() * millimetresPerPoint; };
            words.push_back({word.captured(5), QRectF(QPointF(at(1), at(2)), QPointF(at(3), at(4)))});
        }
        return words;
    }
    static PageLayout Page(const std::string& settings, bool landscape) {
        ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "[Options]\n" + settings);
        return LayoutFromSettings(IniParamProcs::IniSnapshot(), landscape);
    }

    ScriptedHost host;
    QString file = QString::fromStdString(host.PathOf("page"));
};

// The row of pixels at `at` meets ten lines from `start` to `start + size`, thick ones around the boxes.
void ExpectLines(const QImage& image, double at, double start, double size, double thick) {
    const double pixel = 25.4 / 400;
    std::vector<std::pair<int, int>> lines;
    for (int x = 0; x < image.width(); ++x) {
        if (qGray(image.pixel(x, static_cast<int>(at / pixel))) >= 128) continue;
        if (lines.empty() || lines.back().second != x) lines.emplace_back(x, x);
        lines.back().second = x + 1;
    }
    ASSERT_EQ(lines.size(), 10U);
    EXPECT_NEAR(lines.front().first * pixel, start, 0.2);
    EXPECT_NEAR(lines.back().second * pixel, start + size, 0.2);
    for (std::size_t k = 0; k < 10; ++k) {
        const auto [first, end] = lines[k];
        EXPECT_NEAR((end - first) * pixel, k % 3 == 0 ? thick : thick / 4, 0.1) << k;
        const double middle = start + thick / 2 + static_cast<double>(k) * (size - thick) / 9;
        EXPECT_NEAR((first + end) * pixel / 2, middle, 0.2) << k;
    }
}

TEST_F(PageOnPaper, LinesStandWhereARulerFindsThem) {
    for (const bool landscape : {false, true}) {
        for (const double thick : {0.8, 0.4}) {
            SCOPED_TRACE(testing::Message() << "landscape " << landscape << ", lines of " << thick);
            Make({}, Page(std::string(landscape ? "MarginLeft=101.5\nMarginTop=62,5\n" : "") +
                              (thick == 0.4 ? "LinesWidth=1\n" : ""),
                          landscape));
            const QImage image = Raster(400);
            EXPECT_EQ(image.width() > image.height(), landscape);
            const QPointF corner = landscape ? QPointF(101.5, 62.5) : QPointF(45, 15);
            ExpectLines(image, corner.y() + 7, corner.x(), 120, thick);
            const QTransform swapAxes(0, 1, 1, 0, 0, 0);
            ExpectLines(image.transformed(swapAxes), corner.x() + 7, corner.y(), 120, thick);
        }
    }
}

TEST_F(PageOnPaper, EveryDigitStandsInItsPlaceAtItsSizeAndNoOtherIsThere) {
    const PrintedGrid grid = MixedGrid();
    for (const bool landscape : {false, true}) {
        const PageLayout page = Page(landscape ? "GridSize=60\n" : "", landscape);
        Make(grid, page);
        std::multiset<std::pair<int, int>> expected;  // cell; candidate, or 10 x value
        for (int i = 0; i < 81; ++i) {
            const PrintedCell& cell = grid.cells[static_cast<std::size_t>(i)];
            if (cell.value != 0) expected.insert({i, cell.value * 10});
            for (int d = 1; d <= 9; ++d) {
                if (cell.candidates.test(static_cast<std::size_t>(d))) expected.insert({i, d});
            }
        }
        std::multiset<std::pair<int, int>> found;
        for (const auto& [text, box] : Words()) {
            if (text == grid.caption && !box.intersects(page.grid)) continue;
            const double side = page.grid.width() / 9;
            const QPointF place = (box.center() - page.grid.topLeft()) / side;
            const int cell = static_cast<int>(place.y()) * 9 + static_cast<int>(place.x());
            const int digit = text.toInt();
            const bool small = box.height() < side / 4;
            found.insert({cell, small ? digit : digit * 10});
            // A line of this font's text is 1.117 times as high as the font is large.
            EXPECT_NEAR(box.height() / side, 1.117 * (small ? 1.0 / 12 : 0.8), small ? 0.002 : 0.02);
            const QPointF third = (place - QPointF(cell % 9, cell / 9)) * 3;
            EXPECT_EQ(static_cast<int>(third.x()), small ? (digit - 1) % 3 : 1) << cell << ": " << digit;
            EXPECT_EQ(static_cast<int>(third.y()), small ? (digit - 1) / 3 : 1) << cell << ": " << digit;
        }
        EXPECT_EQ(found, expected);
    }
}

TEST_F(PageOnPaper, InkIsTheColourTablesOrBlackOnWhite) {
    PageInk ink;
    ink.colors = {0xC0FFFF, 0, 0xFF0000, 0x0000FF, 0x008000, 0, 0xFF00FF};  // red in the low byte
    const auto colors = [&] {
        Make(MixedGrid(), Page("", false), ink);
        const QImage image = Raster(300);
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constBits());
        return std::set<QRgb>(pixels, pixels + image.sizeInBytes() / 4);
    };
    const std::set<QRgb> found = colors();
    for (const QRgb color : {0xFFFFFFC0, 0xFF0000FF, 0xFFFF0000, 0xFF008000, 0xFFFF00FF}) {
        EXPECT_TRUE(found.contains(color)) << std::hex << color;
    }
    ink.blackAndWhite = true;
    Make({}, Page("", false), ink);
    EXPECT_EQ(Raster(100).pixelColor(200, 80), QColor(Qt::white));  // within the first cell
    for (const QRgb color : colors()) EXPECT_EQ(color, qRgb(qRed(color), qRed(color), qRed(color)));
}

}  // namespace
