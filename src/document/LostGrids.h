// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "document/GridDocument.h"
#include "document/RecoveryFolder.h"

// The grids that copies of the program left in recovery files when they ended without asking. They are this
// copy's alone as long as this object lives; what was not removed then is found again by the next one.
class LostGrids {
  public:
    // Files that do not hold a whole grid are put aside, where they stay.
    explicit LostGrids(const std::string& parent);

    const std::vector<GridSnapshot>& Grids() const { return grids_; }
    // The paths at which files were put aside.
    const std::vector<std::string>& Damaged() const { return damaged_; }
    // Nothing of it is needed any more, but for what was put aside.
    void Remove();

  private:
    void PutAside(const std::string& file, const std::string& parent);

    std::vector<RecoveryFolder> folders_;
    std::vector<GridSnapshot> grids_;
    std::vector<std::string> files_;  // that hold them
    std::vector<std::string> damaged_;
};
