// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace Settings {

struct Level {
    int value;  // of the setting LevelValue
    std::string_view caption;
};

// In the order of the dialogs, from the easiest.
inline constexpr std::array<Level, 4> Levels{
    {{7, "Débutant"}, {6, "Facile"}, {5, "Moyen"}, {4, "Difficile"}}};

}  // namespace Settings
