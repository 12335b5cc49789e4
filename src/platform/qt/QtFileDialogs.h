// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Host.h"

namespace platform_qt {

class QtFileDialogs : public platform::FileDialogs {
  public:
    std::string Ask(const platform::FileQuestion& question) override;
};

}  // namespace platform_qt
