#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/ErrorHandling.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "support/ScriptedHost.h"

using Digits = std::array<int, 81>;  // row-major, 0 empty

inline std::size_t Slot(int n) {
    return static_cast<std::size_t>(n);
}

// 81 characters, anything but 1..9 is an empty cell.
inline Digits FromText(std::string_view text) {
    Digits digits{};
    for (std::size_t n = 0; n < 81; ++n) digits[n] = text[n] > '0' && text[n] <= '9' ? text[n] - '0' : 0;
    return digits;
}

inline void Fill(RangeClass& range, const Digits& digits) {
    range.ClearContents();
    for (int n = 0; n < 81; ++n)
        if (digits[Slot(n)] != 0) range.Cells(n / 9 + 1, n % 9 + 1).Value = std::to_string(digits[Slot(n)]);
}

inline Digits FromRange(RangeClass& range) {
    Digits digits{};
    for (int n = 0; n < 81; ++n)
        if (const auto& text = range.Cells(n / 9 + 1, n % 9 + 1).Value; !text.empty())
            digits[Slot(n)] = std::stoi(text);
    return digits;
}

// The oracle: tries everything, shares nothing with the engine. Stops at the second solution.
class ExhaustiveSolver {
  public:
    explicit ExhaustiveSolver(const Digits& givens) : digits_(givens) {
        for (int n = 0; n < 81; ++n)
            if (digits_[Slot(n)] != 0 && (Free(n) & (1U << digits_[Slot(n)])) == 0) return;
        Search();
    }
    int Solutions() const { return solutions_; }
    const Digits& First() const { return first_; }

  private:
    // Bits of the digits that no other cell of the row, column or box of cell n has.
    unsigned Free(int n) const {
        unsigned free = 0x3FE;
        for (int other = 0; other < 81; ++other) {
            const bool sameBox = other / 27 == n / 27 && other % 9 / 3 == n % 9 / 3;
            const bool peer = other / 9 == n / 9 || other % 9 == n % 9 || sameBox;
            if (peer && other != n) free &= ~(1U << digits_[Slot(other)]);
        }
        return free;
    }
    void Search() {
        int fewest = -1;
        unsigned choices = 0;
        for (int n = 0; n < 81; ++n) {
            if (digits_[Slot(n)] != 0) continue;
            const unsigned free = Free(n);
            if (fewest >= 0 && std::popcount(free) >= std::popcount(choices)) continue;
            fewest = n;
            choices = free;
        }
        if (fewest < 0) {
            if (++solutions_ == 1) first_ = digits_;
            return;
        }
        for (int digit = 1; digit <= 9 && solutions_ < 2; ++digit) {
            if ((choices & (1U << digit)) == 0) continue;
            digits_[Slot(fewest)] = digit;
            Search();
        }
        digits_[Slot(fewest)] = 0;
    }
    Digits digits_;
    Digits first_{};
    int solutions_ = 0;
};

inline bool IsSolution(const Digits& digits) {
    return std::count(digits.begin(), digits.end(), 0) == 0 && ExhaustiveSolver(digits).Solutions() == 1;
}

// The number of the RuntimeError that the body ends with, 0 without one.
inline int ErrorOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

// Is hidden once the bar has been set `visibleFor` times.
class FakeProgress : public platform::ProgressWindow {
  public:
    explicit FakeProgress(int visibleFor = 1 << 30) : visibleFor_(visibleFor) {
        Global::UseProgressWindow(this);
    }
    ~FakeProgress() override { Global::UseProgressWindow(nullptr); }
    void Progress(double percent) override { bar.push_back(percent); }
    bool IsVisible() const override { return static_cast<int>(bar.size()) < visibleFor_; }
    std::vector<double> bar;

  private:
    int visibleFor_;
};

inline constexpr std::string_view uniquePuzzle =
    "53..7....6..195....98....6.8...6...34..8.3..17...2...6.6....28....419..5....8..79";
