// SPDX-License-Identifier: MIT
#include "document/RecoveryStore.h"

#include <filesystem>
#include <utility>

#include "document/RecoveryFile.h"
#include "platform/Process.h"
#include "platform/SafeFile.h"

RecoveryStore::~RecoveryStore() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
    if (!left_) folder_.Remove();
}

void RecoveryStore::Keep(int grid, GridSnapshot snapshot) {
    Add(grid, std::move(snapshot));
}

void RecoveryStore::Add(int grid, std::optional<GridSnapshot> snapshot) {
    const std::lock_guard lock(mutex_);
    if (parent_.empty() || left_) return;
    if (!snapshot && !thread_.joinable()) return;  // nothing was kept yet
    waiting_[grid] = std::move(snapshot);
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    changed_.notify_all();
}

bool RecoveryStore::Flush(std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, longest, [this] { return waiting_.empty() && !writing_; }) &&
           failed_.empty();
}

void RecoveryStore::Leave() {
    const std::lock_guard lock(mutex_);
    left_ = true;
}

void RecoveryStore::Run() {
    platform::LowerThreadPriority();  // who plays goes first
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        const auto next = waiting_.extract(waiting_.begin());
        writing_ = true;
        lock.unlock();
        const bool written = Write(next.key(), next.mapped());
        lock.lock();
        writing_ = false;
        if (written) {
            failed_.erase(next.key());
        } else {
            failed_.insert(next.key());
        }
        changed_.notify_all();
    }
}

// No memory is a failure like a full disk.
bool RecoveryStore::Write(int grid, const std::optional<GridSnapshot>& snapshot) try {
    if (!snapshot) {
        std::error_code failed;
        std::filesystem::remove(folder_.File(grid), failed);  // a missing one is no failure
        return !failed;
    }
    if (!folder_) folder_ = RecoveryFolder::New(parent_);
    return folder_ && platform::ReplaceFile(folder_.File(grid), RecoveryFile::Text(*snapshot));
} catch (const std::exception&) {
    return false;
}
