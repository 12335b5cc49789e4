// SPDX-License-Identifier: MIT
#include "settings/Settings.h"

#include "diagnostics/ErrorHandling.h"
#include "platform/AsciiText.h"
#include "settings/Conversions.h"

namespace Settings {

namespace {

using platform::SameName;  // the store does not tell upper from lower case

constexpr std::string_view noColor;

constexpr bool EveryKeyHasOneRow() {
    bool unique = true;
    ForEach([&](const auto& row) {
        int rows = 0;
        ForEach([&](const auto& other) {
            rows += SameName(row.section, other.section) && SameName(row.key, other.key) ? 1 : 0;
        });
        unique = unique && rows == 1;
    });
    return unique;
}
static_assert(EveryKeyHasOneRow());

std::uint32_t ColorOf(const std::string& text, std::uint32_t byDefault) {
    // A missing key is usual, and throwing for it costs more than all the rest.
    if (text.empty()) return byDefault;
    try {
        const auto number = static_cast<std::uint32_t>(Conversions::ToLong(text));
        return number <= 0xFFFFFF ? number : byDefault;
    } catch (const RuntimeError&) {
        return byDefault;
    }
}

}  // namespace

bool Read(const Flag& row, const IniSnapshot& settings) {
    try {
        return ReadStrict(row, settings);
    } catch (const RuntimeError&) {
        return row.byDefault;
    }
}

double Read(const Number& row, const IniSnapshot& settings) {
    return Conversions::NumericPrefix(settings.Read(row.section, row.key, AsText(row, row.byDefault)));
}

std::uint32_t Read(const Color& row, const IniSnapshot& settings) {
    return ColorOf(settings.Read(row.section, row.key, noColor), row.byDefault);
}

std::string Read(const Measure& row, const IniSnapshot& settings) {
    return settings.Read(row.section, row.key, std::to_string(row.byDefault));
}

std::string Read(const Text& row, const IniSnapshot& settings) {
    return settings.Read(row.section, row.key, row.byDefault);
}

std::string Read(const TextFamily& rows, int index, const IniSnapshot& settings) {
    return settings.Read(rows.section, std::to_string(index), "");
}

std::uint32_t Read(const ColorFamily& rows, std::size_t index, const IniSnapshot& settings) {
    return ColorOf(settings.Read(rows.section, std::to_string(index), noColor), rows.byDefault.at(index));
}

bool ReadStrict(const Flag& row, const IniSnapshot& settings) {
    return Conversions::ToBoolean(settings.Read(row.section, row.key, AsText(row, row.byDefault)));
}

int ReadStrict(const Number& row, const IniSnapshot& settings) {
    return Conversions::ToInteger(settings.Read(row.section, row.key, AsText(row, row.byDefault)));
}

}  // namespace Settings
