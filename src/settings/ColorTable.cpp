#include "settings/ColorTable.h"

#include <string>

#include "settings/Conversions.h"
#include "settings/IniParamProcs.h"

namespace ColorTable {

Colors& Shared() {
    static Colors table = Defaults;
    return table;
}

Colors FromSettings(const Colors& byDefault) {
    const IniParamProcs::IniSnapshot settings;
    Colors colors = byDefault;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const std::string text = settings.Read("Options", "Color_" + std::to_string(i), "");
        if (text.empty()) continue;
        const double number = Conversions::NumericPrefix(text);
        if (number >= 0 && number <= 0xFFFFFF) {
            colors[i] = static_cast<std::uint32_t>(Conversions::RoundToLong(number));
        }
    }
    return colors;
}

}  // namespace ColorTable
