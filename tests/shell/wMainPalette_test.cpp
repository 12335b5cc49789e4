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

    static QImage Picture(QWidget& button) {
        return button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    // Left of its digit.
    static std::string Fill(PaletteButton& button) {
        return Picture(button).pixelColor(5, button.height() / 2).name().toStdString();
    }

    Palette& palette;
};

TEST_F(PaletteTest, StatesAreSeenByColourAndByMark) {
    Set(1, "0|0|8");
    EXPECT_EQ(Fill(palette.cmdMask(1)) + Fill(palette.cmdMask(3)) + Fill(palette.cmdMask(5)),
              "#00cc00#cc0000#888888");
    const QRect area = palette.cmdValue(1).rect();
    const auto read = [&](PaletteButton& button, const QRect& part) {
        return DigitReader::Read(Picture(button), part, QColor(Fill(button).c_str()));
    };
    for (int i = 1; i <= 9; ++i) EXPECT_EQ(read(palette.cmdValue(i), area.adjusted(4, 4, -4, -4)).digit, i);
    EXPECT_TRUE(
        QRectF(0.01, 0.01, 0.98, 0.98).contains(read(palette.cmdValue(0), area.adjusted(4, 4, -4, -4)).place))
        << "the clear button's picture";
    // Without colours: an excluded digit is struck out, an allowed one has a tick in its corner.
    const int unit = std::min(area.width(), area.height()) / 10;
    const QRect tick(area.right() - 2 * unit - 2, area.bottom() - 4 * unit, 2 * unit, 2 * unit);
    const QRect strokeEnd(area.right() - 4 * unit, area.top() + unit, 3 * unit, 3 * unit);
    EXPECT_NE(read(palette.cmdMask(1), tick).digit, 0);
    EXPECT_EQ(read(palette.cmdMask(1), strokeEnd).digit, 0);
    EXPECT_NE(read(palette.cmdMask(3), strokeEnd).digit, 0);
    EXPECT_EQ(read(palette.cmdValue(1), tick).digit, 0);
}

TEST_F(PaletteTest, ItsColumnsFillThePanelAndSayWhatTheyDo) {
    palette.resize(190, 900);
    int last = 0;
    for (int i = 0; i <= 9; ++i) {
        const QRect place(palette.cmdValue(i).mapTo(&palette, QPoint()), palette.cmdValue(i).size());
        const QRect mask(palette.cmdMask(i).mapTo(&palette, QPoint()), palette.cmdMask(i).size());
        EXPECT_TRUE(palette.rect().contains(place)) << i;
        // The columns are each other's mirror image, and each is in the middle of its frame.
        EXPECT_NEAR(place.left(), palette.width() - 1 - mask.right(), 1);
        EXPECT_EQ(place.top(), mask.top());
        EXPECT_EQ(palette.cmdMask(i).geometry().center().x(),
                  palette.cmdMask(i).parentWidget()->rect().center().x());
        EXPECT_LT(place.right(), mask.left() - 10);
        EXPECT_GE(place.top(), last + 10) << i;
        EXPECT_NEAR(palette.cmdMask(i).font().pixelSize(), std::min(mask.width(), mask.height()) * 0.8, 1);
        last = place.bottom();
    }
    EXPECT_GT(last, palette.height() - 40);
    EXPECT_EQ(palette.cmdValue(0).toolTip(), "Effacement de la valeur de la cellule active");
    EXPECT_EQ(palette.cmdMask(0).toolTip(), "Effacement des inhibitions de la cellule active");
    EXPECT_EQ(palette.cmdValue(3).toolTip(), "Affectation de la valeur 3 à la cellule active");
    EXPECT_EQ(palette.cmdMask(3).accessibleName(), "Inhibition de la valeur 3pour la cellule active");
}

TEST_F(PaletteTest, ItsButtonsEnterAndExcludeInTheHistory) {
    QTest::mouseClick(&palette.cmdValue(4), Qt::LeftButton);
    EXPECT_EQ(State(1), "4|0|0");
    EXPECT_EQ(Active().focusWidget(), &Active().ctrlCells(1)) << "the keyboard goes back to the cell";
    QTest::mouseClick(&palette.cmdMask(2), Qt::LeftButton);
    QTest::mouseClick(&palette.cmdValue(0), Qt::LeftButton);
    EXPECT_EQ(State(1), "0|0|4");
    QTest::mouseClick(&palette.cmdMask(0), Qt::LeftButton);
    EXPECT_EQ(State(1), "0|0|0");
    Run("mnuEditUndo");
    EXPECT_EQ(State(1), "0|0|4");
    Run("mnuEditRedo");
    EXPECT_EQ(State(1), "0|0|0");
}

TEST_F(PaletteTest, TheModesDecideWhatAKeyEnters) {
    const auto press = [this](Qt::Key key) {
        host.beeps = 0;
        QTest::keyClick(main->Cell(), key);
        return State(1) + (host.beeps > 0 ? " beep" : "");
    };
    EXPECT_EQ(press(Qt::Key_5), "0|0|0 beep");
    EXPECT_EQ(press(Qt::Key_4), "4|0|0");
    Run("mnuGridHelpNone");
    EXPECT_EQ(press(Qt::Key_5), "5|0|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_6), "6|1|0");
    Run("mnuGridConfig");
    EXPECT_EQ(press(Qt::Key_7), "6|1|0 beep");
}

}  // namespace
