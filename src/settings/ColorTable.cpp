// SPDX-License-Identifier: MIT
#include "settings/ColorTable.h"

namespace ColorTable {

Colors& Shared() {
    static Colors table = Defaults;
    return table;
}

Colors FromSettings(const Colors& byDefault) {
    const IniParamProcs::IniSnapshot settings;
    Colors colors{};
    for (Settings::Color row : Settings::Colors) {
        if (Settings::IsMissing(row, settings)) row.byDefault = byDefault[row.Index()];
        colors[row.Index()] = Settings::Read(row, settings);
    }
    return colors;
}

}  // namespace ColorTable
