// SPDX-License-Identifier: MIT
#include "Fuzz.h"
#include "engine/EngineSupport.h"
#include "engine/clsGrid.h"

// Any cells, clock, seeds and answers: a run ends, refused or not, and what it calls solved is.

namespace {

std::string TextOf(const clsGrid& grid) {
    std::string text;
    for (int n = 1; n <= 81; ++n) text += static_cast<char>('0' + grid.Cells(n)->Value());
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    ScriptedHost& host = FuzzHost();
    FakeProgress window;
    window.visibleFor = input.ConsumeIntegralInRange<std::size_t>(0, 60);
    host.answers.assign(input.ConsumeIntegralInRange<std::size_t>(0, 2), platform::MessageButton::Yes);
    host.seed = input.ConsumeIntegral<std::uint64_t>();
    host.stepPerReading = std::chrono::seconds(input.ConsumeIntegralInRange(-70, 70));
    // A constant seed source, or one that counts.
    host.onYield = [&host, fixed = host.seed, isFixed = input.ConsumeBool()] {
        host.seed = isFixed ? fixed : host.seed;
    };
    const std::string loop = input.PickValueInArray({"", "-3", "0.1", "1", "4e4"});
    const std::string level = input.PickValueInArray({"", "2", "4", "7", "9", "-1", "x"});
    NewFile("Ninarix.ini", "[Options]\nResolLoop=" + loop + "\nLevelValue=" + level);
    RangeClass puzzle, working;
    clsGrid grid;
    std::string givens;
    for (int n = 1; n <= 81; ++n) {
        clsXlCellClass& cell = puzzle.Cells(GridShape::Row(n), GridShape::Col(n));
        const char c = input.ConsumeIntegral<char>();
        const bool digit = c > '0' && c <= '9';
        cell.Value = digit ? std::string(1, c) : input.ConsumeRandomLengthString(3);
        grid.Cells(n)->Locked(digit || c < -99);
        grid.Cells(n)->Value(static_cast<std::uint8_t>(digit ? c - '0' : c));
        givens += digit ? c : '0';
    }
    grid.SolveGrid(&window);
    Check(!grid.Solved() || GridShape::Solves(TextOf(grid), givens), "a solution");
    MayRefuse([&] { Global::EngineRun(puzzle, working, &window).SolveFromRanges(); });
    if (grid.CreateGrid(&window) && window.IsVisible())
        Check(GridShape::Solves(TextOf(grid), std::string(81, '0')), "a generated grid");
    host.answers.clear();
    return 0;
}
