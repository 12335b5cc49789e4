#include "document/RecoveryFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view lockName = "/lock";
constexpr std::string_view prefix = "session-";
constexpr std::string_view extension = ".nx3";

// The number of a recovery file; 0 for every other name.
int NumberOf(const fs::path& file) {
    const std::string name = file.filename();
    int number = 0;
    if (!name.ends_with(extension)) return 0;
    const char* const digitsEnd = name.data() + name.size() - extension.size();
    const auto [end, error] = std::from_chars(name.data(), digitsEnd, number);
    return error == std::errc() && end == digitsEnd ? number : 0;
}

void Sync(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

RecoveryFolder RecoveryFolder::New(const std::string& parent) {
    std::error_code failed;
    if (fs::create_directories(parent, failed)) chmod(parent.c_str(), 0700);
    // A copy that starts just now may take the folder for abandoned, before it is locked: then another one.
    for (int tries = 0; tries < 10; ++tries) {
        std::string path = parent + "/" + std::string(prefix) + "XXXXXX";
        if (!mkdtemp(path.data())) return {};
        if (RecoveryFolder made = Lock(path, O_CREAT)) {
            Sync(parent);
            return made;
        }
        if (errno != EWOULDBLOCK) {
            // Without locks nobody could tell that this copy is running.
            fs::remove_all(path, failed);
            return {};
        }
    }
    return {};
}

std::vector<RecoveryFolder> RecoveryFolder::Abandoned(const std::string& parent) {
    std::vector<RecoveryFolder> abandoned;
    std::error_code failed;
    for (fs::directory_iterator entry(parent, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string path = entry->path();
        if (!entry->path().filename().string().starts_with(prefix)) continue;
        RecoveryFolder folder = Lock(path, 0);
        if (!folder) continue;
        if (folder.Files().empty()) {
            folder.Remove();
        } else {
            abandoned.push_back(std::move(folder));
        }
    }
    return abandoned;
}

RecoveryFolder RecoveryFolder::Lock(const std::string& path, int flags) {
    const std::string name = path + std::string(lockName);
    RecoveryFolder folder(path, open(name.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | flags, 0600));
    if (!folder || flock(folder.lock_, LOCK_EX | LOCK_NB) != 0) return {};
    struct stat held {};
    if (fstat(folder.lock_, &held) == 0 && held.st_nlink > 0) return folder;
    errno = EWOULDBLOCK;  // the one that held it before has removed it
    return {};
}

RecoveryFolder::RecoveryFolder(RecoveryFolder&& other) noexcept
    : path_(std::move(other.path_)), lock_(std::exchange(other.lock_, -1)) {}

RecoveryFolder& RecoveryFolder::operator=(RecoveryFolder&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(lock_, other.lock_);
    return *this;
}

RecoveryFolder::~RecoveryFolder() {
    if (lock_ < 0) return;
    const int error = errno;  // why it could not be locked
    close(lock_);
    errno = error;
}

std::string RecoveryFolder::File(int number) const {
    return path_ + "/" + std::to_string(number) + std::string(extension);
}

std::vector<std::string> RecoveryFolder::Files() const {
    std::vector<int> numbers;
    std::error_code failed;
    for (fs::directory_iterator entry(path_, failed), end; !failed && entry != end; entry.increment(failed)) {
        if (const int number = NumberOf(entry->path())) numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    std::vector<std::string> files;
    files.reserve(numbers.size());
    for (const int number : numbers) files.push_back(File(number));
    return files;
}

// The lock goes last of all files: until then nobody takes the folder.
void RecoveryFolder::Remove() {
    if (!*this) return;
    std::error_code failed;
    for (fs::directory_iterator entry(path_, failed), end; !failed && entry != end; entry.increment(failed)) {
        const std::string file = entry->path();
        if (!file.ends_with(lockName)) unlink(file.c_str());
    }
    unlink((path_ + std::string(lockName)).c_str());
    rmdir(path_.c_str());
}
