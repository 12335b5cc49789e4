// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

// One cell of a grid. Accessors never fail: an index outside 1..9 reads as false and writes nothing.
class clsCell {
  public:
    using ChangeHandler = std::function<void(std::uint8_t)>;

    // The digit, 0 when empty. Any 8-bit value is stored; every assignment raises Change, also of the
    // value that the cell already has.
    std::uint8_t Value() const { return value_; }
    void Value(std::uint8_t value);

    // Digit k is still possible; computed by clsGrid::ManageAvails, never marks the cell modified.
    bool Avail(int k) const { return IsDigitIndex(k) && (avail_ >> k & 1) != 0; }
    void Avail(int k, bool flag);
    // All nine at once, bit k for digit k; no other bit.
    void Avails(unsigned digits) { avail_ = static_cast<std::uint16_t>(digits); }

    // Digit k was excluded by the user.
    bool Inhib(int k) const { return IsDigitIndex(k) && (inhib_ >> k & 1) != 0; }
    void Inhib(int k, bool flag);

    bool Modified() const { return modified_; }
    void Modified(bool flag) { modified_ = flag; }

    // The cell is a given of the puzzle.
    bool Locked() const { return locked_; }
    void Locked(bool flag);

    std::uint8_t GridIndex() const { return gridIndex_; }
    void GridIndex(std::uint8_t index) { gridIndex_ = index; }
    std::uint8_t SubGrid() const { return subGrid_; }
    void SubGrid(std::uint8_t box) { subGrid_ = box; }
    std::uint8_t Row() const { return row_; }
    void Row(std::uint8_t row) { row_ = row; }
    std::uint8_t Col() const { return col_; }
    void Col(std::uint8_t col) { col_ = col; }

    // The one listener of the Change event, called inside the Value setter; an empty one ends listening.
    void OnChange(ChangeHandler handler) { change_ = std::move(handler); }

  private:
    static constexpr bool IsDigitIndex(int k) { return k >= 1 && k <= 9; }

    ChangeHandler change_;
    std::uint16_t avail_ = 0x3FE;
    std::uint16_t inhib_ = 0;
    std::uint8_t value_ = 0;
    std::uint8_t gridIndex_ = 0;
    std::uint8_t subGrid_ = 0;
    std::uint8_t row_ = 0;
    std::uint8_t col_ = 0;
    bool modified_ = false;
    bool locked_ = false;
};
