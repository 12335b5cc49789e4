// A program that is used for very long: what it does takes no more memory, descriptors or time at the end
// than at the beginning. long_life [--long]: twenty times as long.

#include <QAbstractEventDispatcher>
#include <QPixmapCache>
#include <ctime>
#include <filesystem>
#include <iomanip>
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

    static double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
    static std::int64_t Memory() { return KernelNumber("/proc/self/status", "VmRSS"); }

    // Does something `count` times, in ten parts that do exactly the same.
    template <class Operation>
    void Repeat(const char* name, int count, Operation operation) {
        count = static_cast<int>(static_cast<std::uint64_t>(count) / Option("--part").value_or(100));
        const int descriptors = OpenDescriptors();
        std::array<double, 10> seconds{};
        std::int64_t memory = 0;
        for (double& part : seconds) {
            const double begin = ProcessorSeconds();
            host.seed = 1;
            for (int n = 0; n < count / 10; ++n) operation(n);
            host.boxes.clear();
            host.shapes.clear();
            part = ProcessorSeconds() - begin;
            if (&part == &seconds[0]) memory = Memory();
        }
        // The best of three: somebody else's work is none of the program's.
        const double first = *std::min_element(seconds.begin(), seconds.begin() + 3) * 1e4 / count;
        const double last = *std::min_element(seconds.end() - 3, seconds.end()) * 1e4 / count;
        std::cout << count << " " << name << std::fixed << std::setprecision(3) << ": " << first
                  << " ms each at first, " << last << " at last; " << memory << " KB at first, " << Memory()
                  << " at last\n";
        EXPECT_LE(Memory() - memory, allowedGrowth) << name;
        EXPECT_LE(last, 2 * first) << name;
        EXPECT_TRUE(Eventually([&] { return OpenDescriptors() <= descriptors; })) << name;
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

// ---- Nothing to do.

std::int64_t WakingsOfOtherThreads() {
    std::int64_t wakings = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() == std::to_string(getpid())) continue;
        wakings += KernelNumber(thread.path() / "status", "voluntary_ctxt_switches");
    }
    return wakings;
}

TEST_F(LongLife, ASleepingProgramIsNotWoken) {
    Run("mnuFileNew");
    Active().ctrlCells(41).DoSelect();
    main->cmdValue_Click(5);
    int wakings = 0;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                     [&] { ++wakings; });
    // What it still had to do may be done first; a timer that repeats leaves no three seconds free.
    std::int64_t threads = 0;
    for (int attempt = 0; attempt < 10; ++attempt) {
        bool over = false;
        QTimer::singleShot(3000, Qt::PreciseTimer, [&] { over = true; });
        wakings = 0;
        threads = -WakingsOfOtherThreads();
        while (!over) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        threads += WakingsOfOtherThreads();
        if (wakings <= 1 && threads == 0) break;
    }
    EXPECT_LE(wakings, 1) << "of the event loop, the end of the watch included";
    EXPECT_EQ(threads, 0);
}

}  // namespace
