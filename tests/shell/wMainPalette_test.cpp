// Entering values and exclusions.

#include <QTest>
#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "Program.h"
#include "support/DigitReader.h"

namespace {

class PaletteTest : public RunningProgram {
  protected:
    PaletteTest() {
        Run("mnuFileNew");
        Run("mnuGridConfig");  // off again
        Active().ctrlCells(1).DoSelect();
    }

    // The states of buttons 1..9: "." neutral, "a" allowed, "x" excluded; enabled ones in capitals, "o".
    static std::string Column(const std::function<PaletteButton&(int)>& button) {
        std::string states;
        for (int i = 1; i <= 9; ++i) {
            const bool on = button(i).isEnabled();
            switch (button(i).State()) {
                case DigitState::Neutral:
                    states += on ? 'o' : '.';
                    break;
                case DigitState::Allowed:
                    states += on ? 'A' : 'a';
                    break;
                case DigitState::Excluded:
                    states += on ? 'X' : 'x';
                    break;
            }
        }
        return states;
    }
    std::string Values() const {
        return Column([this](int i) -> PaletteButton& { return main->picPalette().cmdValue(i); });
    }
    std::string Masks() const {
        return Column([this](int i) -> PaletteButton& { return main->picPalette().cmdMask(i); });
    }
    bool ClearButtonsEnabled() const {
        return main->picPalette().cmdValue(0).isEnabled() && main->picPalette().cmdMask(0).isEnabled();
    }
    void ExpectRefused(int digit) {
        const std::string before = State(1);
        host.beeps = 0;
        main->cmdValue_Click(digit);
        EXPECT_EQ(host.beeps, 1) << digit;
        EXPECT_EQ(State(1), before) << digit;
    }
};

// ---- Colours.

TEST_F(PaletteTest, WithoutACellEverythingIsGreyAndRefused) {
    main->Cell(nullptr);
    EXPECT_EQ(Values(), ".........");
    EXPECT_EQ(Masks(), ".........");
    for (int i = 0; i <= 9; ++i) {
        main->cmdValue_Click(i);
        main->cmdMask_Click(i);
    }
    EXPECT_EQ(host.beeps, 20);
}

TEST_F(PaletteTest, OnlyAllowedDigitsCanBeEntered) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");  // 3 excluded
    EXPECT_EQ(Masks(), "AAXA.AAAA");
    EXPECT_EQ(Values(), "oo.o.oooo");
    EXPECT_TRUE(ClearButtonsEnabled());
}

TEST_F(PaletteTest, AGivenHasNoColoursButItsMasksStayEnabled) {
    Set(9, "5|0|0");
    Set(1, "7|1|8");
    EXPECT_EQ(Values(), "......a..");
    EXPECT_EQ(Masks(), "oooo.o.oo");
}

TEST_F(PaletteTest, HiddenMasksLeaveOnlyTheValues) {
    Set(9, "5|0|0");
    Set(1, "7|1|8");
    Run("mnuGridHelpNone");
    EXPECT_EQ(Values(), "ooooooooo");
    EXPECT_EQ(Masks(), ".........");
    Run("mnuGridHelpNone");
    EXPECT_EQ(Masks(), "oooo.o.oo");
    EXPECT_TRUE(ClearButtonsEnabled());
}

TEST_F(PaletteTest, StatesAreSeenByColourAndByMark) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");
    Palette& palette = main->picPalette();
    const auto pictureOf = [](QWidget& button) {
        return button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    // The colour that most of a button has.
    const auto fill = [&](PaletteButton& button) {
        std::map<QRgb, int> counts;
        const QImage image = pictureOf(button);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
        const auto most =
            std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; });
        return QColor(most->first).name().toStdString();
    };
    EXPECT_EQ(fill(palette.cmdMask(1)), "#00cc00");
    EXPECT_EQ(fill(palette.cmdMask(3)), "#cc0000");
    EXPECT_EQ(fill(palette.cmdMask(5)), "#888888");
    EXPECT_EQ(fill(palette.cmdValue(1)), "#888888");
    for (int i = 1; i <= 9; ++i) {
        const QImage image = pictureOf(palette.cmdValue(i));
        const QRect middle = image.rect().adjusted(4, 4, -4, -4);
        EXPECT_EQ(DigitReader::Read(image, middle, QColor(0x88, 0x88, 0x88)).digit, i);
    }
    // Without colours: an excluded digit is struck out, an allowed one has a tick in its corner.
    const auto ink = [&](PaletteButton& button, const QRect& part, const char* paper) {
        return DigitReader::Read(pictureOf(button), part, QColor(paper)).digit != 0;
    };
    const QRect area = palette.cmdMask(1).rect();
    const int unit = std::min(area.width(), area.height()) / 10;
    const QRect tick(area.right() - 2 * unit - 2, area.bottom() - 4 * unit, 2 * unit, 2 * unit);
    const QRect strokeEnd(area.right() - 4 * unit, area.top() + unit, 3 * unit, 3 * unit);
    EXPECT_TRUE(ink(palette.cmdMask(1), tick, "#00cc00"));
    EXPECT_FALSE(ink(palette.cmdMask(1), strokeEnd, "#00cc00"));
    EXPECT_TRUE(ink(palette.cmdMask(3), strokeEnd, "#cc0000"));
    EXPECT_FALSE(ink(palette.cmdValue(1), tick, "#888888"));
    EXPECT_FALSE(ink(palette.cmdValue(1), strokeEnd, "#888888"));
    EXPECT_TRUE(ink(palette.cmdValue(0), palette.cmdValue(0).rect().adjusted(6, 6, -6, -6), "#888888"))
        << "the clear button has a picture";
}

