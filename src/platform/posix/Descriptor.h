// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "platform/SystemHandle.h"

namespace platform {

// An open file or folder of the system's, closed on every way out. None below 0.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { Close(); }

    explicit operator bool() const { return number_ >= 0; }
    int Number() const { return number_; }
    // A file system may report a failed write only now.
    bool Close() { return number_ >= 0 && close(std::exchange(number_, -1)) == 0; }

    // All of the bytes, at the file's place; false when the system takes no more.
    bool Write(std::string_view bytes) const;
    // A name for what is open, whatever its own is, in this process and as long as it is open. Linux alone.
    std::string Name() const { return "/proc/self/fd/" + std::to_string(number_); }
    // Empty for none.
    SystemHandle Handle() &&;

  private:
    int number_ = -1;
};

}  // namespace platform
