// SPDX-License-Identifier: MIT
#include "platform/FileRights.h"

#include <cerrno>
#include <sys/statvfs.h>
#include <unistd.h>

#include "platform/SafeFile.h"

namespace platform {

bool IsProgram(const std::string& path) {
    return IsRegularFile(path) && access(path.c_str(), X_OK) == 0;
}

bool CanWriteInto(const std::string& folder) {
    return access((std::filesystem::path(folder) / ".").c_str(), W_OK | X_OK) == 0;
}

Obstacle ObstacleToFolder(const std::string& file) {
    if (access(FolderOfFile(file).c_str(), R_OK) == 0) return Obstacle::None;
    return errno == EACCES ? Obstacle::FolderProtected : Obstacle::NoFolder;
}

Obstacle ObstacleToReplacing(const std::string& file) {
    const int error = errno;
    const auto folder = FolderOfFile(file);
    if (access(folder.c_str(), W_OK) != 0) return Obstacle::FolderProtected;
    if (access(file.c_str(), F_OK) == 0 && access(file.c_str(), W_OK) != 0) return Obstacle::FileProtected;
    struct statvfs space {};
    const bool full = statvfs(folder.c_str(), &space) == 0 && space.f_bavail == 0;
    return full || error == ENOSPC || error == EDQUOT ? Obstacle::DiskFull : Obstacle::Other;
}

}  // namespace platform
