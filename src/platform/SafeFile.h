#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

enum class FileState { Read, Missing, NotAFile, TooLarge, Unreadable };

// True for a regular file (through links); false for folders, pipes, devices and missing names. Never waits.
bool IsRegularFile(const std::string& path);

// Reads a whole regular file of at most `limit` bytes. On any state but Read, `bytes` is left empty.
// A pipe or a device is never opened for reading, so the call cannot wait for another program.
FileState ReadWholeFile(const std::string& path, std::string& bytes, std::uint64_t limit = 256u << 20);

// Replaces the file's content in one step: the bytes go to a temporary file in the same folder, every
// write's size is checked, the data is forced to disk, and only then is it renamed over the old file. On
// false the old file stands as it was and nothing half-written is left. Only a regular file is ever
// replaced; a symbolic link is followed; an existing file keeps its permissions, and one that may not be
// written is not replaced.
bool ReplaceFile(const std::string& path, std::string_view bytes);

}  // namespace platform
