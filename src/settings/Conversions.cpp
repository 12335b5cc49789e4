// SPDX-License-Identifier: MIT
#include "settings/Conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "diagnostics/ErrorHandling.h"
#include "platform/AsciiText.h"

namespace Conversions {

namespace {

struct Prefix {
    double number = 0;
    std::string_view rest;  // of the text behind the number
};

std::string_view TrimText(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Which end of the type's range an unsigned number lies beyond: its exponent tells, or its digits.
bool IsNearZero(std::string_view number) {
    const auto exponent = number.find_first_of("eE");
    if (exponent != std::string_view::npos) return number[exponent + 1] == '-';
    return number[number.find_first_not_of('0')] == '.';
}

// The number that the text starts with; the library's words for infinity and the like are none.
std::optional<Prefix> LeadingNumber(std::string_view text) {
    text = TrimText(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const bool digits =
        !text.empty() && ((text.front() >= '0' && text.front() <= '9') || text.front() == '.');
    if (!digits) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::invalid_argument) return std::nullopt;
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error == std::errc::result_out_of_range) {
        number = IsNearZero(text.substr(0, length)) ? 0 : std::numeric_limits<double>::max();
    }
    return Prefix{negative ? -number : number, text.substr(length)};
}

double WholeNumber(std::string_view text) {
    const auto prefix = LeadingNumber(text);
    if (!prefix || !prefix->rest.empty()) throw RuntimeError(ErrorNumber::TypeMismatch);
    return prefix->number;
}

template <class Integer>
Integer RoundTo(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<Integer>(rounded);
}

}  // namespace

std::uint8_t ToByte(std::string_view text) {
    return RoundTo<std::uint8_t>(WholeNumber(text));
}

std::int16_t ToInteger(std::string_view text) {
    return RoundTo<std::int16_t>(WholeNumber(text));
}

std::int32_t ToLong(std::string_view text) {
    return RoundTo<std::int32_t>(WholeNumber(text));
}

bool ToBoolean(std::string_view text) {
    const std::string_view word = TrimText(text);
    if (platform::SameName(word, "true")) return true;
    if (platform::SameName(word, "false")) return false;
    return WholeNumber(text) != 0;
}

double NumericPrefix(std::string_view text) {
    const auto prefix = LeadingNumber(text);
    return prefix ? prefix->number : 0;
}

std::int16_t RoundToInteger(double value) {
    return RoundTo<std::int16_t>(value);
}

std::int32_t RoundToLong(double value) {
    return RoundTo<std::int32_t>(value);
}

}  // namespace Conversions
