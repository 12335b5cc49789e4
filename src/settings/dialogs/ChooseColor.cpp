// SPDX-License-Identifier: MIT
#include "settings/dialogs/ChooseColor.h"

#include "platform/Host.h"
#include "settings/HelpContexts.h"
#include "settings/Settings.h"

std::int32_t ChooseColor(std::uint32_t initialColour) {
    const auto& rows = Settings::CustomColors;
    const Settings::IniSnapshot settings;
    platform::ColourDialogs::CustomColours loaded{};
    for (std::size_t i = 0; i < loaded.size(); ++i) loaded[i] = Settings::Read(rows, i, settings);

    auto custom = loaded;
    const auto chosen = platform::TheHost().colours->Choose(initialColour, custom, HelpContext::Couleurs);
    if (!chosen) return -1;
    Settings::ProfileChanges changes;
    for (std::size_t i = 0; i < custom.size(); ++i) {
        if (custom[i] == rows.byDefault[i]) {
            Settings::Delete(changes, rows, i);
        } else if (custom[i] != loaded[i]) {
            Settings::Write(changes, rows, i, custom[i]);
        }
    }
    changes.Commit();
    return static_cast<std::int32_t>(*chosen);
}
