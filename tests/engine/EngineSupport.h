// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "engine/EngineRun.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "support/ScriptedHost.h"

// The grid's shape, written apart from the engine's. Cells are 1..81; a grid's text has 81 characters, "0"
// for an empty cell.
struct GridShape {
    static int Row(int cell) { return (cell - 1) / 9 + 1; }
    static int Col(int cell) { return (cell - 1) % 9 + 1; }
    static int Box(int cell) { return (Row(cell) - 1) / 3 * 3 + (Col(cell) - 1) / 3 + 1; }
    static bool Meet(int a, int b) { return Row(a) == Row(b) || Col(a) == Col(b) || Box(a) == Box(b); }
    static int At(std::string_view text, int cell) { return text[std::size_t(cell) - 1] - '0'; }
    static std::string With(std::string_view text, std::size_t cell, int digit) {
        return std::string(text).replace(cell - 1, 1, std::to_string(digit));
    }
    // Full, no digit twice in a unit, every given in its place.
    static bool Solves(std::string_view text, std::string_view givens) {
        for (int n = 81; n < 81 * 82; ++n) {
            const int cell = n / 81, other = n % 81 + 1, digit = At(text, cell), given = At(givens, cell);
            if (digit == 0 || (given != 0 && given != digit)) return false;
            if (cell != other && Meet(cell, other) && digit == At(text, other)) return false;
        }
        return true;
    }
};

// Is hidden once the bar has been set `visibleFor` times.
struct FakeProgress : platform::ProgressWindow {
    void Progress(double percent) override { bar.push_back(percent); }
    bool IsVisible() const override { return bar.size() < visibleFor; }
    std::size_t visibleFor = 1U << 30;
    std::vector<double> bar;
};

struct EngineTest : testing::Test, GridShape {
    void Option(const std::string& line) {
        host.WriteFile(host.PathOf("Ninarix.ini"), "[Options]\r\n" + line);
    }
    const std::string emptyGrid = std::string(81, '0');
    const std::string easyPuzzle =
        "530070000600195000098000060800060003400803001700020006060000280000419005000080079";
    ScriptedHost host;
    FakeProgress window;
};

struct RunTest : EngineTest {
    void Puzzle(std::string_view text) {
        for (int cell = 1; cell <= 81; ++cell)
            puzzle.Cells(Row(cell), Col(cell)).Value.assign(At(text, cell) != 0, text[std::size_t(cell) - 1]);
    }
    static std::string TextOf(const RangeClass& range) {
        std::string text;
        for (int cell = 1; cell <= 81; ++cell)
            text += std::max(std::string("0"), range.Cells(Row(cell), Col(cell)).Value);
        return text;
    }
    RangeClass puzzle, working;
    Global::EngineRun run{puzzle, working, &window};
};
