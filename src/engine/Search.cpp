#include <cassert>
#include <chrono>
#include <string>

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

void ExcludeGivens() {
    for (int cell = 1; cell <= 81; ++cell)
        if (const int digit = Global::TableEntry(cell, 0); digit != 0) Global::PlaceAndExclude(cell, digit);
}

// The first allowed candidate in a random order, 0 if there is none.
int DrawGuess(int cell) {
    const Global::CandidateList shuffled = Global::ShuffleCandidates(cell);
    for (int n = 0; n < shuffled.count; ++n) {
        const int digit = shuffled.digits[static_cast<std::size_t>(n)];
        if (Global::GuessAllowed(cell, digit)) return digit;
    }
    return 0;
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

bool EngineRun::SolveFromRanges() {
    LoadRangesFromPuzzle();
    cancelRequested_ = false;
    const int limit = AttemptLimit();
    int counter = 0;
    while (true) {
        ShowProgress(counter, limit);
        if (cancelRequested_) return true;
        if (++counter > limit) {
            if (!UserWantsToGoOn()) return false;
            counter = 1;
        }
        ResetTable();
        Reseed();
        LoadGivens();
        if (!TestGivens()) return true;
        if (SolveAttempt()) {
            WriteDigits();
            CopyWorkingToPuzzle();
            return true;
        }
    }
}

void EngineRun::LoadRangesFromPuzzle() {
    ClearRange(working_);
    for (int row = 1; row <= 9; ++row)
        for (int col = 1; col <= 9; ++col) {
            clsXlCellClass& from = puzzle_.Cells(row, col);
            clsXlCellClass& to = working_.Cells(row, col);
            from.Font.Bold = to.Font.Bold = !from.Value.empty();
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
    ExcludeGivens();
    const platform::Host& host = platform::TheHost();
    const auto deadline = host.clock->Now() + std::chrono::minutes(1);
    while (HasEmptyCell()) {
        host.events->Yield();
        if (host.clock->Now() > deadline || cancelRequested_) return true;
        int digit = 0;
        int cell = FindSingle(digit);
        if (cell == 0) {
            cell = ChooseGuessCell();
            if (cell == 0) return false;
            digit = DrawGuess(cell);
            if (digit == 0) {
                // Another tied cell may still move; if none can, waiting for the deadline changes nothing.
                if (!AnyGuessAllowed()) return true;
                continue;
            }
        }
        PlaceAndExclude(cell, digit);
    }
    return true;
}

void EngineRun::LoadGivens() {
    for (int cell = 1; cell <= 81; ++cell) {
        const clsXlCellClass& from = working_.Cells(RowOf(cell), ColOf(cell));
        if (IsGiven(from)) PlaceDigit(cell, Conversions::ToInteger(from.Value));
    }
}

void EngineRun::WriteDigits() {
    for (int cell = 1; cell <= 81; ++cell)
        if (const int digit = TableEntry(cell, 0); digit != 0)
            working_.Cells(RowOf(cell), ColOf(cell)).Value = std::to_string(digit);
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
