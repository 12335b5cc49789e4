// How long the engine takes, and whether what it makes at that speed is right: after the benchmarks 1,000
// grids are generated at each level and checked one by one. The exit code tells if one was wrong.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <vector>

#include "engine/EngineRun.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "engine/clsGrid.h"
#include "platform/Host.h"

namespace {

// A real clock and real seeds; every question is answered with Yes, errors go to the console.
class BenchHost : public platform::MessageBoxes,
                  public platform::Pointer,
                  public platform::EventPump,
                  public platform::Clock,
                  public platform::SeedSource,
                  public platform::Application {
  public:
    BenchHost()
        : scope_({.messages = this,
                  .pointer = this,
                  .events = this,
                  .clock = this,
                  .seeds = this,
                  .application = this}) {
        std::string pattern = (std::filesystem::temp_directory_path() / "ninarix-bench-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
        folder_ = pattern;
    }
    ~BenchHost() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    void SetLevel(int level) const {
        std::ofstream(folder_ / "Ninarix.ini") << "[Options]\r\nLevelValue=" << level << "\r\n";
    }
    int Questions() const { return questions_; }

    platform::MessageButton Show(std::string_view text, int style, int) override {
        if ((style & 7) == platform::MessageStyle::YesNo) {
            ++questions_;
            return platform::MessageButton::Yes;
        }
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return platform::MessageButton::Ok;
    }
    void Beep() override {}
    void Shape(platform::PointerShape) override {}
    void Yield() override {}
    std::chrono::nanoseconds Now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
    std::uint64_t NextSeed() override {
        return static_cast<std::uint64_t>(Now().count()) ^ (++seeds_ * 0x9E3779B97F4A7C15U);
    }
    std::string ProgramFolder() const override { return folder_.string(); }
    std::string ProgramFileName() const override { return "Ninarix"; }
    std::string Title() const override { return "Ninarix"; }
    int MajorVersion() const override { return 3; }
    int MinorVersion() const override { return 2; }
    std::string CommandLine() const override { return {}; }
    std::string StateFolder() const override { return {}; }
    std::string HelpFile() const override { return {}; }
    void HelpFile(const std::string&) override {}

  private:
    std::filesystem::path folder_;
    std::uint64_t seeds_ = 0;
    int questions_ = 0;
    platform::HostScope scope_;
};

void AttemptFromEmptyTable(benchmark::State& state) {
    const BenchHost host;
    RangeClass puzzle;
    RangeClass working;
    Global::EngineRun run(puzzle, working);
    int full = 0;
    for (auto _ : state) {
        Global::ResetTable();
        Global::Reseed();
        run.SolveAttempt();
        full += Global::HasEmptyCell() ? 0 : 1;
    }
    state.counters["full"] = benchmark::Counter(full, benchmark::Counter::kAvgIterations);
}

void SolveGrid28Givens(benchmark::State& state) {
    constexpr std::string_view givens =
        "6...7..5..7.1..9..3.......7.5.7....6..2...4..8....5.1.9.......2..6..2.3..3..1...4";
    static_assert(givens.size() == 81);
    const BenchHost host;
    clsGrid grid;
    for (int index = 1; index <= 81; ++index) {
        const char text = givens[static_cast<std::size_t>(index - 1)];
        if (text == '.') continue;
        grid.Cells(index)->Value(static_cast<std::uint8_t>(text - '0'));
        grid.Cells(index)->Locked(true);
    }
    for (auto _ : state) grid.SolveGrid();
    state.counters["questions"] = benchmark::Counter(host.Questions());
}

void Generate(benchmark::State& state) {
    const BenchHost host;
    host.SetLevel(static_cast<int>(state.range(0)));
    clsGrid grid;
    for (auto _ : state) grid.CreateGrid();
}

BENCHMARK(AttemptFromEmptyTable);
BENCHMARK(SolveGrid28Givens)->Unit(benchmark::kMicrosecond);
BENCHMARK(Generate)->ArgName("level")->DenseRange(4, 7)->Unit(benchmark::kMicrosecond);

// Empty when the grid is a full valid solution with as many givens as its level has.
std::string Fault(const clsGrid& grid, int level) {
    if (!grid.Verified()) return "not a valid solution";
    int givens = 0;
    for (int index = 1; index <= 81; ++index) givens += grid.Cells(index)->Locked() ? 1 : 0;
    const int most = (level - 1) * 9;
    if (givens < most - 8 || givens > most) return std::to_string(givens) + " givens";
    return {};
}

bool CheckGenerations(int level, int grids) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const BenchHost host;
    host.SetLevel(level);
    std::vector<double> times;
    int faults = 0;
    for (int n = 0; n < grids; ++n) {
        clsGrid grid;
        const auto start = host.Now();
        const bool created = grid.CreateGrid();
        times.push_back(Milliseconds(host.Now() - start).count());
        const std::string fault = created ? Fault(grid, level) : "refused";
        if (fault.empty()) continue;
        ++faults;
        std::fprintf(stderr, "level %d, grid %d: %s\n", level, n + 1, fault.c_str());
    }
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) {
        return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    std::printf("level %d: %d grids, %d faults, median %.3f ms, 95 %% %.3f ms, worst %.3f ms, %d questions\n",
                level, grids, faults, at(0.5), at(0.95), at(1.0), host.Questions());
    return faults == 0;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    bool allRight = true;
    for (const int level : {7, 6, 5, 4}) allRight = CheckGenerations(level, 1000) && allRight;
    return allRight ? 0 : 1;
}
