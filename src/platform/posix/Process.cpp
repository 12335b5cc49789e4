// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <ctime>
#include <sys/resource.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

void ShareOneHeap() {
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
#endif
}

// POSIX would mean the whole process; Linux takes it for the thread.
void LowerThreadPriority() {
    setpriority(PRIO_PROCESS, 0, 10);
}

std::chrono::nanoseconds CoarseTime() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

}  // namespace platform
