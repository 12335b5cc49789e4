// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// Path texts, split at both kinds of separator, and the question for a file.
namespace FilesPaths {

inline constexpr std::string_view GridFilter = "Grilles Ninarix 3|*.nx3|Tous les fichiers|*.*";

// Everything before the last separator ("/" for a file of the root); empty without one.
std::string FolderOf(std::string_view path);

// The file's name without its folder, cut before its last full stop.
std::string NameOf(std::string_view path);

// The same file from wherever the program works later. An empty path stays empty.
std::string Absolute(const std::string& path);

// The open and save dialogs for grid files: the chosen path, or empty text when the user cancelled.
std::string AskOpenFile(const std::string& folder);
std::string AskSaveFile(const std::string& folder, const std::string& proposedName);

}  // namespace FilesPaths
