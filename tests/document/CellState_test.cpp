// SPDX-License-Identifier: MIT
#include "document/CellState.h"

#include <gtest/gtest.h>

#include "DocumentSupport.h"

namespace {

TEST(CellRecord, EachFieldConvertsByItsOwnRule) {
    constexpr CellState given{9, true, 0};
    for (const char* text : {"9|1|0", "9|-1|0", "9|tRUE|abc", " 9 |2|1", "9.2|1||x|y", "9|1|-1024"}) {
        EXPECT_EQ(ParseRecord(text), given) << text;
    }
    EXPECT_EQ(ParseRecord("255|False|37x"), (CellState{255, false, 36}));
    EXPECT_EQ(ParseRecord("0|0.0|-1"), (CellState{0, false, 1022}));
    const std::pair<int, std::vector<const char*>> refused[] = {
        {ErrorNumber::Overflow, {"256|0|0", "-1|0|0", "99999999999999999999|0|0", "0|0|1e10"}},
        {ErrorNumber::TypeMismatch, {"abc|0|0", "|0|0", "7x|0|0", "1|vrai|0", "1||0"}},
        {ErrorNumber::OutOfBounds, {"", "7", "7|1"}}};
    for (const auto& [error, texts] : refused)
        for (const char* text : texts) EXPECT_EQ(ErrorOf([&] { ParseRecord(text); }), error) << text;
}

TEST(CellRecord, AChangeIsTwoStatesOfOneCell) {
    const CellChange change{81, {0, false, 1022}, {7, true, 4}};
    EXPECT_EQ(ChangeText(change), "81|0|0|1022|81|7|1|4");
    EXPECT_EQ(ParseChange(ChangeText(change)), change);
    for (const char* text :
         {"5|7|0|0|5|7|0", "5|7|0|0", "82|7|0|0|82|0|0|0", "0|7|0|0|0|0|0|0", "5|7|0|0|6|0|0|0"}) {
        EXPECT_EQ(ErrorOf([&] { ParseChange(text); }), ErrorNumber::OutOfBounds) << text;
    }
    EXPECT_EQ(ErrorOf([] { ParseChange("x|7|0|0|x|0|0|0"); }), ErrorNumber::TypeMismatch);
}

}  // namespace
