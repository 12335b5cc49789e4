// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"

// A full grid without a clash, by formula: cell 1 holds 1, cell 2 holds 2.
inline int SolutionAt(int index) {
    const int row = (index - 1) / 9;
    const int column = (index - 1) % 9;
    return (row * 3 + row / 3 + column) % 9 + 1;
}

// "value|locked|mask" of a cell.
inline std::string StateText(const GridDocument& document, int index) {
    return RecordText(StateOf(*document.Grid().Cells(index)));
}

// Puts a cell into a state behind the history's back.
inline void Set(GridDocument& document, int index, std::string_view record) {
    ApplyState(*document.Grid().Cells(index), ParseRecord(record));
    document.Grid().ManageAvails();
}

// Givens are the solution's digits, but for the cells first..last, which stay empty.
inline void SetPuzzle(GridDocument& document, int first, int last) {
    for (int i = 1; i <= 81; ++i) {
        if (i < first || i > last)
            ApplyState(*document.Grid().Cells(i), {std::uint8_t(SolutionAt(i)), true, 0});
    }
    document.Grid().ManageAvails();
}

// The number of the error that an action ends with; 0: none.
template <class Action>
int ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}
