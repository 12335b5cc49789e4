// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "engine/clsCell.h"

namespace platform {
class ProgressWindow;
}

// One grid of 81 cells, numbered 1..81 row by row from the top left. Public routines that can fail report
// through ShowError and end with the default result.
class clsGrid {
  public:
    clsGrid();
    clsGrid(const clsGrid&) = delete;
    clsGrid& operator=(const clsGrid&) = delete;

    // While true every digit stays available everywhere. Setting it recomputes the candidates.
    bool NoAutoMask() const { return noAutoMask_; }
    void NoAutoMask(bool flag);

    // Borrowed; a null pointer when index is outside 1..81.
    clsCell* Cells(int index);
    const clsCell* Cells(int index) const;

    // True when any cell is modified. Setting it sets every cell's flag.
    bool Modified() const;
    void Modified(bool flag);

    // Every cell has a value, or the engine solved or made the grid.
    bool Complete() const;

    // Every cell has a value and no digit stands twice in a row, column or box.
    bool Verified() const;

    bool Solved() const { return solved_; }

    // Solves from the locked cells alone; every other value is overwritten, whatever the outcome. Always
    // false: ask Solved for the outcome. Without a progress window (null; borrowed) the run cannot be
    // cancelled.
    bool SolveGrid(platform::ProgressWindow* progress = nullptr);

    // Replaces the grid by a generated one: every value of the solution, the givens locked. False, and
    // no change, when the user declined to go on. True after a cancelled run as well.
    bool CreateGrid(platform::ProgressWindow* progress = nullptr);

    // Recomputes Avail of every cell from the values.
    void ManageAvails();

    // Takes values, locks, modified flags and exclusions of `source`; recomputes the candidates.
    void CopyFrom(const clsGrid& source);

  private:
    std::array<clsCell, 81> cells_;
    bool solved_ = false;
    bool noAutoMask_ = false;
};
