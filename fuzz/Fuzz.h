// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

#include "diagnostics/ErrorHandling.h"
#include "support/ScriptedHost.h"

// What the harnesses share.

// A run stops, and keeps its input, where something does not hold.
inline void Check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// What may refuse its input does so by an error with a number and in no other way.
void MayRefuse(auto&& body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        const int number = error.Number();
        Check(number == 6 || number == 9 || number == 13 || number == ErrorNumber::FileFormat, "which error");
    }
}

// One host for all inputs of a run; its folder is the place for files.
inline ScriptedHost& FuzzHost() {
    static ScriptedHost host;
    host.boxes.clear();
    host.AnswerAlways(platform::MessageButton::No);
    return host;
}

// Always a new file: who remembers the old one by its time would not see a change within one tick.
inline std::string NewFile(const char* name, const std::string& bytes) {
    const std::string path = FuzzHost().PathOf(name);
    std::filesystem::remove(path);
    ScriptedHost::WriteFile(path, bytes);
    return path;
}
