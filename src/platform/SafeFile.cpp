#include "platform/SafeFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

// Closes a descriptor on every way out.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Number() const { return number_; }
    // A file system may report a failed write only now.
    bool Close() { return close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

mode_t UsualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

void SyncFolder(const std::filesystem::path& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.Number() >= 0) fsync(descriptor.Number());
}

std::filesystem::path FolderOfFile(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace

bool IsRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

FileState ReadWholeFile(const std::string& path, std::string& bytes, std::uint64_t limit) {
    bytes.clear();
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? FileState::Missing : FileState::Unreadable;
    }
    if (!S_ISREG(status.st_mode)) return FileState::NotAFile;
    if (static_cast<std::uint64_t>(status.st_size) > limit) return FileState::TooLarge;
    // Should the name have become a pipe by now, opening it does not wait either.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.Number() < 0) return FileState::Unreadable;
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
    return FileState::Read;
}

bool ReplaceFile(const std::string& path, std::string_view bytes) {
    std::error_code failed;
    std::filesystem::path target = path;
    struct stat old {};
    const bool exists = stat(path.c_str(), &old) == 0;
    const bool missing = !exists && errno == ENOENT;
    if (exists) {
        if (!S_ISREG(old.st_mode) || access(path.c_str(), W_OK) != 0) return false;
        target = std::filesystem::canonical(target, failed);
        if (failed) return false;
    } else if (std::filesystem::is_symlink(std::filesystem::symlink_status(target, failed))) {
        // A link to a file that is yet to be made; a ring of links leads nowhere.
        if (!missing) return false;
        return ReplaceFile(FolderOfFile(target) / std::filesystem::read_symlink(target, failed), bytes);
    }
    if (!target.has_filename()) return false;

    std::string temporary = (FolderOfFile(target) / ".ninarix-XXXXXX").string();
    Descriptor file(mkstemp(temporary.data()));
    if (file.Number() < 0) return false;
    if (exists) {
        // Only root can give a file away; for everybody else it stays what it is, the user's own.
        static_cast<void>(fchown(file.Number(), old.st_uid, old.st_gid) == 0);
    }
    const bool complete = fchmod(file.Number(), exists ? old.st_mode & 07777 : UsualMode()) == 0 &&
                          WriteAll(file.Number(), bytes) && fsync(file.Number()) == 0 && file.Close() &&
                          std::rename(temporary.c_str(), target.c_str()) == 0;
    if (!complete) {
        unlink(temporary.c_str());
        return false;
    }
    SyncFolder(FolderOfFile(target));
    return true;
}

}  // namespace platform
