// SPDX-License-Identifier: MIT

// A program that is used for very long: what it does takes no more memory, descriptors or time at the end
// than at the beginning. long_life [--divisor N]: the full counts divided by N (100).

#include <QPixmapCache>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "Program.h"
#include "Soak.h"

// What was freed is soon used again, so that memory can be measured; a setting of who runs it goes first.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=4";
}

namespace {

constexpr std::int64_t allowedGrowth = 8 * 1024;  // kilobytes: a window that is never given back is 300

class LongLife : public RunningProgram {
  protected:
    LongLife() {
        host.AnswerAlways(platform::MessageButton::No);
        host.stepPerReading = std::chrono::microseconds(1);
        QPixmapCache::setCacheLimit(512);  // kilobytes, which every window's icon would fill until the limit
        Setting("Options", "LevelAsk", "1");
        // Colours, fonts, tables, the folder for recovery: what is made once.
        Run("mnuFileCreate");
        main->CommitSession(false);
        Run("mnuFileClose");
    }

    // Does something `count` times, in ten parts that do exactly the same.
    void Repeat(const char* name, int count, const std::function<void(int)>& operation) {
        count /= static_cast<int>(Option("--divisor").value_or(100));
        const int descriptors = OpenDescriptors();
        std::array<double, 10> milliseconds{};  // of the processor, for one
        std::array<std::int64_t, 10> memory{};
        for (std::size_t part = 0; part < 10; ++part) {
            const std::clock_t begin = std::clock();
            host.seed = 1;
            for (int n = 0; n < count / 10; ++n) operation(n);
            host.boxes.clear();
            host.shapes.clear();
            milliseconds[part] = double(std::clock() - begin) * 1e4 / CLOCKS_PER_SEC / count;
            memory[part] = KernelNumber("/proc/self/status", "VmRSS");
        }
        // The best of three: somebody else's work is none of the program's.
        const double first = *std::min_element(milliseconds.begin(), milliseconds.begin() + 3);
        const double last = *std::min_element(milliseconds.end() - 3, milliseconds.end());
        std::cout << count << " " << name << ": " << first << " ms each at first, " << last << " at last; "
                  << memory[0] << " KB at first, " << memory[9] << " at last\n";
        EXPECT_LE(memory[9] - memory[0], allowedGrowth);
        EXPECT_LE(last, 2 * first);
        EXPECT_TRUE(Eventually([&] { return OpenDescriptors() <= descriptors; }));
    }
};

TEST_F(LongLife, WindowsComeAndGo) {
    Repeat("windows", 10'000, [this](int) {
        Run("mnuFileNew");
        Run("mnuFileClose");
    });
}

TEST_F(LongLife, GridsAreGenerated) {
    Repeat("generations", 10'000, [this](int n) {
        Setting("Options", "LevelValue", std::to_string(4 + n % 6));
        Run("mnuFileCreate");
        Run("mnuFileClose");
    });
}

TEST_F(LongLife, MovesAreTakenBack) {
    Run("mnuFileNew");
    Repeat("moves", 100'000, [this](int n) {
        Active().ctrlCells(1 + n % 50).DoSelect();
        main->cmdValue_Click(SolutionAt(1 + n % 50));
        for (int step = 0; n % 50 == 49 && step < 50; ++step) Run("mnuEditUndo");
        EXPECT_EQ(Document().CanUndo(), n % 50 != 49);
    });
}

TEST_F(LongLife, ASleepingProgramIsNotWoken) {
    Run("mnuFileNew");
    Active().ctrlCells(41).DoSelect();
    main->cmdValue_Click(5);
    // Of all threads; the end of the watch is one.
    const auto wakings = [] {
        std::int64_t count = 0;
        for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
            count += KernelNumber(thread.path() / "status", "voluntary_ctxt_switches");
        }
        return count;
    };
    // What it still had to do may be done first; a timer that repeats leaves no three seconds free.
    std::int64_t woken = 2;
    for (int attempt = 0; attempt < 10 && woken > 1; ++attempt) {
        bool over = false;
        QTimer::singleShot(3000, Qt::PreciseTimer, [&] { over = true; });
        woken = -wakings();
        while (!over) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        woken += wakings();
    }
    EXPECT_LE(woken, 1);
}

}  // namespace
