// SPDX-License-Identifier: MIT
#pragma once

#include "engine/CellSet.h"

// What is known of a grid while it is searched: small enough to be copied for every attempt.
namespace Global {

// For each digit the cells that hold it or can still take it: a filled cell is in the set of its own digit
// alone, an open one in the sets of its candidates.
//
//     holds or can take | open cell      | filled cell
//     in the set of d   | d is candidate | d stands there
//     in no other set   | naked single   | always
//
// Everything else is asked of these nine sets and of the open cells. Cells 1..81, digits 1..9, unchecked.
class Board {
  public:
    // Every cell open, every digit a candidate everywhere.
    Board();

    bool Full() const { return open_.Empty(); }
    bool IsOpen(int cell) const { return !(open_ & CellSet::Of(cell)).Empty(); }
    // The open cells that can take the digit; the cells that hold it.
    CellSet Places(int digit) const { return cells_[digit] & open_; }
    CellSet Holders(int digit) const { return cells_[digit] - open_; }
    // Bit d for each candidate d; 0 for a filled cell.
    unsigned Candidates(int cell) const;

    // Takes a candidate from cells; filled ones keep their digit.
    void Exclude(CellSet cells, int digit) { cells_[digit] -= cells & open_; }
    // The digit stands in the cell, whatever was there; nothing is excluded elsewhere. With digit 0 the cell
    // is open and has no candidate.
    void Fill(int cell, int digit);
    void FillAndExclude(int cell, int digit);
    // What FillAndExclude would have excluded for all filled cells.
    void ExcludeHolders();
    // Some digit stands twice in a row, column or box.
    bool HasClash() const;

    // Fills naked singles, and digits with one place left in their box, until there is none. False: a
    // contradiction, that is, an open cell without candidate, a digit without a place in a box, two digits
    // for a cell, or two cells for a digit. The grid can then never become full, and the next call fails too.
    // No candidate may share a unit with a holder of its digit: see ExcludeHolders.
    bool FillSingles();

    CellSet CellsWithOneCandidate() const;
    // Among the open cells that have a candidate; empty if none has.
    CellSet CellsWithFewestCandidates() const;

    // At least two cells of the row, at least one cell of the column, can take the digit. The thresholds
    // differ on purpose.
    bool RowHasTwoPlaces(int row, int digit) const { return (Places(digit) & cellSets.rows[row]).HasTwo(); }
    bool ColHasPlace(int col, int digit) const { return !(Places(digit) & cellSets.cols[col]).Empty(); }
    // One of the two other rows of the cell's band has two places, or one of the two other columns of its
    // stack has one.
    bool GuessAllowed(int cell, int digit) const;
    // Some cell with the fewest candidates has one that GuessAllowed admits. Without one no pass of a search
    // can change the board any more.
    bool AnyGuessAllowed() const;

  private:
    // Every filled cell is in the set of one digit.
    bool IsConsistent() const;

    EngineArray<CellSet, 10> cells_;  // by digit
    CellSet open_;
};

}  // namespace Global
