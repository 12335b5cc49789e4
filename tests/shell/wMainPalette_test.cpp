// Entering values and exclusions.

#include <QTest>
#include <algorithm>
#include <map>
#include <utility>

#include "Program.h"
#include "support/DigitReader.h"

namespace {

class PaletteTest : public RunningProgram {
  protected:
    PaletteTest() : palette(main->picPalette()) {
        Run("mnuFileNew");
        Run("mnuGridConfig");  // off again
        Active().ctrlCells(1).DoSelect();
    }

    // The states of buttons 1..9: "." neutral, "a" allowed, "x" excluded; enabled ones "o", "A", "X".
    template <class Button>
    static std::string Column(Button button) {
        std::string states;
        for (int i = 1; i <= 9; ++i) {
            const auto state = static_cast<std::size_t>(button(i).State());
            states += button(i).isEnabled() ? "oAX"[state] : ".ax"[state];
        }
        return states;
    }
    std::string Values() const {
        return Column([this](int i) -> PaletteButton& { return palette.cmdValue(i); });
    }
    std::string Masks() const {
        return Column([this](int i) -> PaletteButton& { return palette.cmdMask(i); });
    }
    void ExpectRefused(int digit) {
        const std::string before = State(1);
        host.beeps = 0;
        main->cmdValue_Click(digit);
        EXPECT_EQ(host.beeps, 1) << digit;
        EXPECT_EQ(State(1), before) << digit;
    }

    Palette& palette;
};

TEST_F(PaletteTest, ItShowsWhatMayBeDoneInTheCurrentCell) {
    struct Case {
        const char* cell;
        bool hidden;
        const char* values;
        const char* masks;
    };
    Set(9, "5|0|0");
    for (const Case& c : {Case{"0|0|8", false, "oo.o.oooo", "AAXA.AAAA"},
                          {"7|1|8", false, "......a..", "oooo.o.oo"},
                          {"7|1|8", true, "ooooooooo", "........."}}) {
        if (main->MasksHidden() != c.hidden) Run("mnuGridHelpNone");
        Set(1, c.cell);
        EXPECT_EQ(Values(), c.values) << c.cell;
        EXPECT_EQ(Masks(), c.masks) << c.cell;
        EXPECT_TRUE(palette.cmdValue(0).isEnabled() && palette.cmdMask(0).isEnabled());
    }
    main->Cell(nullptr);
    EXPECT_EQ(Values() + Masks(), "..................");
    for (int i = 0; i <= 9; ++i) {
        main->cmdValue_Click(i);
        main->cmdMask_Click(i);
    }
    EXPECT_EQ(host.beeps, 20);
}

TEST_F(PaletteTest, StatesAreSeenByColourAndByMark) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");
    const auto pictureOf = [](QWidget& button) {
        return button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    // The colour that most of a button has.
    const auto fill = [&](PaletteButton& button) {
        std::map<QRgb, int> counts;
        const QImage image = pictureOf(button);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
        }
        const auto most = std::ranges::max_element(counts, {}, &std::pair<const QRgb, int>::second);
        return QColor(most->first).name().toStdString();
    };
    EXPECT_EQ(fill(palette.cmdMask(1)), "#00cc00");
    EXPECT_EQ(fill(palette.cmdMask(3)), "#cc0000");
    EXPECT_EQ(fill(palette.cmdMask(5)), "#888888");
    const auto read = [&](PaletteButton& button, const QRect& part, const char* paper) {
        return DigitReader::Read(pictureOf(button), part, QColor(paper)).digit;
    };
    const QRect area = palette.cmdValue(1).rect();
    for (int i = 1; i <= 9; ++i) {
        EXPECT_EQ(read(palette.cmdValue(i), area.adjusted(4, 4, -4, -4), "#888888"), i);
    }
    const QImage clear = pictureOf(palette.cmdValue(0));
    const QRectF picture = DigitReader::Read(clear, area.adjusted(4, 4, -4, -4), QColor("#888888")).place;
    EXPECT_TRUE(QRectF(0.01, 0.01, 0.98, 0.98).contains(picture)) << "the clear button's picture";
    // Without colours: an excluded digit is struck out, an allowed one has a tick in its corner.
    const int unit = std::min(area.width(), area.height()) / 10;
    const QRect tick(area.right() - 2 * unit - 2, area.bottom() - 4 * unit, 2 * unit, 2 * unit);
    const QRect strokeEnd(area.right() - 4 * unit, area.top() + unit, 3 * unit, 3 * unit);
    EXPECT_NE(read(palette.cmdMask(1), tick, "#00cc00"), 0);
    EXPECT_EQ(read(palette.cmdMask(1), strokeEnd, "#00cc00"), 0);
    EXPECT_NE(read(palette.cmdMask(3), strokeEnd, "#cc0000"), 0);
    EXPECT_EQ(read(palette.cmdValue(1), tick, "#888888"), 0);
}

