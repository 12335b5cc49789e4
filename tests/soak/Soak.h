// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <algorithm>
#include <fstream>
#include <optional>
#include <random>
#include <string>

#include "support/QtSupport.h"

// The number behind an option of the test program.
inline std::optional<std::uint64_t> Option(const std::string& name) {
    const auto found = std::ranges::find(programArguments, name);
    if (found == programArguments.end() || found + 1 == programArguments.end()) return std::nullopt;
    return std::stoull(found[1]);
}

inline int OpenDescriptors() {
    return static_cast<int>(QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size());
}

// The number of a line "name: number ..." in one of the kernel's files.
inline std::int64_t KernelNumber(const std::string& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string word; lines >> word;) {
        if (std::int64_t number = 0; word == name + ":" && lines >> number) return number;
    }
    return 0;
}

// Everything is drawn from the seed.
class Chance {
  public:
    explicit Chance(std::uint64_t seed) : numbers_(seed) {}
    int Below(int bound) { return static_cast<int>(numbers_() % static_cast<std::uint64_t>(bound)); }
    bool OnceIn(int times) { return Below(times) == 0; }
    template <class Choices>
    auto OneOf(const Choices& choices) {
        return *(std::begin(choices) + Below(static_cast<int>(std::size(choices))));
    }

  private:
    std::mt19937_64 numbers_;
};
