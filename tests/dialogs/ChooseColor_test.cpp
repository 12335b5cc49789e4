#include "settings/dialogs/ChooseColor.h"

#include <gtest/gtest.h>
#include <string>

#include "settings/Settings.h"
#include "support/ScriptedHost.h"

namespace {

using Colours = platform::ColourDialogs::CustomColours;

std::string Custom(int index) {
    return IniParamProcs::ReadIniParam("CustomColors", std::to_string(index), "missing");
}

void Store(int index, std::uint32_t colour) {
    IniParamProcs::WriteIniParam("CustomColors", std::to_string(index), std::to_string(colour));
}

TEST(ColourChooser, OffersTheKeptColoursAndTheSystemsForTheRest) {
    ScriptedHost host;
    Store(3, 0x112233);
    Store(4, 0xFFFFFFFF);  // no colour
    Colours offered{};
    host.onChooseColour = [&](std::uint32_t initial, Colours& custom) {
        EXPECT_EQ(initial, 0x0000FFU);
        offered = custom;
        return std::nullopt;
    };
    EXPECT_EQ(ChooseColor(0x0000FF), -1);
    EXPECT_EQ(offered[3], 0x112233U);
    EXPECT_EQ(offered[4], Settings::CustomColors.byDefault[4]);
    EXPECT_EQ(offered[15], Settings::CustomColors.byDefault[15]);
}

TEST(ColourChooser, KeepsOnlyWhatDiffersFromTheSystemAfterOk) {
    ScriptedHost host;
    Store(0, 0x010101);
    Store(1, 0x020202);
    host.onChooseColour = [](std::uint32_t, Colours& custom) {
        custom[0] = Settings::CustomColors.byDefault[0];  // back to what it was
        custom[2] = 0x030303;
        return 0x00ABCDEFU;
    };
    EXPECT_EQ(ChooseColor(0), 0xABCDEF);
    EXPECT_EQ(Custom(0), "missing");
    EXPECT_EQ(Custom(1), std::to_string(0x020202));
    EXPECT_EQ(Custom(2), std::to_string(0x030303));
    EXPECT_EQ(Custom(3), "missing");
}

TEST(ColourChooser, ACancelledChooserKeepsTheCustomColoursAsTheyWere) {
    ScriptedHost host;
    Store(0, 0x010101);
    host.onChooseColour = [](std::uint32_t, Colours& custom) -> std::optional<std::uint32_t> {
        custom.fill(0x777777);
        return std::nullopt;
    };
    EXPECT_EQ(ChooseColor(0), -1);
    EXPECT_EQ(Custom(0), std::to_string(0x010101));
    EXPECT_EQ(Custom(1), "missing");
}

}  // namespace
