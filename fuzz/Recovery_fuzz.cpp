// SPDX-License-Identifier: MIT
#include <cstdio>

#include "Fuzz.h"
#include "document/GridDocument.h"
#include "document/RecoveryFile.h"

// Any text under a sum that is right: no grid, or one that can be played and comes back the same.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(data, data + size);
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char c : text) sum = (sum ^ static_cast<std::uint8_t>(c)) * 0x100000001B3;
    char end[40];
    std::snprintf(end, sizeof end, "[End]\r\nSum=%016llX\r\n", static_cast<unsigned long long>(sum));
    Check(!RecoveryFile::Parse(text), "a text without its sum");
    const auto grid = RecoveryFile::Parse(text + end);
    if (!grid) return 0;
    GridDocument document;
    document.Resume(*grid);
    const std::string kept = RecoveryFile::Text(document.Snapshot());
    Check(kept == RecoveryFile::Text(*RecoveryFile::Parse(kept)), "a grid that is kept again");
    while (document.CanRedo()) document.Redo();
    while (document.CanUndo()) document.Undo();
    Check(document.EnterValue(1, 0, {.initialisation = true}), "an entry");
    return 0;
}
