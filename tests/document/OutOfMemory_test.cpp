// SPDX-License-Identifier: MIT

// Memory may run out at any allocation of a save or of a snapshot: nothing is lost, nothing half-written.

#include <cstdlib>
#include <new>

#include "DocumentSupport.h"
#include "support/ScriptedHost.h"

namespace {
int allocationsLeft = -1;  // below 0: no end
}

void* operator new(std::size_t size) {
    if (allocationsLeft == 0) throw std::bad_alloc();
    if (allocationsLeft > 0) --allocationsLeft;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

TEST(OutOfMemory, LeavesTheFileAndTheGridWhole) {
    ScriptedHost host;
    GridDocument document;
    const std::string file = host.PathOf("a.nx3");
    document.EnterValue(1, 5, {});
    ASSERT_TRUE(document.SaveFile(file));
    document.EnterValue(2, 6, {});
    const std::function<bool()> actions[] = {[&] { return document.SaveFile(file); },
                                             [&] { return document.EnterValue(3, 7, {}); }};
    for (const auto& action : actions) {
        int failures = 0;
        for (bool done = false; !done; ++failures) {
            const bool modified = document.Modified();
            try {
                allocationsLeft = failures;
                done = action();
            } catch (const std::bad_alloc&) {
            }
            allocationsLeft = -1;
            if (done) continue;
            EXPECT_EQ(document.Modified(), modified);
            EXPECT_EQ(StateText(document, 3), "0|0|0");
            EXPECT_TRUE(GridDocument().LoadFile(file));
        }
        EXPECT_GT(failures, 1);
    }
    EXPECT_TRUE(document.Undo() == 3 && document.Undo() == 2);
}
