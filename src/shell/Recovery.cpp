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
    connect(&timer_, &QTimer::timeout, this, &Recovery::KeepNext);
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

// A long history takes a millisecond to copy, so there is one grid at a time between two keys. Without the
// memory for a copy the next change tries again.
void Recovery::KeepNext() try {
    if (changed_.empty()) return;
    const int number = changed_.extract(changed_.begin()).value();
    if (!changed_.empty()) timer_.start(0ms);
    const OpenGrid& grid = grids_[number];
    if (grid && grid->Document().Modified()) {
        store_.Keep(number, grid->Document().Snapshot());
    } else {
        store_.Drop(number);
    }
} catch (const std::bad_alloc&) {
}

bool Recovery::KeepNow() {
    while (!changed_.empty()) KeepNext();
    timer_.stop();
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
