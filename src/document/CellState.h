// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class clsCell;

// What the history and grid files keep of a cell. The exclusion mask is the sum of 2^d over the excluded
// digits d, 1..9; no other bit is ever set.
struct CellState {
    std::uint8_t value = 0;
    bool locked = false;
    std::uint16_t mask = 0;

    bool operator==(const CellState&) const = default;
};

CellState StateOf(const clsCell& cell);
// Puts the cell into this state. Its listener hears of it once, when all of it is there.
void ApplyState(clsCell& cell, const CellState& state);

// "value|locked|mask"
std::string RecordText(const CellState& state);
// Reads it; fields behind the third are ignored, as are bits of the mask that stand for no digit. Error 9:
// fewer than three fields; error 13 or 6: a field that does not convert.
CellState ParseRecord(std::string_view record);

// One change of cell `index`, 1..81.
struct CellChange {
    int index = 0;
    CellState before;
    CellState after;

    bool operator==(const CellChange&) const = default;
};

// "index|value|locked|mask|index|value|locked|mask": the state before the change, then the one after it.
std::string ChangeText(const CellChange& change);
// Reads it. Error 9: fewer than eight fields, or an index that is none or not the same twice; error 13 or 6:
// a field that does not convert.
CellChange ParseChange(std::string_view text);
