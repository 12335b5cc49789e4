// SPDX-License-Identifier: MIT
#include "document/window/OpenGrid.h"

#include <cassert>

#include "document/window/wGrid.h"

OpenGrid::OpenGrid(wGrid* window) : window_(window) {}

wGrid* OpenGrid::Get() const {
    return window_ && !window_->Closed() ? window_.data() : nullptr;
}

wGrid* OpenGrid::operator->() const {
    wGrid* window = Get();
    assert(window && "the grid window was closed");
    return window;
}
