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

// Runs it with ever more memory until there is enough; returns how often there was not.
static int UntilEnough(const std::function<void()>& action, const std::function<void()>& check) {
    for (int failures = 0;; ++failures) {
        try {
            allocationsLeft = failures;
            action();
            allocationsLeft = -1;
            return failures;
        } catch (const std::bad_alloc&) {
            allocationsLeft = -1;
            check();
        }
    }
}

TEST(OutOfMemory, LeavesTheFileAndTheGridWhole) {
    ScriptedHost host;
    GridDocument document;
    const std::string file = host.PathOf("a.nx3");
    document.EnterValue(1, 5, {});
    ASSERT_TRUE(document.SaveFile(file));
    const std::string before = ScriptedHost::ReadFile(file);
    document.EnterValue(2, 6, {});
    const auto save = [&] { EXPECT_TRUE(document.SaveFile(file)); };
    const int saves = UntilEnough(save, [&] {
        EXPECT_TRUE(document.Modified());
        EXPECT_TRUE(ScriptedHost::ReadFile(file) == before || GridDocument().LoadFile(file));
    });
    EXPECT_TRUE(saves > 5 && !document.Modified());
    const int entries = UntilEnough([&] { document.EnterValue(3, 7, {}); },
                                    [&] { EXPECT_EQ(StateText(document, 3), "0|0|0"); });
    EXPECT_TRUE(entries > 0 && document.Undo() == 3 && document.Undo() == 2);
}
