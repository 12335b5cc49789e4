// SPDX-License-Identifier: MIT
#pragma once

// The kind of file that opens with the program, as desktops show it.
namespace GridFileType {

inline constexpr const char* extension = "nx3";
inline constexpr const char* description = "Grille de Ninarix";

}  // namespace GridFileType
