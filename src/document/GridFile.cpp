// SPDX-License-Identifier: MIT
#include "document/GridFile.h"

#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "settings/IniParamProcs.h"

std::optional<GridStates> ReadGridFile(const std::string& path, platform::FileStamp& stamp) {
    std::string bytes;
    if (platform::ReadWholeFile(path, bytes, platform::LargestFile, &stamp) != platform::FileState::Read) {
        return std::nullopt;
    }
    const bool empty = bytes.empty();
    platform::ProfileFile file;
    file.Parse(std::move(bytes));
    if (!empty && !file.HasSection("")) throw RuntimeError(ErrorNumber::FileFormat);
    return StatesIn(file);
}

GridStates StatesIn(const platform::ProfileFile& file) {
    GridStates states;
    const auto records = file.Values("", NumberedKeys(states.size()));
    for (std::size_t i = 0; i < states.size(); ++i) {
        states[i] = ParseRecord(IniParamProcs::AsProfileString(records[i].value_or("0|0|0")));
    }
    return states;
}

std::vector<std::string> NumberedKeys(std::size_t count) {
    std::vector<std::string> keys(count);
    for (std::size_t i = 0; i < count; ++i) keys[i] = std::to_string(i + 1);
    return keys;
}

std::string GridFileText(const GridStates& states) {
    std::string bytes = "[]\r\n";
    for (std::size_t i = 0; i < states.size(); ++i) {
        bytes.append(std::to_string(i + 1)).append("=").append(RecordText(states[i])).append("\r\n");
    }
    return bytes;
}

bool HoldsStates(const std::string& path, const GridStates& states, const platform::FileStamp& stamp) {
    std::string bytes;
    platform::FileStamp found;
    // A stamp alone does not tell a change within the same tick.
    return platform::ReadWholeFile(path, bytes, stamp.size, &found) == platform::FileState::Read &&
           found == stamp && bytes == GridFileText(states);
}

bool WriteGridFile(const std::string& path, const GridStates& states, platform::FileStamp& stamp) {
    return platform::ReplaceFile(path, GridFileText(states), &stamp);
}
