// SPDX-License-Identifier: MIT

// What of a grid window is on the picture.

#include <QApplication>
#include <QTest>
#include <functional>
#include <set>

#include "FakeFrame.h"
#include "platform/qt/Contrast.h"
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
        grid->ctrlCells(41).DoSelect();  // it has a frame
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
    ColorTable::Colors colors{0xE0FFFF, 0x00FFFF, 0, 0x0000C0, 0xFF0000, 0, 0x006000};
    const QColor paper{0xFF, 0xFF, 0xE0};
    const QColor given{0xC0, 0, 0};
};

TEST_F(Picture, ShowsEveryValueInTheColourOfItsKind) {
    for (int i = 1; i <= 81; ++i) Set(i, std::to_string(SolutionAt(i)) + (i % 2 == 0 ? "|1|0" : "|0|0"));
    AtEverySize([&](const QImage& image, int line) {
        for (int i = 1; i <= 81; ++i) {
            if (i == 41) continue;
            const auto found = DigitReader::Read(image, DigitReader::CellPart(image, i, line), paper);
            EXPECT_EQ(found.digit, SolutionAt(i)) << i;
            EXPECT_EQ(found.ink, i % 2 == 0 ? given : QColor(Qt::blue)) << i;
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

// Red on white has 4, on yellow 3.7.
TEST_F(Picture, NoDigitIsTooPaleWhateverTheColours) {
    Set(1, "1|1|0");
    Set(2, "2|0|0");
    grid->resize(540, 540);
    for (const ColorTable::Colors& chosen :
         {ColorTable::Defaults, ColorTable::Colors{0xFFFFFF, 0xFFFFFF, 0, 0xE0E0E0, 0xF0F0F0, 0, 0xFFFFFF},
          ColorTable::Colors{0x202020, 0x404040, 0, 0, 0x303030, 0, 0x600000}}) {
        for (const int current : {1, 2, 3}) {
            for (std::size_t i = 0; i < chosen.size(); ++i) {
                IniParamProcs::WriteIniParam("Options", "Color_" + std::to_string(i),
                                             std::to_string(chosen[i]));
            }
            grid->SetColors(chosen);
            grid->ctrlCells(current).DoSelect();
            for (const int i : {1, 2, 3}) {
                const QColor background = grid->ctrlCells(i).BackColor();
                const auto found =
                    DigitReader::Read(Render(), DigitReader::CellPart(Render(), i, 10), background);
                EXPECT_GE(platform_qt::Contrast(found.ink, background), 4.5) << i << " of " << current;
            }
        }
    }
}

TEST_F(Picture, TheCurrentCellHasAFrameSeenWithoutItsColourThatFlashes) {
    const auto frame = [this](int index) {  // how far the strongest pixel along the left edge is from paper
        const QImage image = Render();
        const QRect cell = DigitReader::CellPart(image, index, 3);
        double contrast = 1;
        for (int x = cell.left(); x < cell.left() + 3; ++x) {
            const QColor pixel = image.pixelColor(x, cell.center().y());
            contrast = std::max(contrast, platform_qt::Contrast(pixel, grid->ctrlCells(index).BackColor()));
        }
        return contrast;
    };
    grid->resize(540, 540);
    for (const int i : {40, 41}) Set(i, "1|0|0");
    for (std::size_t i : {0, 1}) colors[i] = 0xFFFFFF;
    grid->SetColors(colors);
    QApplication::setActiveWindow(grid);
    ServeEvents();
    EXPECT_GE(frame(41), 3);
    EXPECT_EQ(frame(40), 1);
    const QImage calm = Render();
    grid->FlashRefusal();
    EXPECT_NE(Render(), calm);
    EXPECT_TRUE(Eventually([&] { return Render() == calm; }));
    grid->ctrlCells(40).DoSelect();
    EXPECT_GE(frame(40), 3);
    EXPECT_EQ(frame(41), 1);
}

// A row is a pixel higher than the next one; small digits are as large as the desktop's text where they fit.
TEST_F(Picture, AllCandidatesHaveOneSize) {
    for (const auto& [side, smallest, largest] :
         {std::tuple{185, 3, 5}, {400, 7, 9}, {605, 9, 12}, {1886, 12, 18}}) {
        grid->resize(side, side);
        std::set<int> heights;
        for (const int i : {1, 9, 37, 73, 81}) {
            const QImage image = Render();
            heights.insert(
                DigitReader::Read(image, DigitReader::CandidatePart(image, i, 1, 3), paper).height);
        }
        EXPECT_EQ(heights.size(), 1U) << side;
        EXPECT_GE(*heights.begin(), smallest) << side;
        EXPECT_LE(*heights.begin(), largest) << side;
    }
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
