#include "settings/ColorTable.h"

#include "settings/IniParamProcs.h"
#include "support/ScriptedHost.h"

TEST(ColorTable, NumbersThatAreNoColourGiveTheDefault) {
    ScriptedHost host;
    host.WriteFile(IniParamProcs::IniFilePath(),
                   "[OPTIONS]\r\nColor_0=16777216\r\ncolor_1= 255 \r\nColor_2=-1\r\nColor_3=1e99\r\n"
                   "Color_4=16777215\r\nColor_5=254.7\r\n[x]\r\nColor_6=9\r\n");
    EXPECT_EQ(ColorTable::FromSettings({1, 2, 3, 4, 5, 6, 7}),
              (ColorTable::Colors{1, 255, 3, 4, 16777215, 255, 7}));
}
