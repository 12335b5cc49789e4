// SPDX-License-Identifier: MIT
#include "platform/SafeFile.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "platform/posix/Descriptor.h"

namespace platform {

namespace {

// As stat does it; but no name holds a NUL, and cut there it would be another file's.
bool Look(const std::string& path, struct stat& status) {
    if (path.find('\0') == std::string::npos) return stat(path.c_str(), &status) == 0;
    errno = EINVAL;
    return false;
}

std::int64_t Nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileStamp StampOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            Nanoseconds(status.st_mtim)};
}

FileStamp StampOf(const Descriptor& file) {
    struct stat status {};
    return fstat(file.Number(), &status) == 0 ? StampOf(status) : FileStamp();
}

constexpr std::string_view temporaryPrefix = ".ninarix-";
constexpr std::string_view temporarySigns = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t temporaryLength = temporaryPrefix.size() + 6;

bool IsTemporaryName(std::string_view name) {
    return name.size() == temporaryLength && name.starts_with(temporaryPrefix) &&
           name.find_first_not_of(temporarySigns, temporaryPrefix.size()) == std::string_view::npos;
}

// A new file of a name of its own. It is locked while it is open, so that no other copy takes it for one that
// was left behind, and is removed at the end unless it has become the real file.
class TemporaryFile {
  public:
    // `mode` is narrowed by the process's own mask, as that of any new file.
    TemporaryFile(const std::filesystem::path& folder, mode_t mode) : file_(Make(folder, mode, path_)) {
        if (file_) flock(file_.Number(), LOCK_EX | LOCK_NB);
    }
    ~TemporaryFile() {
        if (!path_.empty()) unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const Descriptor& File() const { return file_; }
    const std::filesystem::path& Path() const { return path_; }
    bool Close() { return file_.Close(); }
    bool Rename(const std::filesystem::path& name) {
        if (std::rename(path_.c_str(), name.c_str()) != 0) return false;
        path_ = name;
        return true;
    }
    void Keep() { path_.clear(); }

  private:
    // The descriptor; -1, and no path, when no file can be made here.
    static int Make(const std::filesystem::path& folder, mode_t mode, std::filesystem::path& path) {
        for (int attempt = 0; attempt < 100; ++attempt) {
            std::array<unsigned char, temporaryLength - temporaryPrefix.size()> random{};
            if (getentropy(random.data(), random.size()) != 0) break;
            std::string name(temporaryPrefix);
            for (const unsigned char byte : random) name += temporarySigns[byte % temporarySigns.size()];
            path = folder / name;
            const int number = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (number >= 0) return number;
            if (errno != EEXIST) break;
        }
        path.clear();
        return -1;
    }

    std::filesystem::path path_;
    Descriptor file_;
};

// Gives one file the owner, the extended attributes (access lists are some) and the permissions of another,
// as far as that is allowed: none of them is worth failing a save for.
void CopyAttributes(const std::filesystem::path& from, const struct stat& status, int to) {
    // Only root can give a file away; for everybody else it stays the user's own, and runs as nobody else.
    const bool given = fchown(to, status.st_uid, status.st_gid) == 0;
    if (!given) static_cast<void>(fchown(to, static_cast<uid_t>(-1), status.st_gid) == 0);
    // One that the folder gave to the new file is not the old one's.
    fremovexattr(to, "system.posix_acl_access");
    std::string names(1u << 16, '\0');
    std::string value(1u << 16, '\0');
    const ssize_t length = listxattr(from.c_str(), names.data(), names.size());
    names.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    for (std::size_t start = 0; start < names.size(); start = names.find('\0', start) + 1) {
        const char* name = names.c_str() + start;
        const ssize_t size = getxattr(from.c_str(), name, value.data(), value.size());
        if (size >= 0) fsetxattr(to, name, value.data(), static_cast<std::size_t>(size), 0);
    }
    fchmod(to, status.st_mode & (given ? 07777 : 0777));
}

bool Overwrite(const Descriptor& file, std::string_view bytes) {
    return lseek(file.Number(), 0, SEEK_SET) == 0 && file.Write(bytes) &&
           ftruncate(file.Number(), static_cast<off_t>(bytes.size())) == 0 && fsync(file.Number()) == 0;
}

// Writes a file that has other names too, through all of them. `complete` holds the bytes already: it stays,
// under a name that is seen, until they are in the file.
bool WriteInPlace(const std::filesystem::path& target, std::string_view bytes, TemporaryFile& complete,
                  FileStamp* stamp) {
    std::string old;
    if (ReadWholeFile(target, old) != FileState::Read) return false;
    const Descriptor file(open(target.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file) return false;
    // The disk is asked for the room before a byte of the old content goes. Not every file system can tell.
    const bool room = fallocate(file.Number(), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(bytes.size())) == 0;
    if (!room && errno != EOPNOTSUPP && errno != EINVAL) return false;
    const std::string suffix = complete.Path().filename().string();
    if (!complete.Rename(FolderOfFile(target) /
                         (target.filename().string().substr(0, NAME_MAX - suffix.size()) + suffix))) {
        return false;
    }
    SyncFolder(FolderOfFile(target));
    if (!Overwrite(file, bytes)) {
        // Where even the old content cannot be put back, the new one is not thrown away too.
        if (!Overwrite(file, old)) complete.Keep();
        return false;
    }
    if (stamp) *stamp = StampOf(file);
    return true;
}

// Removes a temporary file of a killed copy: an hour old, the user's own, and nobody's at work on it.
void RemoveIfForgotten(int folder, const char* name) {
    const Descriptor file(openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file || fstat(file.Number(), &status) != 0) return;
    const bool own = S_ISREG(status.st_mode) && status.st_uid == geteuid();
    if (!own || std::time(nullptr) - status.st_mtim.tv_sec < 3600) return;
    if (flock(file.Number(), LOCK_EX | LOCK_NB) == 0) unlinkat(folder, name, 0);
}

// Once for each folder, and never for long: there may be any number of files beside.
void RemoveForgottenFiles(const std::filesystem::path& folder) {
    static std::mutex mutex;
    static std::set<std::filesystem::path> visited;
    {
        const std::lock_guard lock(mutex);
        if (!visited.insert(folder).second) return;
    }
    DIR* entries = opendir(folder.c_str());
    if (!entries) return;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    while (std::chrono::steady_clock::now() < deadline) {
        const dirent* entry = readdir(entries);
        if (!entry) break;
        if (IsTemporaryName(entry->d_name)) RemoveIfForgotten(dirfd(entries), entry->d_name);
    }
    closedir(entries);
}

}  // namespace

void SyncFolder(const std::filesystem::path& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor) fsync(descriptor.Number());
}

