#include "document/UndoHistory.h"

#include <cassert>
#include <utility>

void UndoHistory::Clear() {
    slots_.assign(1, std::string());
    position_ = 0;
}

void UndoHistory::Register(std::string record) {
    slots_.resize(position_ + 1);
    slots_.push_back(std::move(record));
    ++position_;
}

const std::string& UndoHistory::StepBack() {
    assert(CanUndo());
    return slots_[position_--];
}

const std::string& UndoHistory::StepForward() {
    assert(CanRedo());
    return slots_[++position_];
}
