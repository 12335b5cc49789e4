// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

// What the process asks of the system for itself.
namespace platform {

// Threads that allocate a little now and then would each get a heap. To be called before there are any.
void ShareOneHeap();

// This thread alone: whoever else wants to run goes first.
void LowerThreadPriority();

// Since some moment of the past. A few milliseconds coarse, for a fifth of the price of the standard clock.
std::chrono::nanoseconds CoarseTime();

}  // namespace platform
