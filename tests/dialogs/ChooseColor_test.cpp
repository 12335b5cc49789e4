// SPDX-License-Identifier: MIT
#include "settings/dialogs/ChooseColor.h"

#include "DialogSupport.h"

namespace {

TEST(ColourChooser, KeepsOnlyWhatDiffersFromTheSystemAndOnlyAfterOk) {
    ScriptedHost host;
    const auto& system = Settings::CustomColors.byDefault;
    const std::string before = "[CustomColors]\r\n0=65793\r\n1=131586\r\n4=16777216\r\n15=7\r\n";
    ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), before);
    std::optional<std::uint32_t> answer;
    host.onChooseColour = [&](std::uint32_t initial, platform::ColourDialogs::CustomColours& custom) {
        EXPECT_EQ(initial, 0x0000FFU);
        EXPECT_TRUE(custom[0] == 0x010101 && custom[15] == 7);
        EXPECT_TRUE(custom[3] == system[3] && custom[4] == system[4]) << "missing, or no colour";
        custom[0] = system[0];
        custom[2] = 0x030303;
        custom[15] = 8;
        return answer;
    };
    EXPECT_EQ(ChooseColor(0x0000FF), -1);
    EXPECT_EQ(ScriptedHost::ReadFile(IniParamProcs::IniFilePath()), before);
    answer = 0xABCDEF;
    EXPECT_EQ(ChooseColor(0x0000FF), 0xABCDEF);
    EXPECT_EQ(ScriptedHost::ReadFile(IniParamProcs::IniFilePath()),
              "[CustomColors]\r\n1=131586\r\n15=8\r\n2=197379\r\n");
}

}  // namespace
