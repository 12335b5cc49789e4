// SPDX-License-Identifier: MIT
#include <sstream>

#include "Fuzz.h"
#include "settings/Settings.h"

// Any bytes as the settings file: every row answers, and one that is written changes no other.

namespace {

std::vector<std::string> Answers() {
    std::vector<std::string> answers;
    const Settings::IniSnapshot snapshot;
    Settings::ForEach([&](const auto& row) {
        std::ostringstream shown;
        shown << Settings::Read(row, snapshot);
        answers.push_back(shown.str());
        if constexpr (requires { Settings::ReadStrict(row); })
            MayRefuse([&] { Settings::ReadStrict(row, snapshot); });
    });
    for (std::size_t i = 0; i < 16; ++i)
        Check(Settings::Read(Settings::CustomColors, i, snapshot) <= 0xFFFFFF, "a colour");
    return answers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::size_t index = 0, chosen = input.ConsumeIntegralInRange<std::size_t>(0, 21);
    std::string text = input.ConsumeRandomLengthString(40);
    // Quotes and blanks around a value are not its own.
    for (char& c : text) c = c < '(' || c > '~' ? '+' : c;
    NewFile("Ninarix.ini", input.ConsumeRemainingBytesAsString());
    const auto before = Answers();
    Settings::ForEach([&](const auto& row) {
        if (index++ != chosen) return;
        IniParamProcs::WriteIniParam(row.section, row.key, text);
        Check(IniParamProcs::ReadIniParam(row.section, row.key, "?") == text, "what was written is read");
        auto after = Answers();
        after[chosen] = before[chosen];
        Check(after == before, "one row changes");
    });
    return 0;
}
