#pragma once

#include <string>

namespace platform {

// Holds off other running copies from changing files of the same folder, for its own lifetime. Gives up
// waiting after two seconds: a stopped copy must not stop this one.
class FolderLock {
  public:
    explicit FolderLock(const std::string& pathInFolder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int descriptor_ = -1;
};

}  // namespace platform
