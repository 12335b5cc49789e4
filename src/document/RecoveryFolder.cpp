// SPDX-License-Identifier: MIT
#include "document/RecoveryFolder.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <utility>

#include "platform/SafeFile.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view lockName = "/lock";
constexpr std::string_view prefix = "session-";
constexpr std::string_view extension = ".nx3";

// The number of a recovery file; 0 for every other name.
int NumberOf(const fs::path& file) {
    const std::string name = file.filename().string();
    int number = 0;
    if (!name.ends_with(extension)) return 0;
    const char* const digitsEnd = name.data() + name.size() - extension.size();
    const auto [end, error] = std::from_chars(name.data(), digitsEnd, number);
    return error == std::errc() && end == digitsEnd ? number : 0;
}

}  // namespace

RecoveryFolder RecoveryFolder::New(const std::string& parent) {
    std::error_code failed;
    if (fs::create_directories(parent, failed)) fs::permissions(parent, fs::perms::owner_all, failed);
    // A copy that starts just now may take the folder for abandoned, before it is locked: then another one.
    for (int tries = 0; tries < 10; ++tries) {
        const std::string path = platform::MakeOwnFolder(parent + "/" + std::string(prefix));
        if (path.empty()) return {};
        RecoveryFolder made;
        const Outcome outcome = Lock(path, true, made);
        if (outcome == Outcome::Got) platform::SyncFolder(parent);
        // Without locks nobody could tell that this copy is running.
        if (outcome == Outcome::NoLock) fs::remove_all(path, failed);
        if (outcome != Outcome::Taken) return made;
    }
    return {};
}

std::vector<RecoveryFolder> RecoveryFolder::Abandoned(const std::string& parent) {
    std::vector<RecoveryFolder> abandoned;
    std::error_code failed;
    for (fs::directory_iterator entry(parent, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string path = entry->path().string();
        if (!entry->path().filename().string().starts_with(prefix)) continue;
        RecoveryFolder folder;
        if (Lock(path, false, folder) != Outcome::Got) continue;
        if (folder.Files().empty()) {
            folder.Remove();
        } else {
            abandoned.push_back(std::move(folder));
        }
    }
    return abandoned;
}

RecoveryFolder::Outcome RecoveryFolder::Lock(const std::string& path, bool make, RecoveryFolder& folder) {
    auto lock = platform::FileLock::OfFile(path + std::string(lockName), make);
    const Outcome outcome = lock.Try();
    if (outcome == Outcome::Got) {
        folder.path_ = path;
        folder.lock_ = std::move(lock);
    }
    return outcome;
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
        std::error_code ignored;
        if (!entry->path().string().ends_with(lockName)) fs::remove(entry->path(), ignored);
    }
    fs::remove(path_ + std::string(lockName), failed);
    fs::remove(path_, failed);
}
