// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "document/CellState.h"

// The changes that are taken back, or made again, together: one for an entry, many for a solution. Borrowed
// from the history, until it changes.
using HistoryStep = std::span<const CellChange>;

// A linear history of steps: those before the position can be undone, those from it on redone. Remembers at
// which position the grid was as it is in its file. A copy costs next to nothing however long it is, and may
// be read by another thread.
class UndoHistory {
  public:
    // Drops what could be redone. A step without a change is none.
    void Register(HistoryStep step);

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
    std::size_t Size() const { return full_.size() * partSize + last_.ends.size(); }
    HistoryStep Step(std::size_t step) const {
        const std::size_t part = step / partSize;
        return (part < full_.size() ? *full_[part] : last_).Step(step % partSize);
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
    static constexpr std::size_t partSize = 512;  // steps
    struct Part {
        HistoryStep Step(std::size_t step) const {
            return HistoryStep(changes).subspan(StartOf(step), ends[step] - StartOf(step));
        }
        std::size_t StartOf(std::size_t step) const { return step == 0 ? 0 : ends[step - 1]; }

        std::vector<CellChange> changes;
        std::vector<std::uint32_t> ends;  // of each step, in the changes
    };

    std::vector<std::shared_ptr<const Part>> full_;  // shared with copies
    Part last_;                                      // that is not full
    std::size_t position_ = 0;
    std::optional<std::size_t> saved_ = 0;
};
