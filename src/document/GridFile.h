// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "document/CellState.h"
#include "platform/ProfileFile.h"
#include "platform/SafeFile.h"

// A grid file: profile-file text with one section of empty name and the keys 1..81, each
// "value|locked|exclusion mask".
using GridStates = std::array<CellState, 81>;  // of cell i at i - 1

// Nothing when there is no such file or it cannot be read; never waits on a pipe. A missing key is an empty
// cell, an empty file an empty grid. Error 321: a file without the section; 6, 9 or 13: a record that does
// not convert. `stamp` becomes that of what was read.
std::optional<GridStates> ReadGridFile(const std::string& path, platform::FileStamp& stamp);

// The cells in a profile file. A missing key is an empty cell. Error 6, 9 or 13: see ReadGridFile.
GridStates StatesIn(const platform::ProfileFile& file);
// "1" to the number of keys.
std::vector<std::string> NumberedKeys(std::size_t count);

// The bytes of a grid file.
std::string GridFileText(const GridStates& states);

// The file is what was written when it got this stamp, and holds these cells.
bool HoldsStates(const std::string& path, const GridStates& states, const platform::FileStamp& stamp);

// Written whole, in one step. False, the old file untouched, when not everything reached the disk. `stamp`
// becomes that of the new file.
bool WriteGridFile(const std::string& path, const GridStates& states, platform::FileStamp& stamp);
