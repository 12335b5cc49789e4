// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/FileLock.h"

namespace platform {

// Holds off other running copies from changing files of the same folder, for its own lifetime. Waits for
// them two seconds at most; after a wait in vain (a copy was stopped while it held the lock) the next ones
// try once and do not wait, until one succeeds. For one thread of a process.
class FolderLock {
  public:
    explicit FolderLock(const std::string& pathInFolder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    // False: another copy may be changing the folder's files at this moment, nothing may be written. True
    // on a file system that knows no locks.
    bool MayWrite() const { return mayWrite_; }

  private:
    FileLock lock_;
    bool mayWrite_ = false;
};

}  // namespace platform
