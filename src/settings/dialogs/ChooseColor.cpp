#include "settings/dialogs/ChooseColor.h"

#include <array>
#include <string>

#include "platform/Host.h"
#include "settings/Conversions.h"
#include "settings/IniParamProcs.h"

namespace {

// The classic scheme, in the order of the system's colour numbers: scroll bar, desktop, active caption,
// inactive caption, menu, window, frame, menu text, window text, caption text, active border, inactive
// border, work space, highlight, highlighted text, button face.
constexpr std::array<std::uint32_t, 16> systemColours{
    0xC8D0D4, 0xA56E3A, 0x6A240A, 0x808080, 0xC8D0D4, 0xFFFFFF, 0x000000, 0x000000,
    0x000000, 0xFFFFFF, 0xC8D0D4, 0xC8D0D4, 0x808080, 0x6A240A, 0xFFFFFF, 0xC8D0D4,
};

constexpr const char* customSection = "CustomColors";

platform::ColourDialogs::CustomColours LoadCustomColours() {
    const IniParamProcs::IniSnapshot settings;
    platform::ColourDialogs::CustomColours colours = systemColours;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const std::string key = std::to_string(i);
        const double number =
            Conversions::NumericPrefix(settings.Read(customSection, key, std::to_string(systemColours[i])));
        if (number >= 0 && number <= 0xFFFFFF) colours[i] = static_cast<std::uint32_t>(number);
    }
    return colours;
}

}  // namespace

std::uint32_t SystemColour(int index) {
    return systemColours.at(static_cast<std::size_t>(index));
}

std::int32_t ChooseColor(std::uint32_t initialColour) {
    const auto loaded = LoadCustomColours();
    auto custom = loaded;
    const auto chosen = platform::TheHost().colours->Choose(initialColour, custom);
    if (!chosen) return -1;
    IniParamProcs::ProfileChanges changes(IniParamProcs::IniFilePath());
    for (std::size_t i = 0; i < custom.size(); ++i) {
        if (custom[i] == systemColours[i]) {
            changes.Delete(customSection, std::to_string(i));
        } else if (custom[i] != loaded[i]) {
            changes.Write(customSection, std::to_string(i), std::to_string(custom[i]));
        }
    }
    changes.Commit();
    return static_cast<std::int32_t>(*chosen);
}
