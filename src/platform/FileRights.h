// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// What this user may do with files and folders, and what the system says against it.
namespace platform {

// True for a regular file that may be run.
bool IsProgram(const std::string& path);

// Files may be made and replaced in this folder. False for one that is missing.
bool CanWriteInto(const std::string& folder);

// What stands in the way of a file, as far as the system tells.
enum class Obstacle { None, NoFolder, FolderProtected, FileProtected, DiskFull, Other };

// Why the folder of a file cannot be opened; None if it can.
Obstacle ObstacleToFolder(const std::string& file);
// Why ReplaceFile has just failed, in this thread and for this file. Never None.
Obstacle ObstacleToReplacing(const std::string& file);

}  // namespace platform
