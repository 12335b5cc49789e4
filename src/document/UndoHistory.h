#pragma once

#include <string>
#include <vector>

// A linear history of records. Slot 0 is never used; records 1..position can be undone, those above redone.
class UndoHistory {
  public:
    void Clear();
    // Drops what could be redone.
    void Register(std::string record);

    bool CanUndo() const { return position_ >= 1; }
    bool CanRedo() const { return position_ + 1 < slots_.size(); }

    // Moves the position and returns the record to apply; only when CanUndo / CanRedo.
    const std::string& StepBack();
    const std::string& StepForward();

  private:
    std::vector<std::string> slots_{std::string()};
    std::size_t position_ = 0;
};
