// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "document/GridDocument.h"
#include "document/RecoveryFolder.h"

// Keeps the grids of this running copy in recovery files. They are written by a thread of their own: the disk
// may be slow, the caller never waits for it. Nothing is reported: what cannot be kept is not, and play goes
// on. A copy that ends without destroying this leaves its files behind.
class RecoveryStore {
  public:
    // `parent`: the folder of all copies' recovery files, made when it is needed; empty: nothing is kept.
    explicit RecoveryStore(std::string parent) : parent_(std::move(parent)) {}
    // Waits for what is being written, then removes every file unless they were left on purpose.
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore&) = delete;
    RecoveryStore& operator=(const RecoveryStore&) = delete;

    // The grid's file holds this from now on. `grid`: a number above 0 of the caller's choice.
    void Keep(int grid, GridSnapshot snapshot);
    void Drop(int grid) { Add(grid, std::nullopt); }
    // Waits until everything is on disk, no longer than told. False: something is not.
    bool Flush(std::chrono::milliseconds longest);
    // The files stay when this goes; nothing is kept or dropped any more.
    void Leave();

  private:
    void Add(int grid, std::optional<GridSnapshot> snapshot);
    void Run();
    bool Write(int grid, const std::optional<GridSnapshot>& snapshot);

    const std::string parent_;
    std::mutex mutex_;
    std::condition_variable changed_;
    // ---- Under the mutex.
    std::map<int, std::optional<GridSnapshot>> waiting_;  // to be written, or removed
    bool writing_ = false;
    std::set<int> failed_;  // not on disk as they were to be
    bool ending_ = false;
    bool left_ = false;
    // ---- The thread's own while it runs.
    RecoveryFolder folder_;
    std::thread thread_;
};
