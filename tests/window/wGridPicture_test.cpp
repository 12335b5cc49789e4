// What of a grid window is on the picture.

#include <QTest>
#include <functional>
#include <set>

#include "FakeFrame.h"
#include "settings/IniParamProcs.h"
#include "support/DigitReader.h"

namespace {

class Picture : public GridWindow {
  protected:
    Picture() {
        for (std::size_t i = 0; i < colors.size(); ++i) {
            IniParamProcs::WriteIniParam("Options", "Color_" + std::to_string(i), std::to_string(colors[i]));
        }
        grid->SetColors(colors);
    }
    QImage Render(double scale = 1) const {
        QImage image(grid->size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        grid->render(&image);
        image.setDevicePixelRatio(1);
        return image;
    }
    // Small and large, rough and fine; sides that nine divides. `line`: what of a cell's edge may be covered.
    void AtEverySize(const std::function<void(const QImage& image, int line)>& look) {
        for (const auto& [size, scale] :
             {std::pair{QSize(180, 180), 1}, {QSize(576, 657), 2}, {QSize(1008, 900), 1}}) {
            SCOPED_TRACE(testing::Message() << size.width() << " x " << scale);
            grid->resize(size);
            ServeEvents();
            look(Render(scale), 2 * scale);
        }
    }

    // Red in the low byte: pale paper, yellow selection, black lines, red givens, blue and green digits.
    const ColorTable::Colors colors{0xE0FFFF, 0x00FFFF, 0, 0x0000FF, 0xFF0000, 0, 0x008000};
    const QColor paper{0xFF, 0xFF, 0xE0};
};

TEST_F(Picture, ShowsEveryValueInTheColourOfItsKind) {
    for (int i = 1; i <= 81; ++i) Set(i, std::to_string(SolutionAt(i)) + (i % 2 == 0 ? "|1|0" : "|0|0"));
    AtEverySize([&](const QImage& image, int line) {
        for (int i = 1; i <= 81; ++i) {
            const auto found = DigitReader::Read(image, DigitReader::CellPart(image, i, line), paper);
            EXPECT_EQ(found.digit, SolutionAt(i)) << i;
            EXPECT_EQ(found.ink, i % 2 == 0 ? QColor(Qt::red) : QColor(Qt::blue)) << i;
        }
        for (int y = 0; y < 3; ++y) EXPECT_EQ(image.pixelColor(image.width() / 3, y), QColor(Qt::black));
    });
}

TEST_F(Picture, ShowsTheCandidatesThatAreLeftEachInItsNinth) {
    Set(41, "5|1|0");
    for (const int i : {1, 9, 30, 32, 50, 77, 81}) Set(i, "0|0|" + std::to_string(i * 12 & 1022));
    AtEverySize([&](const QImage& image, int line) {
        for (int n = 0; n < 9 * 81; ++n) {
            const int i = n / 9 + 1;
            const int d = n % 9 + 1;
            if (i == 41) continue;
            const auto found = DigitReader::Read(image, DigitReader::CandidatePart(image, i, d, line), paper);
            const bool shown = document.Grid().Cells(i)->Avail(d) && !document.Grid().Cells(i)->Inhib(d);
            EXPECT_EQ(found.digit != 0, shown) << i << ": " << d;
            // The smallest ones have too few pixels to tell a 5 from a 6.
            EXPECT_TRUE(!shown || found.height <= 12 || found.digit == d) << i << ": " << d;
        }
    });
}

TEST_F(Picture, IsPaintedAgainWhereSomethingChanged) {
    struct Painted : QObject {
        bool eventFilter(QObject* cell, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                cells.insert(static_cast<ctrlCell*>(cell)->mCell()->GridIndex());
            return false;
        }
        std::set<int> cells;
    } painted;
    for (int i = 1; i <= 81; ++i) grid->ctrlCells(i).installEventFilter(&painted);
    const std::pair<std::function<void()>, std::set<int>> changes[] = {
        {[this] { grid->ctrlCells(41).DoSelect(); }, {1, 41}},
        {[this] { Set(41, "5|0|0"); },
         {5, 14, 23, 31, 32, 33, 37, 38, 39, 40, 41, 42, 43, 44, 45, 49, 50, 51, 59, 68, 77}},
        {[this] { grid->ctrlCells(8).DoSelect(); }, {8, 41}},
        {[this] { Set(41, "5|1|0"); }, {41}}};
    for (const auto& [change, cells] : changes) {
        ServeEvents();
        painted.cells.clear();
        change();
        ServeEvents();
        EXPECT_EQ(painted.cells, cells);
    }
    EXPECT_EQ(Render().pixelColor(DigitReader::CellPart(Render(), 8, 3).topLeft()), QColor(Qt::yellow));
}

}  // namespace
