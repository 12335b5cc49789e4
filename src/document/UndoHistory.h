#pragma once

#include <cassert>
#include <vector>

#include "document/CellState.h"

// A linear history of changes: those before the position can be undone, those from it on redone.
class UndoHistory {
  public:
    void Clear() {
        changes_.clear();
        position_ = 0;
    }

    // Drops what could be redone.
    void Register(const CellChange& change) {
        changes_.resize(position_);
        changes_.push_back(change);
        ++position_;
    }

    bool CanUndo() const { return position_ > 0; }
    bool CanRedo() const { return position_ < changes_.size(); }

    // Moves the position and returns the change to take back or to do again; only when CanUndo / CanRedo.
    const CellChange& StepBack() {
        assert(CanUndo());
        return changes_[--position_];
    }
    const CellChange& StepForward() {
        assert(CanRedo());
        return changes_[position_++];
    }

  private:
    std::vector<CellChange> changes_;
    std::size_t position_ = 0;
};
