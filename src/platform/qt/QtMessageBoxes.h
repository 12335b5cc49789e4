// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Host.h"

namespace platform_qt {

class QtMessageBoxes : public platform::MessageBoxes {
  public:
    platform::MessageButton Show(std::string_view text, int style, int helpContext = 0) override;
    void Beep() override;
};

}  // namespace platform_qt
