#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class clsCell;

// What undo and grid files keep of a cell. The exclusion mask is the sum of 2^d over the excluded digits d
// (1..9); other bits are ignored.
struct CellState {
    std::uint8_t value = 0;
    bool locked = false;
    std::int32_t mask = 0;
};

int ExclusionMask(const clsCell& cell);
// Replaces all nine exclusions.
void ApplyExclusionMask(clsCell& cell, std::int32_t mask);

// "value|locked|mask"
std::string RecordText(const clsCell& cell);
// "index|value|locked|mask"
std::string CellStateText(const clsCell& cell);

// Reads "value|locked|mask"; fields behind the third are ignored. Error 9: fewer than three fields; error 13
// or 6: a field that does not convert.
CellState ParseRecord(std::string_view record);

// Cuts the field `index` (from 0) out of a text of fields joined by "|". Error 9: there are fewer.
std::string_view FieldOf(std::string_view text, int index);