std::string MakeOwnFolder(std::string beginning) {
    beginning += "XXXXXX";
    return mkdtemp(beginning.data()) ? beginning : std::string();
}

std::optional<FileStamp> FileStamp::Of(const std::string& path) {
    struct stat status {};
    if (!Look(path, status) || !S_ISREG(status.st_mode)) return std::nullopt;
    return StampOf(status);
}

// Opened as a place only: the content stays closed, and no pipe can make the call wait.
FileWatch::FileWatch(const std::string& path)
    : file_(Descriptor(open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC)).Handle()), seen_(Look()) {}

std::optional<FileWatch::Times> FileWatch::Look() const {
    struct stat status {};
    if (!file_ || fstat(file_->Number(), &status) != 0) return std::nullopt;
    // Replaced or removed, it has no name any more.
    if (!S_ISREG(status.st_mode) || status.st_nlink == 0) return std::nullopt;
    return Times{Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
}

bool FileWatch::Unchanged() const {
    return seen_ && Look() == seen_;
}

bool IsRegularFile(const std::string& path) {
    struct stat status {};
    return Look(path, status) && S_ISREG(status.st_mode);
}

FileState ReadWholeFile(const std::string& path, std::string& bytes, std::uint64_t limit, FileStamp* stamp) {
    bytes.clear();
    struct stat status {};
    const auto missing = [] { return errno == ENOENT || errno == ENOTDIR; };
    if (!Look(path, status)) return missing() ? FileState::Missing : FileState::Unreadable;
    if (!S_ISREG(status.st_mode)) return FileState::NotAFile;
    // Should the name have become a pipe by now, opening it does not wait either.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file) return missing() ? FileState::Missing : FileState::Unreadable;
    if (fstat(file.Number(), &status) != 0) return FileState::Unreadable;
    if (!S_ISREG(status.st_mode)) return FileState::NotAFile;
    if (static_cast<std::uint64_t>(status.st_size) > limit) return FileState::TooLarge;
    bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = read(file.Number(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            bytes.clear();
            return FileState::Unreadable;
        }
        if (count == 0) break;  // the file was cut meanwhile
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    if (stamp) *stamp = StampOf(status);
    return FileState::Read;
}

bool ReplaceFile(const std::string& path, std::string_view bytes, FileStamp* stamp, Durability durability) {
    errno = 0;  // for ObstacleToReplacing
    std::error_code failed;
    std::filesystem::path target = path;
    struct stat old {};
    const bool exists = Look(path, old);
    if (!exists && errno != ENOENT) return false;
    if (exists) {
        if (!S_ISREG(old.st_mode) || access(path.c_str(), W_OK) != 0) return false;
        target = std::filesystem::canonical(target, failed);
        if (failed) return false;
    } else if (std::filesystem::is_symlink(std::filesystem::symlink_status(target, failed))) {
        // A link to a file that is yet to be made.
        return ReplaceFile(FolderOfFile(target) / std::filesystem::read_symlink(target, failed), bytes, stamp,
                           durability);
    }
    if (!target.has_filename()) return false;

    const std::filesystem::path folder = FolderOfFile(target);
    TemporaryFile temporary(folder, exists ? 0600 : 0666);
    if (!temporary.File() || !temporary.File().Write(bytes)) return false;
    if (exists) CopyAttributes(target, old, temporary.File().Number());
    // A file that is written in place is no whole one for a moment: then the copy must be.
    const bool inPlace = exists && old.st_nlink > 1;
    const bool onDisk = durability == Durability::OnDisk;
    if ((onDisk || inPlace) && fsync(temporary.File().Number()) != 0) return false;
    const FileStamp written = StampOf(temporary.File());
    if (!temporary.Close()) return false;
    if (inPlace) return WriteInPlace(target, bytes, temporary, stamp);
    if (!temporary.Rename(target)) return false;
    temporary.Keep();
    if (stamp) *stamp = written;
    if (onDisk) SyncFolder(folder);
    RemoveForgottenFiles(folder);
    return true;
}

}  // namespace platform
