#pragma once

#include "platform/ProgressWindow.h"

class RangeClass;

namespace Global {

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

    // Attempts from the givens (texts of the puzzle range) until one ends. False only when the user declined
    // to go on; true when solved, cancelled, or when the givens clash. Unless solved, the working range holds
    // the givens only.
    bool SolveFromRanges();
    // One attempt on the table as loaded, without taking guesses back. True: the grid is full, or the attempt
    // was stopped (time limit, cancel, no guess can ever be made) and may be incomplete. False: dead end.
    bool SolveAttempt();
    void LoadGivens();
    void CopyWorkingToPuzzle();
    void ClearRanges();

    // A pass found the progress window hidden. Each SolveFromRanges and CreateGrid starts without.
    bool CancelRequested() const { return cancelRequested_; }

    // ---- Generator.

    // Fills the working range with a full solution and the puzzle range with the givens, locked and bold.
    // True: accepted or cancelled; false: the user declined to go on.
    bool CreateGrid();
    bool MakePuzzle();
    void ChooseGivens();

  private:
    void LoadRangesFromPuzzle();
    void ShowProgress(int counter, int limit);
    void NoticeCancel();
    // Attempts between two questions.
    static int AttemptLimit();
    static bool UserWantsToGoOn();
    // The placed digits as texts into the working range; cells that are still empty keep their text.
    void WriteDigits();
    // False: the user declined to go on. There is no solution after a cancel either.
    bool BuildSolution();
    void KeepGivensOnly();

    RangeClass& puzzle_;
    RangeClass& working_;
    platform::ProgressWindow* progress_;
    bool cancelRequested_ = false;
};

void ClearRange(RangeClass& range);

}  // namespace Global
