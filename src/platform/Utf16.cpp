// SPDX-License-Identifier: MIT
#include "platform/Utf16.h"

#include <cstddef>
#include <cstdint>

namespace platform {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t loneByte = 0xDC00;  // plus the byte

constexpr bool IsHigh(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLow(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}
constexpr bool IsLoneByte(char32_t unit) {
    return unit >= loneByte + 0x80 && unit <= loneByte + 0xFF;
}

constexpr std::uint8_t Byte(std::string_view text, std::size_t i) {
    return static_cast<std::uint8_t>(text[i]);
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto continuation = [&](unsigned shift) {
        text += static_cast<char>(0x80U | (code >> shift & 0x3FU));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | code >> 6U);
        continuation(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | code >> 12U);
        continuation(6);
        continuation(0);
    } else {
        text += static_cast<char>(0xF0U | code >> 18U);
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

// The character that starts at `place`, which moves behind it.
char32_t NextCharacter(std::string_view text, std::size_t& place) {
    const std::uint8_t first = Byte(text, place);
    const std::size_t length = first < 0x80                   ? 1
                               : first < 0xC2 || first > 0xF4 ? 0
                               : first < 0xE0                 ? 2
                               : first < 0xF0                 ? 3
                                                              : 4;
    char32_t code = length < 2 ? first : first & (0x7FU >> length);
    std::size_t read = 1;
    while (read < length && place + read < text.size() && (Byte(text, place + read) & 0xC0U) == 0x80) {
        code = code << 6U | (Byte(text, place + read) & 0x3FU);
        ++read;
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool valid = length > 0 && read == length && code >= smallest[length] && code <= 0x10FFFF &&
                       !IsHigh(code) && !IsLow(code);
    if (!valid) {
        ++place;
        return loneByte + first;
    }
    place += length;
    return code;
}

void AppendUnit(std::string& units, char32_t unit, ByteOrder order) {
    const char low = static_cast<char>(unit & 0xFFU);
    const char high = static_cast<char>(unit >> 8U & 0xFFU);
    units += order == ByteOrder::Little ? low : high;
    units += order == ByteOrder::Little ? high : low;
}

}  // namespace

std::string FromUtf16(std::string_view units, ByteOrder order) {
    const auto unitAt = [&](std::size_t i) -> char32_t {
        if (i + 1 >= units.size()) return replacement;
        const char32_t first = Byte(units, i), second = Byte(units, i + 1);
        return order == ByteOrder::Little ? first | second << 8U : first << 8U | second;
    };
    std::string text;
    text.reserve(units.size() / 2);
    for (std::size_t i = 0; i < units.size(); i += 2) {
        const char32_t unit = unitAt(i);
        if (IsHigh(unit) && IsLow(unitAt(i + 2))) {
            AppendUtf8(text, 0x10000 + ((unit & 0x3FFU) << 10U) + (unitAt(i + 2) & 0x3FFU));
            i += 2;
        } else if (IsLoneByte(unit)) {
            text += static_cast<char>(unit - loneByte);
        } else {
            AppendUtf8(text, IsHigh(unit) || IsLow(unit) ? replacement : unit);
        }
    }
    return text;
}

std::string ToUtf16(std::string_view text, ByteOrder order) {
    std::string units;
    units.reserve(text.size() * 2);
    for (std::size_t place = 0; place < text.size();) {
        const char32_t code = NextCharacter(text, place);
        if (code >= 0x10000) {
            AppendUnit(units, 0xD800 + ((code - 0x10000) >> 10U), order);
            AppendUnit(units, 0xDC00 + (code & 0x3FFU), order);
        } else {
            AppendUnit(units, code, order);
        }
    }
    return units;
}

}  // namespace platform
