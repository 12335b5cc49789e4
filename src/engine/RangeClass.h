// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

// A cell's font.
class FontClass {
  public:
    bool Bold = false;

    void Copy(FontClass& target) const { target.Bold = Bold; }
};

// One cell of a range: a text, empty or a digit's decimal text, and its marks.
class clsXlCellClass {
  public:
    FontClass Font;
    bool Locked = false;
    std::string Value;

    void Copy(clsXlCellClass& target) const;
};

// A 9 x 9 sheet of cells addressed by row and column, both 1..9. Owns its cells.
class RangeClass {
  public:
    // Error 9 when row or col is outside 1..9.
    clsXlCellClass& Cells(int row, int col);
    const clsXlCellClass& Cells(int row, int col) const;

    // Empties every text; Locked and Font.Bold stay.
    void ClearContents();

    // Copies texts and marks of all 81 cells onto the target's own cells.
    void Copy(RangeClass& target) const;

  private:
    std::array<clsXlCellClass, 81> cells_;  // row-major
};
