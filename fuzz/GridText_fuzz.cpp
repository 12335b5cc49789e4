// SPDX-License-Identifier: MIT
#include <string>

#include "Fuzz.h"
#include "document/GridText.h"

// Any bytes as a pasted text: no grid, or one that comes back from what is copied of it.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto values = GridText::Read({reinterpret_cast<const char*>(data), size});
    if (!values) return 0;
    for (const int value : *values) Check(value >= 0 && value <= 9, "a digit");
    Check(GridText::Read(GridText::Write(*values)) == values, "a copy");
    return 0;
}
