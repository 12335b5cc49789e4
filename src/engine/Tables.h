#pragma once

#include "diagnostics/ErrorHandling.h"

class RangeClass;

// What the engine's own sources share beside the public header.
namespace Global {

inline void CheckIndex(int index, int first, int last) {
    if (index < first || index > last) throw RuntimeError(ErrorNumber::OutOfBounds);
}

// Set when a pass finds the progress window hidden; an attempt that sees it stops.
extern bool CancelRequested;

// The ranges of the run, borrowed. Error 91 when no run has named them.
void UseRanges(RangeClass& puzzle, RangeClass& working);
RangeClass& PuzzleRange();
RangeClass& WorkingRange();

// The placed digits as texts into the working range; cells that are still empty keep their text.
void WriteDigits();

// PlaceDigit, then the exclusion from the cell's row, column and box, in one step.
void PlaceAndExclude(int cell, int digit);

// Some cell that ChooseGuessCell could return has a candidate that GuessAllowed admits. Without one no pass
// can change the tables any more.
bool AnyGuessAllowed();

}  // namespace Global
