#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "document/CellState.h"

// The changes that are taken back, or made again, together: one for an entry, many for a solution. Borrowed
// from the history, until it changes.
using HistoryStep = std::span<const CellChange>;

// A linear history of steps: those before the position can be undone, those from it on redone. Remembers at
// which position the grid was as it is in its file.
class UndoHistory {
  public:
    // Drops what could be redone. A step without a change is none.
    void Register(HistoryStep step) {
        if (step.empty()) return;
        if (saved_ && *saved_ > position_) saved_.reset();
        ends_.resize(position_);
        changes_.resize(StartOf(position_));
        changes_.insert(changes_.end(), step.begin(), step.end());
        ends_.push_back(static_cast<std::uint32_t>(changes_.size()));
        ++position_;
    }

    bool CanUndo() const { return position_ > 0; }
    bool CanRedo() const { return position_ < Size(); }

    // Moves the position and returns the step to take back or to do again; only when CanUndo / CanRedo.
    HistoryStep StepBack() {
        assert(CanUndo());
        return Step(--position_);
    }
    HistoryStep StepForward() {
        assert(CanRedo());
        return Step(position_++);
    }

    // The grid is in its file, or new and empty, as it is at this position.
    void MarkSaved() { saved_ = position_; }
    void ForgetSaved() { saved_.reset(); }
    bool AtSaved() const { return saved_ == position_; }

    // ---- As a whole: steps 0..Size() - 1.
    std::size_t Size() const { return ends_.size(); }
    HistoryStep Step(std::size_t step) const {
        return HistoryStep(changes_).subspan(StartOf(step), ends_[step] - StartOf(step));
    }
    std::size_t Position() const { return position_; }
    const std::optional<std::size_t>& Saved() const { return saved_; }
    // Both within 0..Size().
    void Resume(std::size_t position, std::optional<std::size_t> saved) {
        assert(position <= Size() && saved.value_or(0) <= Size());
        position_ = position;
        saved_ = saved;
    }

  private:
    std::size_t StartOf(std::size_t step) const { return step == 0 ? 0 : ends_[step - 1]; }

    std::vector<CellChange> changes_;
    std::vector<std::uint32_t> ends_;  // of each step, in the changes
    std::size_t position_ = 0;
    std::optional<std::size_t> saved_ = 0;
};
