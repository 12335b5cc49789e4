// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/SystemHandle.h"

namespace platform {

// A copy of some bytes under the name of a file, for a library that reads only files: nobody can change it
// any more, and not even a full disk gets in between.
class SealedCopy {
  public:
    explicit SealedCopy(std::string_view bytes);
    // To be opened for reading while this lives; what is open then stays so. Empty: the copy failed.
    std::string Name() const;

  private:
    SystemHandle copy_;
};

}  // namespace platform
