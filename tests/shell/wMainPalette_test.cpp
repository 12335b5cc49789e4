// Entering values and exclusions.

#include <QTest>
#include <functional>

#include "Program.h"

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
    void ExpectNoHistory() {
        host.Expect(platform::MessageButton::Ok);
        Run("mnuEditUndo");
        EXPECT_EQ(LastBox(), "Rien à annuler");
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

// ---- Values.

TEST_F(PaletteTest, ImpossibleAndExcludedDigitsAreRefusedWhileMasksAreShown) {
    Set(9, "5|0|0");
    Set(1, "0|0|8");
    ExpectRefused(5);
    ExpectRefused(3);
    ExpectNoHistory();
    Run("mnuGridHelpNone");
    main->cmdValue_Click(5);
    EXPECT_EQ(State(1), "5|0|8");
    main->cmdValue_Click(3);
    EXPECT_EQ(State(1), "3|0|8");
}

TEST_F(PaletteTest, AGivenChangesInInitialisationModeOnly) {
    Set(1, "7|1|0");
    ExpectRefused(4);
    ExpectRefused(0);
    ExpectNoHistory();
    Run("mnuGridConfig");
    main->cmdValue_Click(4);
    EXPECT_EQ(State(1), "4|1|0");
}

TEST_F(PaletteTest, InitialisationModeLocksWhatIsTypedAndUnlocksWhatIsCleared) {
    main->cmdValue_Click(4);
    EXPECT_EQ(State(1), "4|0|0");
    Run("mnuGridConfig");
    main->cmdValue_Click(6);
    EXPECT_EQ(State(1), "6|1|0");
    main->cmdValue_Click(0);
    EXPECT_EQ(State(1), "0|0|0");
}

TEST_F(PaletteTest, EveryEntryUpdatesCandidatesPaletteAndHistory) {
    QTest::mouseClick(&main->picPalette().cmdValue(4), Qt::LeftButton);
    EXPECT_EQ(State(1), "4|0|0");
    EXPECT_FALSE(Active().ctrlCells(2).Mask(4));
    EXPECT_EQ(Values(), "oooaooooo");
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
