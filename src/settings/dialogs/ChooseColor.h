// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Asks for a colour, starting from `initialColour`; -1 when the user cancelled. Colours have red in the low
// byte. The sixteen custom colours are kept in the settings: a key only for those that differ from their
// default.
std::int32_t ChooseColor(std::uint32_t initialColour);
