// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/GridDocument.h"

// The text of a recovery file: a grid file, which can be opened as one, with two sections more.
//
//   []          1..81=value|locked|mask         the cells as they were last
//   [Recovery]  Version, Caption, Path          %XX for the bytes that a value cannot hold
//               Stamp                           of the file at the path; missing when there is none
//               Steps, Position, Saved          of the history; Saved is missing when no file holds the grid
//   [History]   1..Steps=change;change...       see ChangeText
//   [End]       Sum                             of every byte before the section, FNV-1a, 16 hexadecimal
//   digits
namespace RecoveryFile {

std::string Text(const GridSnapshot& snapshot);

// Nothing for a text that is not whole, is another version's or holds what no grid can be.
std::optional<GridSnapshot> Parse(std::string text);

}  // namespace RecoveryFile
