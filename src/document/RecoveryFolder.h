// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "platform/FileLock.h"

// The folder of one running copy's recovery files, below the folder of all copies. Held by a lock as long as
// this object lives, or until the process ends, whatever ends it; so a folder that can be locked is a copy's
// that is gone.
class RecoveryFolder {
  public:
    // A new one, its parents made when they are missing; readable by this user alone. Empty when that fails.
    static RecoveryFolder New(const std::string& parent);
    // Those of copies that are gone and left files behind. What is left of others, empty, is removed.
    static std::vector<RecoveryFolder> Abandoned(const std::string& parent);

    // Empty: no folder.
    RecoveryFolder() = default;
    explicit operator bool() const { return static_cast<bool>(lock_); }
    // The path of the file with this number.
    std::string File(int number) const;
    // The paths of all that is there, in the order of their numbers.
    std::vector<std::string> Files() const;
    // Removes everything that is in it, and the folder.
    void Remove();

  private:
    using Outcome = platform::FileLock::Outcome;
    // `make`: the lock file is made when it is missing. Taken: another copy holds the folder, or has just
    // removed it.
    static Outcome Lock(const std::string& path, bool make, RecoveryFolder& folder);

    std::string path_;
    platform::FileLock lock_;
};
