// SPDX-License-Identifier: MIT
#include "document/UndoHistory.h"

void UndoHistory::Register(HistoryStep step) {
    if (step.empty()) return;
    if (last_.ends.size() == partSize) {
        full_.push_back(std::make_shared<const Part>(last_));
        last_ = {};
    }
    // What could be redone goes; a part that a copy may share is not changed.
    const std::size_t part = position_ / partSize;
    if (part < full_.size()) {
        last_ = Part(*full_[part]);
        full_.resize(part);
    }
    last_.ends.resize(position_ % partSize);
    last_.changes.resize(last_.StartOf(last_.ends.size()));
    if (saved_ && *saved_ > position_) saved_.reset();

    last_.changes.insert(last_.changes.end(), step.begin(), step.end());
    last_.ends.push_back(static_cast<std::uint32_t>(last_.changes.size()));
    ++position_;
}
