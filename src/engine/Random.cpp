// SPDX-License-Identifier: MIT
#include "engine/Global.h"
#include "platform/Host.h"

namespace {

std::uint64_t randomState = 0;

// The upper bits of SplitMix64.
std::uint32_t Draw24Bits() {
    randomState += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = randomState;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 40);
}

}  // namespace

namespace Global {

void Reseed() {
    Reseed(platform::TheHost().seeds->NextSeed());
}

void Reseed(std::uint64_t seed) {
    randomState = seed;
}

float NextRandom() {
    return static_cast<float>(Draw24Bits()) * 0x1p-24F;
}

int RandomBetween(int a, int b) {
    if (b <= a) return a;
    // In whole numbers, where no rounding can reach b + 1.
    const std::int64_t span = std::int64_t{b} - a + 1;
    return static_cast<int>(a + ((Draw24Bits() * span) >> 24));
}

}  // namespace Global
