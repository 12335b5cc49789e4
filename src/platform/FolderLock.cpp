#include "platform/FolderLock.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace platform {

namespace {

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace

FolderLock::FolderLock(const std::string& pathInFolder)
    : descriptor_(open(FolderOf(pathInFolder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + seconds(2);
    // Any other failure means that this file system has no locks: nothing to wait for.
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) != 0 &&
           (errno == EWOULDBLOCK || errno == EINTR) && steady_clock::now() < deadline) {
        std::this_thread::sleep_for(milliseconds(2));
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace platform
