// SPDX-License-Identifier: MIT

// What the engine costs, by the way that the program takes: the toolkit's event pump, clock and seeds,
// settings read from a file.

#include <QApplication>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "Puzzles.h"
#include "engine/EngineRun.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "engine/clsGrid.h"
#include "platform/qt/QtHost.h"
#include "settings/IniParamProcs.h"
#ifdef NINARIX_QQWING
#include <qqwing.hpp>
#endif

namespace {

// The toolkit's host with a folder of its own for the settings. Every question is answered with Yes, and
// counted: a figure with questions in it is none.
class BenchHost : public platform::MessageBoxes, public platform::Application {
  public:
    BenchHost() : scope_(Interfaces()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "ninarix-bench-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
        folder_ = pattern;
    }
    ~BenchHost() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
        IniParamProcs::ForgetSettings();
    }
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    // A file that was written a moment ago is read at every question: a second change may bear the same time.
    void WriteSettings(const std::string& text) const {
        std::ofstream(folder_ / "Ninarix.ini") << text;
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
    }
    int Questions() const { return questions_; }

    platform::MessageButton Show(std::string_view text, int style, int) override {
        ++questions_;
        if ((style & 7) == platform::MessageStyle::YesNo) return platform::MessageButton::Yes;
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        return platform::MessageButton::Ok;
    }
    void Beep() override {}
    const std::string& ProgramFolder() const override { return folder_.native(); }
    const std::string& ProgramFileName() const override { return name_; }
    std::string Title() const override { return "Ninarix"; }
    int MajorVersion() const override { return 3; }
    int MinorVersion() const override { return 2; }
    std::string CommandLine() const override { return {}; }
    std::string StateFolder() const override { return {}; }
    std::string HelpFile() const override { return {}; }
    void HelpFile(const std::string&) override {}

  private:
    platform::Host Interfaces() {
        platform::Host host = toolkit_.Interfaces();
        host.messages = this;
        host.application = this;
        return host;
    }
    platform_qt::QtHost toolkit_;
    std::filesystem::path folder_;
    std::string name_ = "Ninarix";
    int questions_ = 0;
    platform::HostScope scope_;
};

using Puzzles = std::array<std::string_view, 20>;

int DigitAt(std::string_view puzzle, int cell) {
    const char text = puzzle[static_cast<std::size_t>(cell - 1)];
    return text == '.' ? 0 : text - '0';
}

// One puzzle after the other, so that no branch is learnt by heart.
template <class Solve>
void ForEachPuzzle(benchmark::State& state, std::size_t count, Solve solve) {
    const BenchHost host;
    host.WriteSettings("[Options]\r\nLevelValue=5\r\nResolLoop=8\r\n");
    std::size_t n = 0;
    for (auto _ : state) solve(n++ % count);
    if (host.Questions() > 0) state.SkipWithError("a question was asked");
}

void Attempts(benchmark::State& state, const Puzzles& puzzles) {
    RangeClass puzzle;
    RangeClass working;
    Global::EngineRun run(puzzle, working);
    std::vector<Global::Digits> givens(puzzles.size());
    for (std::size_t n = 0; n < puzzles.size(); ++n)
        for (int cell = 1; cell <= 81; ++cell)
            givens[n][cell] = static_cast<std::uint8_t>(DigitAt(puzzles[n], cell));
    ForEachPuzzle(state, puzzles.size(), [&](std::size_t n) { run.SolveDigits(givens[n], 400); });
}

void SolveGrid(benchmark::State& state, const Puzzles& puzzles) {
    std::vector<std::unique_ptr<clsGrid>> grids;
    for (const std::string_view text : puzzles) {
        grids.push_back(std::make_unique<clsGrid>());
        for (int cell = 1; cell <= 81; ++cell) {
            grids.back()->Cells(cell)->Value(static_cast<std::uint8_t>(DigitAt(text, cell)));
            grids.back()->Cells(cell)->Locked(DigitAt(text, cell) != 0);
        }
    }
    ForEachPuzzle(state, puzzles.size(), [&](std::size_t n) {
        grids[n]->SolveGrid();
        if (!grids[n]->Solved()) state.SkipWithError("a grid was not solved");
    });
}

BENCHMARK_CAPTURE(Attempts, Singles, singlesPuzzles)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Attempts, Guesses, guessPuzzles)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SolveGrid, Singles, singlesPuzzles)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SolveGrid, Guesses, guessPuzzles)->Unit(benchmark::kMicrosecond);

void CreateGrid(benchmark::State& state, int level) {
    const BenchHost host;
    host.WriteSettings("[Options]\r\nLevelValue=" + std::to_string(level) + "\r\n");
    clsGrid grid;
    for (auto _ : state) grid.CreateGrid();
    state.counters["questions"] = benchmark::Counter(host.Questions(), benchmark::Counter::kAvgIterations);
}
BENCHMARK_CAPTURE(CreateGrid, Debutant, 7)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(CreateGrid, Facile, 6)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(CreateGrid, Moyen, 5)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(CreateGrid, Difficile, 4)->Unit(benchmark::kMicrosecond);

clsGrid& FullGrid() {
    static clsGrid grid;
    const BenchHost host;
    grid.CreateGrid();
    return grid;
}

void ManageAvails(benchmark::State& state) {
    clsGrid& grid = FullGrid();
    for (auto _ : state) {
        grid.ManageAvails();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ManageAvails)->Unit(benchmark::kMicrosecond);

void Verified(benchmark::State& state) {
    const clsGrid& grid = FullGrid();
    for (auto _ : state) {
        benchmark::DoNotOptimize(grid.Verified());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Verified)->Unit(benchmark::kMicrosecond);

void ReadIniParam(benchmark::State& state, std::size_t size) {
    const BenchHost host;
    host.WriteSettings("[Options]\r\nLevelValue=7\r\n[Rest]\r\n" + std::string(size, ';'));
    for (auto _ : state) benchmark::DoNotOptimize(IniParamProcs::ReadIniParam("Options", "LevelValue", "5"));
}
BENCHMARK_CAPTURE(ReadIniParam, Small, 500)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ReadIniParam, Huge, 50'000'000)->Unit(benchmark::kMicrosecond);

#ifdef NINARIX_QQWING
// The same puzzles by another solver, in the same run.
void OtherSolve(benchmark::State& state, const Puzzles& puzzles) {
    qqwing::SudokuBoard board;
    std::vector<std::array<int, 81>> givens(puzzles.size());
    for (std::size_t n = 0; n < puzzles.size(); ++n)
        for (int cell = 1; cell <= 81; ++cell)
            givens[n][static_cast<std::size_t>(cell - 1)] = DigitAt(puzzles[n], cell);
    bool solved = true;
    ForEachPuzzle(state, puzzles.size(), [&](std::size_t n) {
        board.setPuzzle(givens[n].data());
        solved = board.solve() && solved;
    });
    if (!solved) state.SkipWithError("a grid was not solved");
}
BENCHMARK_CAPTURE(OtherSolve, Singles, singlesPuzzles)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(OtherSolve, Guesses, guessPuzzles)->Unit(benchmark::kMicrosecond);

void OtherGenerate(benchmark::State& state) {
    qqwing::SudokuBoard board;
    for (auto _ : state) board.generatePuzzle();
}
BENCHMARK(OtherGenerate)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
