// Random play with the whole program. monkey [--seed N] [--seconds N]
//
// A seed alone plays its sequence once, as it was played before; otherwise one sequence after another, from
// that seed on, for so many seconds (3).

#include "Monkey.h"

#include <chrono>
#include <csignal>
#include <iostream>

#include "Soak.h"

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

std::uint64_t seed = 0;

void Tell() {
    std::cerr << Monkey::Log() << "broken by: monkey --seed " << seed << std::endl;
}

void TellAndDie(int signal) {
    Tell();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void TellOfEveryDeath() {
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(Tell);
    std::signal(SIGABRT, TellAndDie);
    if (!__sanitizer_set_death_callback) std::signal(SIGSEGV, TellAndDie);
}

TEST(MonkeyTest, BreaksNoPromise) {
    using std::chrono::steady_clock;
    const auto only = Option("--seed");
    const auto seconds = Option("--seconds");
    const auto end = steady_clock::now() + std::chrono::seconds(only && !seconds ? 0 : seconds.value_or(3));
    TellOfEveryDeath();
    seed = only.value_or(1);
    Monkey(seed).Play(20);  // the toolkit keeps open what it needs for the first time
    const int descriptors = OpenDescriptors();
    int sequences = 0;
    int events = 0;
    do {
        const int length = 50 + static_cast<int>(seed % 150);
        Monkey(seed).Play(length);
        ServeEvents();
        EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty()) << "windows are left";
        EXPECT_TRUE(Eventually([&] { return OpenDescriptors() <= descriptors; })) << "descriptors are left";
        if (HasFailure()) return Tell();
        ++sequences;
        events += length;
        ++seed;
    } while (steady_clock::now() < end);
    std::cout << events << " events in " << sequences << " sequences, the last of seed " << seed - 1 << "\n";
}

}  // namespace
