// SPDX-License-Identifier: MIT
#include "platform/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/posix/Descriptor.h"

namespace platform {

FileLock FileLock::OfFolder(const std::filesystem::path& folder) {
    return FileLock(Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).Handle());
}

FileLock FileLock::OfFile(const std::filesystem::path& file, bool make) {
    const int flags = O_RDWR | O_NOFOLLOW | O_CLOEXEC | (make ? O_CREAT : 0);
    return FileLock(Descriptor(open(file.c_str(), flags, 0600)).Handle());
}

FileLock::Outcome FileLock::Try() {
    if (!opened_) return Outcome::NoLock;
    int result = 0;
    do {
        result = flock(opened_->Number(), LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) return errno == EWOULDBLOCK ? Outcome::Taken : Outcome::NoLock;
    // Of a file that has no name any more, another one may be made and locked.
    struct stat held {};
    const bool seen = fstat(opened_->Number(), &held) == 0;
    const bool removed = S_ISREG(held.st_mode) && held.st_nlink == 0;
    return seen && !removed ? Outcome::Got : Outcome::Taken;
}

}  // namespace platform
