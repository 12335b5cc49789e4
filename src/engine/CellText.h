// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "settings/Conversions.h"

// The numbers that the cells of a range hold as texts: one digit nearly always, so that goes without the
// general conversion.
namespace Global {

// Error 13 when the text is no number, error 6 when it is too large.
inline int IntegerOf(const std::string& text) {
    if (text.size() == 1 && text[0] >= '0' && text[0] <= '9') return text[0] - '0';
    return Conversions::ToInteger(text);
}

inline void WriteInteger(std::string& text, int number) {
    if (number < 0 || number > 9) {
        text = std::to_string(number);
        return;
    }
    text.clear();
    text.push_back(static_cast<char>('0' + number));
}

}  // namespace Global
