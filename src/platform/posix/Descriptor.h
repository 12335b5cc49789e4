// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>
#include <utility>

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

  private:
    int number_ = -1;
};

}  // namespace platform
