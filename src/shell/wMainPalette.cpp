// The palette's commands: what the keyboard enters goes the same way.

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "engine/clsCell.h"
#include "platform/Host.h"
#include "shell/Palette.h"
#include "shell/StatusPanel.h"
#include "shell/wMain.h"

// A cell of a grid that was closed is none any more.
ctrlCell* wMain::Cell() const {
    return cell_ && !cell_->ParentGrid()->Closed() ? cell_.data() : nullptr;
}

void wMain::Cell(ctrlCell* cell) {
    cell_ = cell;
    UpdateColors();
}

void wMain::UpdateColors() {
    Trap("wMain", "UpdateColors", [this] {
        ShowState();
        const ctrlCell* view = Cell();
        const bool hidden = MasksHidden();
        for (int i = 1; i <= 9; ++i) {
            PaletteButton& value = palette_->cmdValue(i);
            PaletteButton& mask = palette_->cmdMask(i);
            if (!view || hidden) {
                value.State(DigitState::Neutral);
                value.setEnabled(view != nullptr);
                mask.State(DigitState::Neutral);
                mask.setEnabled(false);
                continue;
            }
            const clsCell& cell = *view->mCell();
            DigitState state = cell.Inhib(i) ? DigitState::Excluded : DigitState::Allowed;
            if (!cell.Avail(i) || cell.Locked()) state = DigitState::Neutral;
            mask.State(state);
            mask.setEnabled(cell.Avail(i));
            value.State(cell.Value() == i ? DigitState::Allowed : DigitState::Neutral);
            // The mask column alone says which values can be entered.
            value.setEnabled(state == DigitState::Allowed);
        }
        palette_->PlaceTabStops(view != nullptr);
    });
}

void wMain::ShowState() {
    QString text;
    if (const OpenGrid grid = ActiveGrid()) {
        const GridStanding standing = grid->Document().Standing();
        if (!standing.Complete()) {
            text = QStringLiteral("Cases vides : %1").arg(standing.emptyCells);
        } else {
            text = standing.digitsRepeat ? QStringLiteral("Grille complète : des chiffres se répètent")
                                         : QStringLiteral("Grille complète");
        }
    }
    if (text != statePanel_->text()) statePanel_->setText(text);
    ShowTabs();
}

void wMain::cmdValue_Click(int index) {
    Trap("wMain", "cmdValue_Click", [&] {
        const ctrlCell* cell = Cell();
        if (!cell) return Refuse();
        wGrid& grid = *cell->ParentGrid();
        GridDocument& document = grid.Document();
        const bool finished = document.Standing().Finished();
        const EntryModes modes{InitialisationMode(), MasksHidden()};
        if (!document.EnterValue(cell->mCell()->GridIndex(), index, modes)) return Refuse();
        grid.ShowCells();
        grid.SetFocus();
        if (finished || modes.initialisation || !document.Standing().Finished()) return;
        platform::TheHost().messages->Show("Bravo, la grille est terminée.",
                                           platform::MessageStyle::Information);
    });
}

void wMain::cmdMask_Click(int index) {
    Trap("wMain", "cmdMask_Click", [&] {
        const ctrlCell* cell = Cell();
        if (!cell) return Refuse();
        wGrid& grid = *cell->ParentGrid();
        grid.Document().SwitchExclusion(cell->mCell()->GridIndex(), index);
        grid.ShowCells();
    });
}

void wMain::ToggleCandidate(int digit) {
    Trap("wMain", "ToggleCandidate", [&] {
        if (digit != 0 && !palette_->cmdMask(digit).isEnabled()) return Refuse();
        cmdMask_Click(digit);
    });
}

void wMain::Refuse() const {
    platform::TheHost().messages->Beep();
    if (const ctrlCell* cell = Cell()) cell->ParentGrid()->FlashRefusal();
}
