#include "EngineSupport.h"

// Faults: a cell reached under the wrong address, or memory beside the sheet.
TEST(RangeAddresses, AreEachACellOfItsOwnAndError9Outside) {
    RangeClass range;
    for (int n = 0; n < 81; ++n) range.Cells(n / 9 + 1, n % 9 + 1).Value = std::to_string(n);
    const RangeClass& read = range;
    for (int n = 0; n < 81; ++n) EXPECT_EQ(read.Cells(n / 9 + 1, n % 9 + 1).Value, std::to_string(n));
    for (const int wrong : {0, 10, -1, 82}) {
        EXPECT_EQ(ErrorOf([&] { range.Cells(wrong, 5); }), 9) << wrong;
        EXPECT_EQ(ErrorOf([&] { read.Cells(5, wrong); }), 9) << wrong;
    }
}

// Faults: marks or texts lost, or kept where they should not be.
TEST(RangeMarks, StayWhenTextsAreClearedAndAreCopiedWithThem) {
    RangeClass source;
    RangeClass target;
    source.Cells(9, 9) = {{true}, true, "4"};
    source.ClearContents();
    target.Cells(9, 9).Value = "1";
    target.Cells(5, 5) = {{true}, true, "1"};
    source.Copy(target);
    EXPECT_EQ(target.Cells(9, 9).Value, "");
    EXPECT_TRUE(target.Cells(9, 9).Locked && target.Cells(9, 9).Font.Bold);
    EXPECT_EQ(target.Cells(5, 5).Value, "");
    EXPECT_FALSE(target.Cells(5, 5).Locked || target.Cells(5, 5).Font.Bold);
}
