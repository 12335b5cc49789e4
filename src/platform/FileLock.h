// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <utility>

#include "platform/SystemHandle.h"

namespace platform {

// A lock that one holder has at a time, among all processes. It is let go with this object, or when the
// process ends, whatever ends it: what can be locked is nobody's that is still running.
class FileLock {
  public:
    // Taken: by another holder, or the file was removed meanwhile. NoLock: the file system knows no locks.
    enum class Outcome { Got, Taken, NoLock };

    FileLock() = default;  // of nothing
    // The folder's own; its files stay open to everybody.
    static FileLock OfFolder(const std::filesystem::path& folder);
    // That of a file which is there for nothing else. `make`: it is made when it is missing, for this user
    // alone.
    static FileLock OfFile(const std::filesystem::path& file, bool make);

    // False: there is no such file or folder, or it may not be opened.
    explicit operator bool() const { return static_cast<bool>(opened_); }
    // Never waits. NoLock also for nothing.
    Outcome Try();

  private:
    explicit FileLock(SystemHandle opened) : opened_(std::move(opened)) {}

    SystemHandle opened_;
};

}  // namespace platform
