// SPDX-License-Identifier: MIT
#include "settings/Settings.h"

#include "diagnostics/ErrorHandling.h"
#include "settings/ColorTable.h"
#include "support/ScriptedHost.h"

namespace {

template <class Row>
auto From(const Row& row, const std::string& text) {
    ScriptedHost::WriteFile(IniParamProcs::IniFilePath(), "[" + std::string(row.section) + "]\n" +
                                                              std::string(row.key) + "=" + text + "\n");
    return Settings::Read(row);
}

// The keys of files that users have.
TEST(Settings, EveryRowReadsItsDefaultAndIsWrittenUnderItsKey) {
    const ScriptedHost host;
    Settings::ProfileChanges changes;
    Settings::ForEach([&](const auto& row) {
        EXPECT_TRUE(Settings::IsMissing(row)) << row.key;
        using Value = std::conditional_t < requires {
            row.highest;
        }
        , int, decltype(Settings::Read(row)) > ;
        Settings::Write(changes, row, static_cast<Value>(Settings::Read(row)));
    });
    changes.Commit();
    EXPECT_EQ(ScriptedHost::ReadFile(IniParamProcs::IniFilePath()),
              "[Options]\r\nColor_0=16777215\r\nColor_1=65535\r\nColor_2=0\r\nColor_3=255\r\nColor_4=0\r\n"
              "Color_6=0\r\nColor_5=255\r\nGridSize=120\r\nMarginTop=15\r\nMarginLeft=45\r\nLinesWidth=0\r\n"
              "NoSplash=0\r\nConfigOnNew=1\r\nLevelAsk=0\r\nLevelValue=5\r\nResolLoop=0\r\nNoAutoMasks=0\r\n"
              "GridHelpNone=0\r\n[Impression]\r\nPrinter=\r\nOrientation=0\r\nNoir&Blanc=0\r\n"
              "[Files]\r\nLastOpened=\r\nLastSaved=\r\n");
}

TEST(Settings, WhatDoesNotConvertReadsAsTheDefaultOrIsAnErrorForAStrictReader) {
    const ScriptedHost host;
    for (const auto& row : {Settings::ConfigOnNew, Settings::LevelAsk}) {
        for (const char* text : {"-1", " 0.5", "TRUE"}) EXPECT_TRUE(From(row, text)) << text;
        for (const char* text : {"0", "false"}) EXPECT_FALSE(From(row, text)) << text;
        for (const char* text : {"", "oui", "1x"}) {
            EXPECT_EQ(From(row, text), row.byDefault) << text;
            EXPECT_THROW(Settings::ReadStrict(row), RuntimeError) << text;
        }
    }
    for (const auto& [text, number] : {std::pair{"6,5", 6}, {"abc", 0}, {"", 0}}) {
        EXPECT_EQ(From(Settings::LevelValue, text), number);
        EXPECT_THROW(Settings::ReadStrict(Settings::LevelValue), RuntimeError) << text;
    }
    EXPECT_EQ(From(Settings::LevelValue, "-12"), -12);
    EXPECT_EQ(Settings::ReadStrict(Settings::LevelValue), -12);
    EXPECT_FALSE(Settings::IsMissing(Settings::LevelValue));
    for (const char* text : {"", "rouge", "0x", "-1", "1e99", "16777216"}) {
        EXPECT_EQ(From(Settings::Colors[1], text), 0xFFFFU) << text;
    }
    EXPECT_EQ(From(Settings::Colors[1], "16777215"), 0xFFFFFFU);
    EXPECT_EQ(From(Settings::Colors[5], " 254.7 "), 255U);
    EXPECT_EQ(ColorTable::FromSettings({1, 2, 3, 4, 5, 6, 7}), (ColorTable::Colors{1, 2, 3, 4, 5, 6, 255}));
}

}  // namespace
