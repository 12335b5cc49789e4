// Entering values and exclusions.

#include <QTest>
#include <algorithm>

#include "Program.h"
#include "support/DigitReader.h"

namespace {

class PaletteTest : public RunningProgram {
  protected:
    PaletteTest() : palette(main->picPalette()) {
        Run("mnuFileNew");
        Run("mnuGridConfig");  // off again
        Active().ctrlCells(1).DoSelect();
        Set(9, "5|0|0");
    }

    Palette& palette;
};

TEST_F(PaletteTest, StatesAreSeenByColourAndByMark) {
    Set(1, "0|0|8");
    const QRect area = palette.cmdValue(1).rect();
    // The name of the fill, and the digit or mark in a part.
    const auto read = [](PaletteButton& button, const QRect& part) {
        const QImage picture = button.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QColor fill = picture.pixelColor(5, button.height() / 2);  // left of its digit
        return std::pair(fill.name().toStdString(), DigitReader::Read(picture, part, fill).digit);
    };
    for (int i = 1; i <= 9; ++i) EXPECT_EQ(read(palette.cmdValue(i), area.adjusted(4, 4, -4, -4)).second, i);
    EXPECT_EQ(read(palette.cmdMask(5), area).first, "#888888");
    // Without colours: an excluded digit is struck out, an allowed one has a tick in its corner.
    const int unit = std::min(area.width(), area.height()) / 10;
    const QRect tick(area.right() - 2 * unit - 2, area.bottom() - 4 * unit, 2 * unit, 2 * unit);
    const QRect strokeEnd(area.right() - 4 * unit, area.top() + unit, 3 * unit, 3 * unit);
    for (const auto& [digit, colour] : {std::pair{1, "#00cc00"}, {3, "#cc0000"}}) {
        const auto [fill, mark] = read(palette.cmdMask(digit), tick);
        EXPECT_EQ(fill, colour) << digit;
        EXPECT_EQ(mark != 0, digit == 1) << digit;
        EXPECT_EQ(read(palette.cmdMask(digit), strokeEnd).second != 0, digit == 3) << digit;
    }
}

TEST_F(PaletteTest, ButtonsAndKeysEnterWhatTheModesAllow) {
    const auto press = [this](Qt::Key key) {
        host.beeps = 0;
        QTest::keyClick(Active().focusWidget(), key);
        return State(1) + (host.beeps > 0 ? " beep" : "");
    };
    QTest::mouseClick(&palette.cmdMask(2), Qt::LeftButton);
    EXPECT_EQ(press(Qt::Key_4), "4|0|4") << "the keyboard goes back to the cell";
    QTest::mouseClick(&palette.cmdMask(0), Qt::LeftButton);
    EXPECT_EQ(press(Qt::Key_5), "4|0|0 beep");
    Run("mnuGridHelpNone");
    EXPECT_EQ(press(Qt::Key_5), "5|0|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_6), "6|1|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_7), "6|1|0 beep");
}

}  // namespace
