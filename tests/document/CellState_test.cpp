#include "document/CellState.h"

#include "diagnostics/ErrorHandling.h"
#include "engine/clsCell.h"
#include "support/ScriptedHost.h"

namespace {

int ErrorOf(std::string_view record) {
    try {
        ParseRecord(record);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

int ExcludedBy(std::string_view record) {
    clsCell cell;
    ApplyExclusionMask(cell, ParseRecord(record).mask);
    return ExclusionMask(cell);
}

TEST(CellRecord, EveryByteIsAValueAndNothingElse) {
    EXPECT_EQ(ParseRecord("9|0|0").value, 9);
    EXPECT_EQ(ParseRecord("255|0|0").value, 255);
    EXPECT_EQ(ErrorOf("256|0|0"), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf("-1|0|0"), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf("99999999999999999999|0|0"), ErrorNumber::Overflow);
    for (const char* record : {"abc|0|0", "|0|0", "7x|0|0", "0x7|0|0", "nan|0|0", "inf|0|0"}) {
        EXPECT_EQ(ErrorOf(record), ErrorNumber::TypeMismatch) << record;
    }
}

TEST(CellRecord, LockedIsANumberOrOneOfTwoWords) {
    for (const char* yes : {"1|1|0", "1|-1|0", "1|2|0", "1|True|0", "1|tRUE|0"}) {
        EXPECT_TRUE(ParseRecord(yes).locked) << yes;
    }
    for (const char* no : {"1|0|0", "1|False|0", "1|0.0|0"}) EXPECT_FALSE(ParseRecord(no).locked) << no;
    for (const char* record : {"1|vrai|0", "1||0", "1|1x|0", "1| |0"}) {
        EXPECT_EQ(ErrorOf(record), ErrorNumber::TypeMismatch) << record;
    }
}

TEST(CellRecord, MaskCountsOnlyTheBitsOfTheNineDigits) {
    EXPECT_EQ(ExcludedBy("0|0|36"), 36);
    EXPECT_EQ(ExcludedBy("0|0|37"), 36);
    EXPECT_EQ(ExcludedBy("0|0|abc"), 0);
    EXPECT_EQ(ExcludedBy("0|0|6abc"), 6);
    EXPECT_EQ(ExcludedBy("0|0|"), 0);
    EXPECT_EQ(ExcludedBy("0|0|99999"), 99999 & 1022);
    EXPECT_EQ(ExcludedBy("0|0|1e9"), 1000000000 & 1022);
    EXPECT_EQ(ExcludedBy("0|0|-1"), 1022);
    EXPECT_EQ(ErrorOf("0|0|1e10"), ErrorNumber::Overflow);
}

TEST(CellRecord, TooFewFieldsAreASubscriptError) {
    for (const char* record : {"", "7", "7|1"}) {
        EXPECT_EQ(ErrorOf(record), ErrorNumber::OutOfBounds) << record;
    }
    EXPECT_EQ(ErrorOf("7|1|0|more|fields"), 0);
}

}  // namespace
