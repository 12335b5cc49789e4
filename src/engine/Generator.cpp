// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "engine/CellText.h"
#include "engine/EngineRun.h"
#include "engine/Geometry.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "engine/Tables.h"
#include "settings/Settings.h"

namespace {

using Global::Digits;

// Numbers 1..9, each the same number of times, drawn without putting back.
class NumberPool {
  public:
    explicit NumberPool(int copies) {
        for (int number = 1; number <= 9; ++number)
            for (int copy = 0; copy < copies; ++copy) numbers_[size_++] = number;
    }
    void Shorten(int count) { size_ -= count; }
    int Size() const { return size_; }
    // Position 1..Size().
    int At(int position) const { return numbers_[position - 1]; }
    void Take(int position) { numbers_[position - 1] = numbers_[--size_]; }

  private:
    Global::EngineArray<int, 72> numbers_;
    int size_ = 0;
};

// The cells that become givens, named by their box and the digit that the solution holds there.
class GivenPairs {
  public:
    bool Has(int box, int digit) const { return pairs_[box * 10 + digit]; }
    void Add(int box, int digit) { pairs_[box * 10 + digit] = true; }

  private:
    Global::EngineArray<bool, 100> pairs_;
};

int ReadLevel() {
    const int level = Settings::ReadStrict(Settings::LevelValue);
    return Settings::LevelValue.Allows(level) ? level : Settings::LevelValue.byDefault;
}

// Nothing when 100 draws in a row hit pairs that were taken already.
std::optional<GivenPairs> DrawPairs(int level) {
    NumberPool digits(level - 1);
    NumberPool boxes(level - 1);
    // Nothing is taken yet, and the pool sorted: shortening it takes from the last boxes.
    boxes.Shorten(static_cast<int>(Global::NextRandom() * 9));

    constexpr int failureLimit = 100;
    int failures = 0;
    GivenPairs pairs;
    // A box stands level - 1 times in its pool, a digit in its own: neither gets more givens than that.
    while (boxes.Size() > 0) {
        const int boxPosition = Global::RandomBetween(1, boxes.Size());
        const int box = boxes.At(boxPosition);
        int digitPosition = Global::RandomBetween(1, digits.Size());
        while (pairs.Has(box, digits.At(digitPosition))) {
            if (++failures == failureLimit) return std::nullopt;
            digitPosition = Global::RandomBetween(1, digits.Size());
        }
        pairs.Add(box, digits.At(digitPosition));
        digits.Take(digitPosition);
        boxes.Take(boxPosition);
        failures = 0;
    }
    return pairs;
}

// What becomes a given of the solution, by cell; 0 elsewhere.
Digits DrawGivens(const Digits& solution, int level) {
    std::optional<GivenPairs> pairs;
    while (!pairs) pairs = DrawPairs(level);

    Digits givens;
    for (int cell = 1; cell <= 81; ++cell)
        if (pairs->Has(Global::unitsOf[cell].box, solution[cell])) givens[cell] = solution[cell];
    return givens;
}

bool TableHolds(const Digits& digits) {
    for (int cell = 1; cell <= 81; ++cell)
        if (Global::TableEntry(cell, 0) != digits[cell]) return false;
    return true;
}

Digits SolutionIn(const RangeClass& working) {
    Digits solution;
    for (int cell = 1; cell <= 81; ++cell) {
        const auto [row, col, box] = Global::unitsOf[cell];
        const int digit = Global::IntegerOf(working.Cells(row, col).Value);
        Global::CheckIndex(digit, 1, 9);
        solution[cell] = static_cast<std::uint8_t>(digit);
    }
    return solution;
}

// 1..9 in random order.
Global::CandidateList DrawOrder() {
    return Global::Shuffled({{1, 2, 3, 4, 5, 6, 7, 8, 9}, 9});
}

}  // namespace

namespace Global {

bool EngineRun::CreateGrid() {
    cancelRequested_ = false;
    return BuildSolution() && MakePuzzle();
}

bool EngineRun::BuildSolution() {
    // From three boxes one attempt in ten is a dead end: twenty in a row mean that seeds or clock are broken.
    // A negative setting, which asks before each attempt of a search, would ask without need here.
    const int limit = std::max(AttemptLimit(), 20);
    ClearRanges();
    for (int attempts = 0;; ++attempts) {
        if (attempts > 0) NoticeCancel();
        if (cancelRequested_) return true;
        if (attempts == limit) {
            if (!UserWantsToGoOn()) return false;
            attempts = 0;
        }
        ResetTable();
        Reseed();
        SeedBoxes();
        // A stopped attempt counts as ended, but leaves empty cells.
        if (SolveAttempt() && !HasEmptyCell()) break;
    }
    WriteDigits();
    return true;
}

void SeedBoxes() {
    // No two boxes of a triple share a band or a stack.
    constexpr std::array<std::string_view, 6> triples{"159", "168", "249", "267", "348", "357"};
    for (const char box : triples[static_cast<std::size_t>(RandomBetween(1, 6) - 1)]) FillBox(box - '0');
}

void FillBox(int box) {
    DrawOrder();  // only moves the random sequence on
    const CandidateList order = DrawOrder();
    for (int position = 1; position <= 9; ++position)
        PlaceDigit(BoxCellIndex(box, position), order.digits[static_cast<std::size_t>(position - 1)]);
}

bool EngineRun::MakePuzzle() {
    // A choice of givens is accepted when a search finds the same grid again, which few givens seldom allow;
    // those of another grid may. The hardest level takes 56 tries on average, and took 518 at most in 3,000
    // grids.
    constexpr int triesPerSolution = 25;
    const int level = ReadLevel();
    const int limit = AttemptLimit();
    while (!cancelRequested_) {
        const Digits solution = SolutionIn(working_);
        for (int tries = 0; tries < triesPerSolution; ++tries) {
            const Digits givens = DrawGivens(solution, level);
            const Ending ending = SolveDigits(givens, limit);
            if (ending == Ending::Declined) return false;
            if (ending == Ending::Cancelled || (ending == Ending::Ended && TableHolds(solution))) {
                WriteGivens(givens);
                return true;
            }
        }
        if (!BuildSolution()) return false;
    }
    return true;
}

void EngineRun::ChooseGivens() {
    WriteGivens(DrawGivens(SolutionIn(working_), ReadLevel()));
}

void EngineRun::WriteGivens(const Digits& givens) {
    for (int cell = 1; cell <= 81; ++cell) {
        clsXlCellClass& target = puzzle_.Cells(RowOf(cell), ColOf(cell));
        target.Font.Bold = target.Locked = givens[cell] != 0;
        target.Value.clear();
        if (givens[cell] != 0) WriteInteger(target.Value, givens[cell]);
    }
}

}  // namespace Global
