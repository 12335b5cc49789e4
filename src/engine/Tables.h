// SPDX-License-Identifier: MIT
#pragma once

#include "diagnostics/ErrorHandling.h"
#include "engine/Global.h"

// What the engine's own sources share beside the public header.
namespace Global {

class Board;

inline void CheckIndex(int index, int first, int last) {
    if (index < first || index > last) throw RuntimeError(ErrorNumber::OutOfBounds);
}

// The solve table as sets, and back. A search works on its own board and stores it at its end.
const Board& TableAsBoard();
void StoreBoard(const Board& board);

// As the routines of Global.h that work on the table.
int ChooseGuessCell(const Board& board);
CandidateList ShuffleCandidates(const Board& board, int cell);
// The list in random order; as many draws as it has digits but one.
CandidateList Shuffled(CandidateList list);

}  // namespace Global
