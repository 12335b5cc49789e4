#include "EngineSupport.h"

using Ranges = EngineTest;

// Faults: a cell reached under the wrong address, memory beside the sheet, marks or texts lost, or kept where
// they should not be.
TEST_F(Ranges, KeepEachCellApartAndCopyTextsWithTheirMarks) {
    for (int cell = 1; cell <= 81; ++cell)
        puzzle.Cells(Row(cell), Col(cell)) = {{cell % 2 == 0}, cell % 3 == 0, std::to_string(cell)};
    working.Cells(5, 5) = {{true}, true, "1"};
    puzzle.Copy(working);
    puzzle.ClearContents();
    EXPECT_EQ(TextOf(puzzle), emptyGrid);
    for (int cell = 1; cell <= 81; ++cell) {
        const clsXlCellClass& copy = std::as_const(working).Cells(Row(cell), Col(cell));
        EXPECT_EQ(copy.Value, std::to_string(cell));
        EXPECT_TRUE(copy.Font.Bold == (cell % 2 == 0) && copy.Locked == (cell % 3 == 0)) << cell;
    }
    EXPECT_TRUE(puzzle.Cells(9, 9).Locked && puzzle.Cells(9, 8).Font.Bold &&
                !RangeClass().Cells(1, 1).Font.Bold);
    for (const int wrong : {0, 10, -1, 82}) {
        EXPECT_EQ(ErrorOf([&] { puzzle.Cells(wrong, 5); }), 9) << wrong;
        EXPECT_EQ(ErrorOf([&] { std::as_const(puzzle).Cells(5, wrong); }), 9) << wrong;
    }
}
