#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "engine/EngineRun.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "engine/Tables.h"
#include "settings/Conversions.h"
#include "settings/Settings.h"

namespace {

// Numbers 1..9, each the same number of times, drawn without putting back.
class NumberPool {
  public:
    NumberPool(int size, int copies) : size_(size) {
        for (int n = 0; n < size; ++n) numbers_[Slot(n)] = n / copies + 1;
    }
    void Shorten(int size) { size_ = size; }
    int Size() const { return size_; }
    // Position 1..Size().
    int At(int position) const { return numbers_[Slot(position - 1)]; }
    void Take(int position) { numbers_[Slot(position - 1)] = numbers_[Slot(--size_)]; }

  private:
    static std::size_t Slot(int n) { return static_cast<std::size_t>(n); }
    std::array<int, 72> numbers_{};
    int size_;
};

// The cells that become givens, named by their box and the digit that the solution holds there.
class GivenPairs {
  public:
    bool Has(int box, int digit) const { return pairs_[Slot(box, digit)]; }
    void Add(int box, int digit) { pairs_[Slot(box, digit)] = true; }

  private:
    static std::size_t Slot(int box, int digit) {
        Global::CheckIndex(box, 1, 9);
        Global::CheckIndex(digit, 1, 9);
        return static_cast<std::size_t>(box * 10 + digit);
    }
    std::array<bool, 100> pairs_{};
};

int ReadLevel() {
    const int level = Settings::ReadStrict(Settings::LevelValue);
    return Settings::LevelValue.Allows(level) ? level : Settings::LevelValue.byDefault;
}

// Nothing when 100 draws in a row hit pairs that were taken already.
std::optional<GivenPairs> DrawPairs(int level) {
    const int size = (level - 1) * 9;
    NumberPool digits(size, level - 1);
    NumberPool boxes(size, level - 1);
    // The pool stays sorted: shortening it takes from the last boxes.
    boxes.Shorten(size - static_cast<int>(Global::NextRandom() * 9));

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

// 1..9 in random order.
std::array<int, 9> DrawOrder() {
    std::string rest = "123456789";
    std::array<int, 9> order{};
    for (int& digit : order) {
        const auto position =
            static_cast<std::size_t>(Global::RandomBetween(1, static_cast<int>(rest.size())) - 1);
        digit = rest[position] - '0';
        rest.erase(position, 1);
    }
    return order;
}

bool SameTexts(const RangeClass& one, const RangeClass& other) {
    for (int row = 1; row <= 9; ++row)
        for (int col = 1; col <= 9; ++col)
            if (one.Cells(row, col).Value != other.Cells(row, col).Value) return false;
    return true;
}

}  // namespace

namespace Global {

bool EngineRun::CreateGrid() {
    cancelRequested_ = false;
    return BuildSolution() && MakePuzzle();
}

bool EngineRun::BuildSolution() {
    // One attempt in ten is a dead end: twenty in a row mean that seeds or clock are broken. A negative
    // setting, which asks before each attempt of a search, would ask without need here.
    const int limit = std::max(AttemptLimit(), 20);
    for (int attempts = 0;; ++attempts) {
        if (attempts > 0) NoticeCancel();
        if (cancelRequested_) return true;
        if (attempts == limit) {
            if (!UserWantsToGoOn()) return false;
            attempts = 0;
        }
        ClearRanges();
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
    const std::array<int, 9> order = DrawOrder();
    for (int position = 1; position <= 9; ++position)
        PlaceDigit(BoxCellIndex(box, position), order[static_cast<std::size_t>(position - 1)]);
}

bool EngineRun::MakePuzzle() {
    constexpr int triesPerSolution = 25;
    // Five thousand tries; the hardest level that has an end takes 56 on average, 518 at most in 3,000 grids.
    constexpr int solutionsPerQuestion = 200;
    for (int solutions = 1; !cancelRequested_; ++solutions) {
        RangeClass solution;
        working_.Copy(solution);
        for (int tries = 0; tries < triesPerSolution; ++tries) {
            ChooseGivens();
            if (!SolveFromRanges()) return false;
            const bool accepted = !cancelRequested_ && SameTexts(working_, solution);
            // The next choice reads the solution where the check has just solved.
            solution.Copy(working_);
            if (accepted) KeepGivensOnly();
            if (accepted || cancelRequested_) return true;
        }
        // Few givens seldom leave one solution only; another solution may do better.
        if (solutions % solutionsPerQuestion == 0 && !UserWantsToGoOn()) return false;
        if (!BuildSolution()) return false;
    }
    return true;
}

// Takes back what the check's solution wrote beside the givens.
void EngineRun::KeepGivensOnly() {
    for (int row = 1; row <= 9; ++row)
        for (int col = 1; col <= 9; ++col)
            if (clsXlCellClass& cell = puzzle_.Cells(row, col); !cell.Locked) cell.Value.clear();
}

void EngineRun::ChooseGivens() {
    std::optional<GivenPairs> pairs;
    while (!pairs) pairs = DrawPairs(ReadLevel());

    for (int cell = 1; cell <= 81; ++cell) {
        const int row = RowOf(cell);
        const int col = ColOf(cell);
        const std::string& text = working_.Cells(row, col).Value;
        const bool given = pairs->Has(BoxOf(cell), Conversions::ToInteger(text));
        clsXlCellClass& target = puzzle_.Cells(row, col);
        target.Font.Bold = target.Locked = given;
        target.Value = given ? text : std::string();
    }
}

}  // namespace Global
