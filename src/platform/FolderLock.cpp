// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "platform/SafeFile.h"

namespace platform {

namespace {

using namespace std::chrono;

constexpr seconds longestWait(2);
constexpr milliseconds politeTime(5);

// What this process knows from its earlier locks.
struct Memory {
    std::set<std::filesystem::path> waitedInVain;
    steady_clock::time_point released;
};

Memory& TheMemory() {
    static Memory memory;
    return memory;
}

// Of uneven length, so that two copies do not wait in step.
void WaitShortly() {
    const auto uneven = steady_clock::now().time_since_epoch() / nanoseconds(1) % 500;
    std::this_thread::sleep_for(microseconds(100 + uneven));
}

}  // namespace

FolderLock::FolderLock(const std::string& pathInFolder) {
    const std::filesystem::path folder = FolderOfFile(pathInFolder);
    lock_ = FileLock::OfFolder(folder);
    if (!lock_) return;
    // The system keeps no queue: without a pause a copy that locks again and again would shut out all others.
    if (steady_clock::now() - TheMemory().released < politeTime) WaitShortly();
    auto& waitedInVain = TheMemory().waitedInVain;
    const auto deadline = steady_clock::now() + (waitedInVain.count(folder) > 0 ? seconds(0) : longestWait);
    auto outcome = lock_.Try();
    while (outcome == FileLock::Outcome::Taken && steady_clock::now() < deadline) {
        WaitShortly();
        outcome = lock_.Try();
    }
    mayWrite_ = outcome != FileLock::Outcome::Taken;
    if (mayWrite_) {
        waitedInVain.erase(folder);
    } else {
        waitedInVain.insert(folder);
    }
}

FolderLock::~FolderLock() {
    if (lock_ && mayWrite_) TheMemory().released = steady_clock::now();
}

}  // namespace platform
