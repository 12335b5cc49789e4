// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemHandle.h"

namespace platform {

enum class FileState { Read, Missing, NotAFile, TooLarge, Unreadable };

// What tells that a file was changed, or deleted and made anew, since it was read or written.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // nanoseconds since 1970

    // Of what the name leads to now; nothing when that is no regular file.
    static std::optional<FileStamp> Of(const std::string& path);
    // One line without blanks and the way back; nothing for any other text.
    std::string Text() const;
    static std::optional<FileStamp> Parse(std::string_view text);
    bool operator==(const FileStamp&) const = default;
    // False while a further change could still bear the same time. `now`: nanoseconds since 1970.
    bool IsSettled(std::int64_t now) const;
};

// Sees at a third of the price of a stamp that a file is still what its path leads to: without a walk along
// the path. What it does not see is a folder above the file that is renamed.
class FileWatch {
  public:
    FileWatch() = default;  // of nothing
    explicit FileWatch(const std::string& path);
    // The file has not been written, renamed, replaced or removed, and its rights are the same. False in
    // doubt too, and always for a link or a missing file.
    bool Unchanged() const;

  private:
    // Of the content, and of everything that is known of the file; nanoseconds since 1970.
    struct Times {
        std::int64_t written = 0;
        std::int64_t changed = 0;
        bool operator==(const Times&) const = default;
    };
    std::optional<Times> Look() const;

    SystemHandle file_;
    std::optional<Times> seen_;
};

// "." for a name alone.
std::filesystem::path FolderOfFile(const std::filesystem::path& file);
// Names that were made, renamed or removed in it are on disk then.
void SyncFolder(const std::filesystem::path& folder);

// Makes a folder for this user alone, named by `beginning`, an absolute path, and what no other has. Its
// path; empty if it cannot be made.
std::string MakeOwnFolder(std::string beginning);

// True for a regular file (through links); false for folders, pipes, devices and missing names. Never waits.
bool IsRegularFile(const std::string& path);

inline constexpr std::uint64_t LargestFile = 256u << 20;

// Reads a whole regular file of at most `limit` bytes. On any state but Read, `bytes` is left empty.
// A pipe or a device is never opened for reading, so the call cannot wait for another program. `stamp`
// becomes that of what was read.
FileState ReadWholeFile(const std::string& path, std::string& bytes, std::uint64_t limit = LargestFile,
                        FileStamp* stamp = nullptr);

// OnDisk: the data is forced to disk before it takes the old file's place, and the name after that. Later:
// when the system comes to it. What is lost then, should the machine stop within that time, is the change.
enum class Durability { OnDisk, Later };

// Replaces the file's content in one step: the bytes go to a temporary file in the same folder, every write's
// size is checked, and only then is it renamed over the old file. On false the old file stands as it was and
// nothing half-written is left; ObstacleToReplacing, called next, tells why. Only a regular file is ever
// replaced; a symbolic link is followed; an existing file keeps its permissions, extended attributes and,
// where that is allowed, its owner; one that may not be written is not replaced.
//
// A file that has other names too is written in place once the temporary one is complete, so that all of them
// show the new content. Should the machine stop meanwhile, the whole of it is found beside the file under
// the file's name and ".ninarix-" with six characters.
//
// The first call for a folder also removes the temporary files that killed copies left there an hour ago.
// `stamp` becomes that of the new file.
bool ReplaceFile(const std::string& path, std::string_view bytes, FileStamp* stamp = nullptr,
                 Durability durability = Durability::OnDisk);

}  // namespace platform