TEST_F(PaletteTest, ItsColumnsFillThePanelFromTheTop) {
    Palette& palette = main->picPalette();
    for (const QSize size : {QSize(150, 480), QSize(190, 900)}) {
        palette.resize(size);
        QRect last;
        for (int i = 0; i <= 9; ++i) {
            const auto place = [&](PaletteButton& button) {
                return QRect(button.mapTo(&palette, QPoint()), button.size());
            };
            const QRect value = place(palette.cmdValue(i));
            const QRect mask = place(palette.cmdMask(i));
            EXPECT_TRUE(palette.rect().contains(value) && palette.rect().contains(mask)) << i;
            EXPECT_EQ(value.size(), mask.size());
            EXPECT_EQ(value.top(), mask.top());
            EXPECT_LT(value.right(), mask.left() - 10);
            EXPECT_GE(value.top(), last.bottom() + 10) << i;
            EXPECT_GT(value.height(), size.height() / 18);
            last = value;
        }
        EXPECT_GT(last.bottom(), size.height() - 40);
    }
}

TEST_F(PaletteTest, EachButtonSaysWhatItDoes) {
    Palette& palette = main->picPalette();
    const std::pair<PaletteButton&, const char*> texts[] = {
        {palette.cmdValue(0), "Effacement de la valeur de la cellule active"},
        {palette.cmdMask(0), "Effacement des inhibitions de la cellule active"},
        {palette.cmdValue(3), "Affectation de la valeur 3 à la cellule active"},
        {palette.cmdMask(3), "Inhibition de la valeur 3pour la cellule active"}};
    for (const auto& [button, text] : texts) {
        EXPECT_EQ(button.toolTip(), text);
        EXPECT_EQ(button.accessibleName(), text);
    }
}

// ---- Values.

TEST_F(PaletteTest, ARefusedDigitBeepsAndIsNoChange) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");
    ExpectRefused(5);
    ExpectRefused(3);
    Run("mnuGridHelpNone");
    main->cmdValue_Click(5);
    EXPECT_EQ(State(1), "5|0|8");
    Set(1, "7|1|0");
    ExpectRefused(4);
    ExpectRefused(0);
    Run("mnuGridConfig");
    main->cmdValue_Click(4);
    EXPECT_EQ(State(1), "4|1|0");
}

TEST_F(PaletteTest, EveryEntryUpdatesCandidatesPaletteAndHistory) {
    QTest::mouseClick(&main->picPalette().cmdValue(4), Qt::LeftButton);
    EXPECT_EQ(State(1), "4|0|0");
    EXPECT_FALSE(Active().ctrlCells(2).Mask(4));
    EXPECT_EQ(Values(), "oooaooooo");
    EXPECT_EQ(Active().focusWidget(), &Active().ctrlCells(1)) << "the keyboard goes back to the cell";
    QTest::mouseClick(&main->picPalette().cmdMask(2), Qt::LeftButton);
    QTest::mouseClick(&main->picPalette().cmdValue(0), Qt::LeftButton);
    EXPECT_EQ(State(1), "0|0|4");
    for (const char* state : {"4|0|4", "4|0|0", "0|0|0"}) {
        Run("mnuEditUndo");
        EXPECT_EQ(State(1), state);
    }
    for (const char* state : {"4|0|0", "4|0|4", "0|0|4"}) {
        Run("mnuEditRedo");
        EXPECT_EQ(State(1), state);
    }
    EXPECT_EQ(Masks(), "AXAAAAAAA");
}

TEST_F(PaletteTest, KeysEnterWhatTheButtonsEnter) {
    QTest::keyClick(&Active().ctrlCells(1), Qt::Key_4);
    EXPECT_EQ(State(1), "4|0|0");
    QTest::keyClick(&Active().ctrlCells(1), Qt::Key_Right);
    QTest::keyClick(main->Cell(), Qt::Key_4);
    EXPECT_EQ(State(2), "0|0|0");
    EXPECT_EQ(host.beeps, 1);
    QTest::keyClick(main->Cell(), Qt::Key_Left);
    QTest::keyClick(main->Cell(), Qt::Key_Delete);
    EXPECT_EQ(State(1), "0|0|0");
}

// ---- Exclusions.

TEST_F(PaletteTest, AnExclusionIsToggledAndAllAreClearedTogether) {
    for (const int digit : {2, 5, 9, 5}) main->cmdMask_Click(digit);
    EXPECT_EQ(State(1), "0|0|516");
    EXPECT_FALSE(Active().ctrlCells(1).Mask(2));
    EXPECT_TRUE(Active().ctrlCells(1).Mask(5));
    EXPECT_EQ(Masks(), "AXAAAAAAX");
    main->cmdMask_Click(0);
    EXPECT_EQ(State(1), "0|0|0");
    Run("mnuEditUndo");
    EXPECT_EQ(State(1), "0|0|516");
    EXPECT_EQ(Masks(), "AXAAAAAAX");
}

}  // namespace
