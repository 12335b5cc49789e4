// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// A grid as plain text, as people and programs pass puzzles on.
namespace GridText {

using Values = std::array<std::uint8_t, 81>;  // row by row, 0 for an empty cell

// Nine lines of nine characters, "." for an empty cell.
std::string Write(const Values& values);

// Reads 81 cells on one line or on lines of nine (or a multiple of nine) each: digits, and for empty cells
// "." "0" "*" "_" or, where the text has none of these, "-" beside digits. Blanks, commas, semicolons and
// frames are skipped, so are lines that begin with "#"; nine fields of a table's line may be empty. Nothing
// for any other text: other characters, more or fewer cells - a table of candidates - or more than 64 kB.
std::optional<Values> Read(std::string_view text);

}  // namespace GridText
