#pragma once

#include <cstdint>

// Asks for a colour, starting from `initialColour`; -1 when the user cancelled. Colours have red in the low
// byte. The sixteen custom colours are kept in section "CustomColors" of the settings: a key only for those
// that differ from the system colour of their number.
std::int32_t ChooseColor(std::uint32_t initialColour);

// The system colour that custom colour `index`, 0..15, has until the user changes it.
std::uint32_t SystemColour(int index);
