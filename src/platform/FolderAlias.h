// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/SystemHandle.h"

namespace platform {

// A second name for a folder, in ASCII, for those who cannot write its own. It leads there as long as
// this lives. A system whose names are all text needs none, and may leave it empty.
class FolderAlias {
  public:
    FolderAlias() = default;
    explicit FolderAlias(const std::string& folder);
    // Empty: there is no such folder.
    std::string Name() const;

  private:
    SystemHandle folder_;
};

}  // namespace platform
