// SPDX-License-Identifier: MIT
#pragma once

namespace platform {

// The window that shows how far a long run is. Hiding it asks the run to stop.
class ProgressWindow {
  public:
    virtual ~ProgressWindow() = default;
    virtual void Progress(double percent) = 0;  // 0..100
    virtual bool IsVisible() const = 0;
};

}  // namespace platform
