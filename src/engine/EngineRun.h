// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

#include "engine/Geometry.h"
#include "platform/ProgressWindow.h"

class RangeClass;

namespace Global {

// By cell 1..81; 0 for none.
using Digits = EngineArray<std::uint8_t, 82>;

// One solve or generation, on the user-interface thread. The ranges and the progress window are borrowed for
// the run's lifetime. The tables are the module's: there is one run at a time. Nothing here traps errors.
class EngineRun {
  public:
    // Without a progress window (null) the run cannot be cancelled.
    EngineRun(RangeClass& puzzle, RangeClass& working, platform::ProgressWindow* progress = nullptr);
    ~EngineRun();
    EngineRun(const EngineRun&) = delete;
    EngineRun& operator=(const EngineRun&) = delete;

    // ---- Search.

    enum class Ending { Ended, Cancelled, Declined, Clash };
    // Attempts from the givens until one ends; its grid is then in the table, full unless it was stopped. The
    // user is asked to go on after each `limit` attempts.
    Ending SolveDigits(const Digits& givens, int limit);
    // The same from the texts of the puzzle range, to the working range and back. False only when the user
    // declined to go on. After a cancel or a clash of the givens, the working range holds these alone; after
    // the time limit a part of the grid.
    bool SolveFromRanges();
    // Attempts between two questions, by the settings.
    static int AttemptLimit();
    // One attempt on the table as loaded, without taking guesses back. True: the grid is full, or the attempt
    // was stopped by the time limit and is incomplete. False: a dead end, since a contradiction showed or
    // no guess can be made any more.
    bool SolveAttempt();
    void LoadGivens();
    void CopyWorkingToPuzzle();
    void ClearRanges();

    // The progress window was found hidden, between two attempts. Each search and generation starts without.
    bool CancelRequested() const { return cancelRequested_; }

    // ---- Generator.

    // Fills the working range with a full solution and the puzzle range with the givens, locked and bold.
    // True: accepted or cancelled; false: the user declined to go on.
    bool CreateGrid();
    bool MakePuzzle();
    void ChooseGivens();

  private:
    // `loadGivens` puts the givens into the reset table.
    Ending Search(int limit, const std::function<void()>& loadGivens);
    void LoadRangesFromPuzzle();
    void ShowProgress(int counter, int limit);
    void NoticeCancel();
    static bool UserWantsToGoOn();
    // The placed digits as texts into the working range; cells that are still empty keep their text.
    void WriteDigits();
    // False: the user declined to go on. There is no solution after a cancel either.
    bool BuildSolution();
    void WriteGivens(const Digits& givens);

    RangeClass& puzzle_;
    RangeClass& working_;
    platform::ProgressWindow* progress_;
    bool cancelRequested_ = false;
};

void ClearRange(RangeClass& range);

}  // namespace Global
