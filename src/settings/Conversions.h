// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

// Texts from files and settings into numbers. Blanks around the text are ignored; a number may have a
// sign, a decimal point and an exponent; halves are rounded to the even neighbour.
namespace Conversions {

// 0..255. Error 13: not a number; error 6: out of range.
std::uint8_t ToByte(std::string_view text);

// -32768..32767. Error 13: not a number; error 6: out of range.
std::int16_t ToInteger(std::string_view text);

// A 32-bit number. Error 13: not a number; error 6: out of range.
std::int32_t ToLong(std::string_view text);

// Any number other than 0, or True in any letter case, is true; 0 or False is false. Otherwise error 13.
bool ToBoolean(std::string_view text);

// The number at the start of the text, 0 if there is none. Never fails.
double NumericPrefix(std::string_view text);

// Rounds half to even. Error 6 beyond the type's range.
std::int16_t RoundToInteger(double value);
std::int32_t RoundToLong(double value);

}  // namespace Conversions
