#pragma once

#include "diagnostics/ErrorHandling.h"

// What the engine's own sources share beside the public header.
namespace Global {

inline void CheckIndex(int index, int first, int last) {
    if (index < first || index > last) throw RuntimeError(ErrorNumber::OutOfBounds);
}

// PlaceDigit, then the exclusion from the cell's row, column and box, in one step.
void PlaceAndExclude(int cell, int digit);

// Some cell that ChooseGuessCell could return has a candidate that GuessAllowed admits. Without one no pass
// can change the tables any more.
bool AnyGuessAllowed();

}  // namespace Global
