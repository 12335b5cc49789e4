// SPDX-License-Identifier: MIT
#include "shell/Recovery.h"

#include <new>

#include "document/window/wGrid.h"
#include "platform/Host.h"

namespace {

using namespace std::chrono_literals;

constexpr auto delay = 500ms;
constexpr auto longestWait = 5s;  // for a disk that hangs

}  // namespace

std::string Recovery::Folder() {
    const std::string state = platform::TheHost().application->StateFolder();
    return state.empty() ? state : state + "/recovery";
}

Recovery::Recovery() : store_(Folder()) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &Recovery::Keep);
}

void Recovery::Watch(wGrid& grid) {
    const int number = grids_.empty() ? 1 : grids_.rbegin()->first + 1;
    grids_[number] = OpenGrid(&grid);
    grid.Document().OnChange([this, number] { Changed(number); });
    connect(&grid, &wGrid::Unloading, this, [this, number] { Forget(number); });
    Changed(number);
}

void Recovery::Changed(int grid) {
    ++changes_;
    changed_.insert(grid);
    if (!timer_.isActive()) timer_.start(delay);
}

// Without the memory for a copy the next change tries again.
void Recovery::Keep() try {
    while (!changed_.empty()) {
        const int number = changed_.extract(changed_.begin()).value();
        const OpenGrid& grid = grids_[number];
        if (grid && grid->Document().Modified()) {
            store_.Keep(number, grid->Document().Snapshot());
        } else {
            store_.Drop(number);
        }
    }
} catch (const std::bad_alloc&) {
}

bool Recovery::KeepNow() {
    timer_.stop();
    Keep();
    return store_.Flush(longestWait);
}

void Recovery::KeepForNextStart() {
    KeepNow();
    store_.Leave();
}

void Recovery::Forget(int grid) {
    changed_.erase(grid);
    grids_.erase(grid);
    store_.Drop(grid);
}