TEST_F(PaletteTest, ItsColumnsFillThePanelAndSayWhatTheyDo) {
    const auto place = [&](PaletteButton& button) {
        return QRect(button.mapTo(&palette, QPoint()), button.size());
    };
    for (const QSize size : {QSize(150, 480), QSize(190, 900)}) {
        palette.resize(size);
        QRect last;
        for (int i = 0; i <= 9; ++i) {
            const QRect value = place(palette.cmdValue(i));
            const QRect mask = place(palette.cmdMask(i));
            EXPECT_TRUE(palette.rect().contains(value | mask)) << i;
            EXPECT_EQ(palette.cmdMask(i).geometry().center().x(),
                      palette.cmdMask(i).parentWidget()->rect().center().x());
            EXPECT_EQ(value.size(), mask.size());
            EXPECT_EQ(value.top(), mask.top());
            EXPECT_NEAR(value.left(), palette.width() - 1 - mask.right(), 1);
            EXPECT_NEAR(palette.cmdMask(i).font().pixelSize(), std::min(mask.width(), mask.height()) * 0.8,
                        1);
            EXPECT_LT(value.right(), mask.left() - 10);
            EXPECT_GE(value.top(), last.bottom() + 10) << i;
            last = value;
        }
        EXPECT_GT(last.bottom(), size.height() - 40);
    }
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

TEST_F(PaletteTest, ARefusedDigitBeepsAndIsNoChange) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");
    ExpectRefused(5);
    Run("mnuGridHelpNone");
    main->cmdValue_Click(5);
    EXPECT_EQ(State(1), "5|0|8");
    Set(1, "7|1|0");
    ExpectRefused(4);
    Run("mnuGridConfig");
    main->cmdValue_Click(4);
    EXPECT_EQ(State(1), "4|1|0");
}

TEST_F(PaletteTest, EveryEntryUpdatesCandidatesPaletteAndHistory) {
    QTest::mouseClick(&palette.cmdValue(4), Qt::LeftButton);
    EXPECT_EQ(State(1), "4|0|0");
    EXPECT_FALSE(Active().ctrlCells(2).Mask(4));
    EXPECT_EQ(Values()[3], 'a');
    EXPECT_EQ(Active().focusWidget(), &Active().ctrlCells(1)) << "the keyboard goes back to the cell";
    QTest::mouseClick(&palette.cmdMask(2), Qt::LeftButton);
    EXPECT_EQ(Masks()[1], 'X');
    QTest::mouseClick(&palette.cmdValue(0), Qt::LeftButton);
    EXPECT_EQ(State(1), "0|0|4");
    EXPECT_FALSE(Active().ctrlCells(1).Mask(2));
    QTest::mouseClick(&palette.cmdMask(0), Qt::LeftButton);
    EXPECT_EQ(State(1), "0|0|0");
    for (const char* state : {"0|0|4", "4|0|4", "4|0|0", "0|0|0"}) {
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
    QTest::keyClick(main->Cell(), Qt::Key_4);
    EXPECT_EQ(State(1), "4|0|0");
    QTest::keyClick(main->Cell(), Qt::Key_Right);
    QTest::keyClick(main->Cell(), Qt::Key_4);
    EXPECT_EQ(State(2), "0|0|0");
    EXPECT_EQ(host.beeps, 1);
    QTest::keyClick(main->Cell(), Qt::Key_Left);
    QTest::keyClick(main->Cell(), Qt::Key_Delete);
    EXPECT_EQ(State(1), "0|0|0");
}

}  // namespace
