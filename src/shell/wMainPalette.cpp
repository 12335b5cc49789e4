// The palette's commands: what the keyboard enters goes the same way.

#include "diagnostics/ErrorHandling.h"
#include "document/CellState.h"
#include "document/ctrlCell.h"
#include "document/wGrid.h"
#include "engine/clsCell.h"
#include "platform/Host.h"
#include "shell/Palette.h"
#include "shell/wMain.h"

ctrlCell* wMain::Cell() const {
    return cell_;
}

void wMain::Cell(ctrlCell* cell) {
    cell_ = cell;
    UpdateColors();
}

void wMain::UpdateColors() {
    Trap("wMain", "UpdateColors", [this] {
        const bool hidden = MasksHidden();
        for (int i = 1; i <= 9; ++i) {
            PaletteButton& value = palette_->cmdValue(i);
            PaletteButton& mask = palette_->cmdMask(i);
            if (!cell_ || hidden) {
                value.State(DigitState::Neutral);
                value.setEnabled(cell_ != nullptr);
                mask.State(DigitState::Neutral);
                mask.setEnabled(false);
                continue;
            }
            const clsCell& cell = *cell_->mCell();
            DigitState state = cell.Inhib(i) ? DigitState::Excluded : DigitState::Allowed;
            if (!cell.Avail(i) || cell.Locked()) state = DigitState::Neutral;
            mask.State(state);
            mask.setEnabled(cell.Avail(i));
            value.State(cell.Value() == i ? DigitState::Allowed : DigitState::Neutral);
            // The mask column alone says which values can be entered.
            value.setEnabled(state == DigitState::Allowed);
        }
    });
}

void wMain::cmdValue_Click(int index) {
    Trap("wMain", "cmdValue_Click", [&] {
        platform::MessageBoxes& messages = *platform::TheHost().messages;
        if (!cell_) return messages.Beep();
        const bool initialisation = InitialisationMode();
        if (cell_->Locked() && !initialisation) return messages.Beep();
        clsCell& cell = *cell_->mCell();
        const bool refused = index >= 1 && !MasksHidden() && (!cell.Avail(index) || cell.Inhib(index));
        if (refused) return messages.Beep();

        const std::string before = CellStateText(cell);
        cell_->Value(static_cast<std::uint8_t>(index));
        cell_->Locked(initialisation && index != 0);
        wGrid& grid = *cell_->ParentGrid();
        grid.UpdateGrid();
        grid.RegUndo(before + "|" + CellStateText(cell));
        grid.SetFocus();
    });
}

void wMain::cmdMask_Click(int index) {
    Trap("wMain", "cmdMask_Click", [&] {
        if (!cell_) return platform::TheHost().messages->Beep();
        clsCell& cell = *cell_->mCell();
        const std::string before = CellStateText(cell);
        if (index == 0) {
            ApplyExclusionMask(cell, 0);
        } else {
            cell.Inhib(index, !cell.Inhib(index));
        }
        cell_->ParentGrid()->RegUndo(before + "|" + CellStateText(cell));
        cell_->ManageMasks();
        UpdateColors();
    });
}
