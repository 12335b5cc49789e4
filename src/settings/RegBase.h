// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The program's file type in the registry. No routine shows a message.
namespace RegBase {

// Makes the program open files of this extension (without the dot), unless the extension belongs to another
// program. True when its keys were written: at the first start only, as later ones find them there.
bool RegisterFileType(const std::string& exePath, const std::string& extension,
                      const std::string& commandArguments, const std::string& description, int iconIndex);

// Stores a text under a name (empty: the key's default value). 0, or the registry's error number. A key that
// exists already is refused with error 5: what an earlier start or another program stored stays.
int SetRegValue(std::uint32_t root, const std::string& path, std::string_view value, std::string_view name);

// Empty when the key or the value is missing.
std::string GetRegValue(std::uint32_t root, const std::string& path, std::string_view name);

}  // namespace RegBase
