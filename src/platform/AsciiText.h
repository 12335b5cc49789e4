// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

// Names of keys, types and file extensions are told apart by ASCII's rules, whatever the locale.
namespace platform {

constexpr bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

constexpr char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Equal but for the case of letters.
constexpr bool SameName(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

}  // namespace platform
