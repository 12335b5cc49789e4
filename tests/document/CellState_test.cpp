#include "document/CellState.h"

#include <gtest/gtest.h>

#include "diagnostics/ErrorHandling.h"
#include "engine/clsCell.h"

namespace {

template <class Parse>
int ErrorOf(Parse parse) {
    try {
        parse();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

int RecordError(std::string_view text) {
    return ErrorOf([&] { ParseRecord(text); });
}
int ChangeError(std::string_view text) {
    return ErrorOf([&] { ParseChange(text); });
}

TEST(CellRecord, EachFieldConvertsByItsOwnRule) {
    constexpr CellState given{9, true, 0};
    for (const char* text : {"9|1|0", "9|-1|0", "9|tRUE|abc", " 9 |2|1", "9.2|1||x|y", "9|1|-1024"}) {
        EXPECT_EQ(ParseRecord(text), given) << text;
    }
    EXPECT_EQ(ParseRecord("255|False|37x"), (CellState{255, false, 36}));
    EXPECT_EQ(ParseRecord("0|0.0|-1"), (CellState{0, false, 1022}));
    for (const char* text : {"256|0|0", "-1|0|0", "99999999999999999999|0|0", "0|0|1e10"}) {
        EXPECT_EQ(RecordError(text), ErrorNumber::Overflow) << text;
    }
    for (const char* text : {"abc|0|0", "|0|0", "7x|0|0", "nan|0|0", "1|vrai|0", "1||0", "1|1x|0"}) {
        EXPECT_EQ(RecordError(text), ErrorNumber::TypeMismatch) << text;
    }
    for (const char* text : {"", "7", "7|1"}) EXPECT_EQ(RecordError(text), ErrorNumber::OutOfBounds) << text;
}

TEST(CellRecord, AChangeIsTwoStatesOfOneCell) {
    const CellChange change{81, {0, false, 1022}, {7, true, 4}};
    EXPECT_EQ(ChangeText(change), "81|0|0|1022|81|7|1|4");
    EXPECT_EQ(ParseChange(ChangeText(change)), change);
    for (const char* text :
         {"5|7|0|0|5|7|0", "5|7|0|0", "82|7|0|0|82|0|0|0", "0|7|0|0|0|0|0|0", "5|7|0|0|6|0|0|0"}) {
        EXPECT_EQ(ChangeError(text), ErrorNumber::OutOfBounds) << text;
    }
    EXPECT_EQ(ChangeError("x|7|0|0|x|0|0|0"), ErrorNumber::TypeMismatch);
}

TEST(CellRecord, AListenerHearsOfTheWholeState) {
    clsCell cell;
    CellState heard;
    int calls = 0;
    cell.OnChange([&](std::uint8_t) {
        heard = StateOf(cell);
        ++calls;
    });
    const CellState state{5, true, 516};
    ApplyState(cell, state);
    EXPECT_EQ(heard, state);
    EXPECT_EQ(calls, 1);
    ApplyState(cell, {0, false, 8});
    EXPECT_EQ(StateOf(cell), (CellState{0, false, 8})) << "exclusions are replaced, not merged";
}

}  // namespace
