// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "settings/Settings.h"

// The seven colours of the program, red in the low byte:
//   0 background of the window and of cells   1 background of the selected cell   2 grid lines
//   3 values of locked cells   4 values of other cells   5 help digits of locked cells   6 candidates
namespace ColorTable {

using Colors = std::array<std::uint32_t, 7>;

// What a fresh settings file gets.
inline constexpr Colors Defaults = [] {
    Colors colors{};
    for (const Settings::Color& row : Settings::Colors) colors[row.Index()] = row.byDefault;
    return colors;
}();

// The shared table: filled at start-up and by the options dialog.
Colors& Shared();

// The colours as the settings file holds them now, read in one go. A missing key gives the default; one that
// holds no 24-bit colour gives what a fresh file gets, as black on black would help nobody.
Colors FromSettings(const Colors& byDefault = Defaults);

}  // namespace ColorTable
