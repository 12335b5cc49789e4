// SPDX-License-Identifier: MIT
#include <cassert>
#include <chrono>
#include <optional>
#include <string>

#include "engine/Board.h"
#include "engine/CellText.h"
#include "engine/EngineRun.h"
#include "engine/Global.h"
#include "engine/RangeClass.h"
#include "engine/Tables.h"
#include "platform/Host.h"
#include "settings/Conversions.h"
#include "settings/HelpContexts.h"
#include "settings/Settings.h"

namespace {

bool runActive = false;

bool IsGiven(const clsXlCellClass& cell) {
    return !cell.Value.empty() && cell.Font.Bold;
}

bool ReportDuplicate(int cell) {
    const int value = Global::TableEntry(cell, 0);
    platform::TheHost().messages->Show("Duplicate entry of Value " + std::to_string(value) + " in Row " +
                                           std::to_string(Global::RowOf(cell)) + ", Column " +
                                           std::to_string(Global::ColOf(cell)),
                                       platform::MessageStyle::Exclamation);
    return false;
}

// The first allowed candidate in a random order, 0 if there is none.
int DrawGuess(const Global::Board& board, int cell) {
    const Global::CandidateList shuffled = Global::ShuffleCandidates(board, cell);
    for (int n = 0; n < shuffled.count; ++n) {
        const int digit = shuffled.digits[static_cast<std::size_t>(n)];
        if (board.GuessAllowed(cell, digit)) return digit;
    }
    return 0;
}

// True: the grid is full, or the time is up. False: a dead end.
bool Attempt(Global::Board& board) {
    const platform::Host& host = platform::TheHost();
    const auto deadline = host.clock->Now() + std::chrono::minutes(1);
    while (true) {
        host.events->Yield();
        if (!board.FillSingles()) return false;
        if (board.Full()) return true;
        if (host.clock->Now() > deadline) return true;
        const int cell = Global::ChooseGuessCell(board);
        if (const int digit = DrawGuess(board, cell); digit != 0)
            board.FillAndExclude(cell, digit);
        else if (!board.AnyGuessAllowed())
            return false;  // another draw among the tied cells would change nothing
    }
}

}  // namespace

namespace Global {

EngineRun::EngineRun(RangeClass& puzzle, RangeClass& working, platform::ProgressWindow* progress)
    : puzzle_(puzzle), working_(working), progress_(progress) {
    assert(!runActive);
    runActive = true;
}

EngineRun::~EngineRun() {
    runActive = false;
}

EngineRun::Ending EngineRun::SolveDigits(const Digits& givens, int limit) {
    return Search(limit, [&givens] {
        for (int cell = 1; cell <= 81; ++cell)
            if (givens[cell] != 0) PlaceDigit(cell, givens[cell]);
    });
}

bool EngineRun::SolveFromRanges() {
    LoadRangesFromPuzzle();
    const Ending ending = Search(AttemptLimit(), [this] { LoadGivens(); });
    if (ending == Ending::Ended) {
        WriteDigits();
        CopyWorkingToPuzzle();
    }
    return ending != Ending::Declined;
}

EngineRun::Ending EngineRun::Search(int limit, const std::function<void()>& loadGivens) {
    cancelRequested_ = false;
    std::optional<Board> start;  // what every attempt starts from
    for (int counter = 1;; ++counter) {
        ShowProgress(counter - 1, limit);
        if (cancelRequested_) return Ending::Cancelled;
        if (counter > limit) {
            if (!UserWantsToGoOn()) return Ending::Declined;
            counter = 1;
        }
        Reseed();
        // Only now: a run that is cancelled at once tells nothing about its givens.
        if (!start) {
            ResetTable();
            loadGivens();
            if (!TestGivens()) return Ending::Clash;
            start = TableAsBoard();
            start->ExcludeHolders();
            start->FillSingles();  // a contradiction shows again in each attempt
        }
        Board board = *start;
        if (Attempt(board)) {
            StoreBoard(board);
            return Ending::Ended;
        }
    }
}

void EngineRun::LoadRangesFromPuzzle() {
    for (int row = 1; row <= 9; ++row)
        for (int col = 1; col <= 9; ++col) {
            clsXlCellClass& from = puzzle_.Cells(row, col);
            clsXlCellClass& to = working_.Cells(row, col);
            from.Font.Bold = to.Font.Bold = !from.Value.empty();
            to.Locked = false;
            to.Value = from.Value;
        }
}

void EngineRun::ShowProgress(int counter, int limit) {
    if (!progress_) return;
    // A negative setting leaves a limit without a share to show.
    progress_->Progress(limit > 0 ? 100.0 * counter / limit : 0.0);
    NoticeCancel();
}

void EngineRun::NoticeCancel() {
    if (progress_ && !progress_->IsVisible()) cancelRequested_ = true;
}

bool EngineRun::UserWantsToGoOn() {
    return platform::TheHost().messages->Show(
               "Cette grille demande un certain temps pour être résolue. Voulez-vous continuer ?\r\r"
               "Pour plus d'informations, voir le menu Édition/Préférences, onglet Niveau\r"
               "et l'aide associée (appuyez sur F1 lorsque la boite de dialogue est affichée).",
               platform::MessageStyle::Exclamation + platform::MessageStyle::YesNo,
               HelpContext::Niveau) == platform::MessageButton::Yes;
}

int EngineRun::AttemptLimit() {
    return Conversions::RoundToInteger((Settings::Read(Settings::ResolLoop) + 1) * 20);
}

bool TestGivens() {
    if (!TableAsBoard().HasClash()) return true;
    for (int cell = 1; cell <= 81; ++cell) {
        const int digit = TableEntry(cell, 0);
        if (digit > 0 && IsDuplicate(cell, digit)) return ReportDuplicate(cell);
    }
    for (int box = 1; box <= 9; ++box)
        for (int position = 1; position <= 9; ++position) {
            const int cell = BoxCellIndex(box, position);
            const int digit = TableEntry(cell, 0);
            if (digit == 0) continue;
            int count = 0;
            for (int other = 1; other <= 9; ++other)
                if (TableEntry(BoxCellIndex(box, other), 0) == digit) ++count;
            if (count > 1) return ReportDuplicate(cell);
        }
    return true;
}

bool EngineRun::SolveAttempt() {
    Board board = TableAsBoard();
    board.ExcludeHolders();
    const bool ended = Attempt(board);
    StoreBoard(board);
    return ended;
}

void EngineRun::LoadGivens() {
    for (int cell = 1; cell <= 81; ++cell) {
        const clsXlCellClass& from = working_.Cells(RowOf(cell), ColOf(cell));
        if (IsGiven(from)) PlaceDigit(cell, IntegerOf(from.Value));
    }
}

void EngineRun::WriteDigits() {
    for (int cell = 1; cell <= 81; ++cell)
        if (const int digit = TableEntry(cell, 0); digit != 0)
            WriteInteger(working_.Cells(RowOf(cell), ColOf(cell)).Value, digit);
}

void EngineRun::CopyWorkingToPuzzle() {
    for (int row = 1; row <= 9; ++row)
        for (int col = 1; col <= 9; ++col) puzzle_.Cells(row, col).Value = working_.Cells(row, col).Value;
}

void EngineRun::ClearRanges() {
    ClearRange(puzzle_);
    ClearRange(working_);
}

void ClearRange(RangeClass& range) {
    RangeClass().Copy(range);
}

}  // namespace Global
