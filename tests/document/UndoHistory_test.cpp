// SPDX-License-Identifier: MIT
#include "document/UndoHistory.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <random>

namespace {

// One step of one or two changes that no other step has.
std::vector<CellChange> NewStep(int number) {
    return std::vector<CellChange>(1 + number % 2, CellChange{number, {}, {}});
}

// Steps in a plain list; of the history itself only what it says.
TEST(UndoHistory, EqualsAPlainListHoweverLongAndCopiesStayAsTheyWere) {
    std::mt19937 random(5);
    UndoHistory history, copy;
    std::vector<int> steps, copied;
    std::size_t position = 0;
    const auto expectSame = [](const UndoHistory& found, const std::vector<int>& wanted) {
        ASSERT_EQ(found.Size(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            ASSERT_EQ(found.Step(i).size(), NewStep(wanted[i]).size()) << i;
            ASSERT_EQ(found.Step(i).back().index, wanted[i]) << i;
        }
    };
    for (int number = 1; number <= 200; ++number) {
        for (auto back = random() % 700; back > 0 && position > 0; --back) {
            ASSERT_EQ(history.StepBack().front().index, steps[--position]);
        }
        for (auto on = random() % 300; on > 0 && position < steps.size(); --on) {
            ASSERT_EQ(history.StepForward().front().index, steps[position++]);
        }
        if (number % 20 == 0) copy = history, copied = steps;
        for (auto more = random() % 800; more > 0; --more) {
            steps.resize(position);
            steps.push_back(number * 1000 + int(more));
            history.Register(NewStep(steps.back()));
            ++position;
        }
        ASSERT_EQ(history.CanUndo(), position > 0);
        ASSERT_EQ(history.CanRedo(), position < steps.size());
        if (number % 10 == 0) expectSame(history, steps), expectSame(copy, copied);
    }
    EXPECT_GT(steps.size(), 2000);
}

// What is kept is a copy, made between two keys.
TEST(UndoHistory, ACopyCostsNothingHoweverLong) {
    UndoHistory history;
    for (int number = 0; number < 100'000; ++number) history.Register(NewStep(number));
    auto best = std::chrono::steady_clock::duration::max();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const auto start = std::chrono::steady_clock::now();
        const UndoHistory copy = history;
        best = std::min(best, std::chrono::steady_clock::now() - start);
    }
    EXPECT_LT(best, std::chrono::microseconds(500));
}

}  // namespace
