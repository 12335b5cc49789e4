// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/IniParamProcs.h"

// Every key of the settings file, one row each. A row's type says what is read from it and written to it:
// Settings::Read(Settings::LevelAsk) is a bool, and only a bool can be written there.
namespace Settings {

struct Flag {
    std::string_view section, key;
    bool byDefault;
};
// A file may hold any number; a reader that has no use for one out of range takes the default.
struct Number {
    std::string_view section, key;
    int byDefault, lowest, highest;

    constexpr bool Allows(double number) const { return number >= lowest && number <= highest; }
};
// 24 bits with red in the low byte.
struct Color {
    std::string_view section, key;
    std::uint32_t byDefault;
    std::string_view label;  // beside its field in the options dialog

    constexpr std::size_t Index() const { return static_cast<std::size_t>(key.back() - '0'); }
};
// Millimetres, kept as the text that the user typed.
struct Measure {
    std::string_view section, key;
    int byDefault;
};
struct Text {
    std::string_view section, key;
    std::string_view byDefault;
};
// Keys that are the numbers first..last.
struct TextFamily {
    std::string_view section;
    int first, last;
};
struct ColorFamily {
    std::string_view section;
    std::array<std::uint32_t, 16> byDefault;  // of the keys "0" to "15"
};

// In the order of the options dialog.
inline constexpr std::array<Color, 7> Colors{{
    {"Options", "Color_0", 0xFFFFFF, "Fond de la fenêtre"},
    {"Options", "Color_1", 0x00FFFF, "Fond de la case sélectionnée"},
    {"Options", "Color_2", 0x000000, "Lignes du quadrillage"},
    {"Options", "Color_3", 0x0000FF, "Chiffre de valeur des cases verrouillées"},
    {"Options", "Color_4", 0x000000, "Chiifre de valeur des cases non verrouillées"},
    {"Options", "Color_6", 0x000000, "Chiffres de masque"},
    {"Options", "Color_5", 0x0000FF, "Chiffres d'aide verrouillés"},
}};
inline constexpr Measure GridSize{"Options", "GridSize", 120};
inline constexpr Measure MarginTop{"Options", "MarginTop", 15};
inline constexpr Measure MarginLeft{"Options", "MarginLeft", 45};
inline constexpr Flag LinesWidth{"Options", "LinesWidth", false};
// Asked for 0 at one place and for 1 at another: no flag, although a check box writes it.
inline constexpr Number NoSplash{"Options", "NoSplash", 0, 0, 1};
inline constexpr Flag ConfigOnNew{"Options", "ConfigOnNew", true};
inline constexpr Flag LevelAsk{"Options", "LevelAsk", false};  // true: never ask
inline constexpr Number LevelValue{"Options", "LevelValue", 5, 4, 9};
inline constexpr Number ResolLoop{"Options", "ResolLoop", 0, 0, 8};  // a place in the dialog's list
inline constexpr Flag NoAutoMasks{"Options", "NoAutoMasks", false};
inline constexpr Flag GridHelpNone{"Options", "GridHelpNone", false};
inline constexpr Text Printer{"Impression", "Printer", ""};
inline constexpr Flag Orientation{"Impression", "Orientation", false};  // true: landscape
inline constexpr Flag BlackAndWhite{"Impression", "Noir&Blanc", false};
inline constexpr Text LastOpened{"Files", "LastOpened", ""};
inline constexpr Text LastSaved{"Files", "LastSaved", ""};
inline constexpr TextFamily RecentFiles{"MRU", 1, 9};
// The classic scheme, in the order of the system's colour numbers: scroll bar, desktop, active caption,
// inactive caption, menu, window, frame, menu text, window text, caption text, active border, inactive
// border, work space, highlight, highlighted text, button face.
inline constexpr ColorFamily CustomColors{
    "CustomColors",
    {0xC8D0D4, 0xA56E3A, 0x6A240A, 0x808080, 0xC8D0D4, 0xFFFFFF, 0x000000, 0x000000, 0x000000, 0xFFFFFF,
     0xC8D0D4, 0xC8D0D4, 0x808080, 0x6A240A, 0xFFFFFF, 0xC8D0D4}};

// Calls visit(row) for every row but the families.
template <class Visit>
constexpr void ForEach(Visit&& visit) {
    for (const Color& row : Colors) visit(row);
    const auto all = [&visit](const auto&... rows) { (visit(rows), ...); };
    all(GridSize, MarginTop, MarginLeft, LinesWidth, NoSplash, ConfigOnNew, LevelAsk, LevelValue, ResolLoop,
        NoAutoMasks, GridHelpNone, Printer, Orientation, BlackAndWhite, LastOpened, LastSaved);
}

using IniParamProcs::IniSnapshot;
using IniParamProcs::ProfileChanges;

// ---- Reading, from the file as it is now or from a snapshot of it. A missing key reads as its default, and
// so does a flag or a colour that does not convert.
bool Read(const Flag& row, const IniSnapshot& settings = IniSnapshot());
// The number that the text starts with, in range or not; 0 without one.
double Read(const Number& row, const IniSnapshot& settings = IniSnapshot());
std::uint32_t Read(const Color& row, const IniSnapshot& settings = IniSnapshot());
std::string Read(const Measure& row, const IniSnapshot& settings = IniSnapshot());
std::string Read(const Text& row, const IniSnapshot& settings = IniSnapshot());
std::string Read(const TextFamily& rows, int index, const IniSnapshot& settings);
std::uint32_t Read(const ColorFamily& rows, std::size_t index, const IniSnapshot& settings);

// Error 13 for what does not convert, error 6 for a number beyond 16 bits.
bool ReadStrict(const Flag& row, const IniSnapshot& settings = IniSnapshot());
int ReadStrict(const Number& row, const IniSnapshot& settings = IniSnapshot());

// Not there, or empty.
template <class Row>
bool IsMissing(const Row& row, const IniSnapshot& settings = IniSnapshot()) {
    return settings.Read(row.section, row.key, "").empty();
}

// ---- Writing, at once or as one of several changes.
inline std::string AsText(const Flag& /*row*/, std::same_as<bool> auto value) {
    return value ? "1" : "0";
}
template <std::integral Integer>
requires(!std::same_as<Integer, bool>) std::string AsText(const Number& /*row*/, Integer value) {
    return std::to_string(value);
}
inline std::string AsText(const Color& /*row*/, std::uint32_t value) {
    return std::to_string(value);
}
inline std::string AsText(const Measure& /*row*/, std::string_view value) {
    return std::string(value);
}
inline std::string AsText(const Text& /*row*/, std::string_view value) {
    return std::string(value);
}

template <class Row, class Value>
void Write(ProfileChanges& changes, const Row& row, const Value& value) {
    changes.Write(row.section, row.key, AsText(row, value));
}
// One key of a family.
inline void Write(ProfileChanges& changes, const TextFamily& rows, int index, std::string_view value) {
    changes.Write(rows.section, std::to_string(index), value);
}
inline void Write(ProfileChanges& changes, const ColorFamily& rows, std::size_t index, std::uint32_t value) {
    changes.Write(rows.section, std::to_string(index), std::to_string(value));
}
inline void Delete(ProfileChanges& changes, const ColorFamily& rows, std::size_t index) {
    changes.Delete(rows.section, std::to_string(index));
}
template <class Row, class Value>
void Write(const Row& row, const Value& value) {
    IniParamProcs::WriteIniParam(row.section, row.key, AsText(row, value));
}

}  // namespace Settings
