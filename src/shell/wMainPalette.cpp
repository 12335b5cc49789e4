// SPDX-License-Identifier: MIT

// The palette's commands: what the keyboard enters goes the same way.

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "engine/clsCell.h"
#include "platform/Host.h"
#include "platform/qt/Announce.h"
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
    statePanel_->Show(text);
    ShowTabs();
}

void wMain::ShowStanding() {
    const QString before = statePanel_->text();
    ShowState();
    // At every entry the number of empty cells would be said beside it.
    const QString now = statePanel_->text();
    if (now != before && !now.contains(QLatin1String("vides"))) platform_qt::Announce(now);
}

void wMain::cmdValue_Click(int index) {
    Trap("wMain", "cmdValue_Click", [&] {
        const ctrlCell* cell = Cell();
        if (!cell) return Refuse(index);
        wGrid& grid = *cell->ParentGrid();
        GridDocument& document = grid.Document();
        const bool finished = document.Standing().Finished();
        const EntryModes modes{InitialisationMode(), MasksHidden()};
        if (!document.EnterValue(cell->mCell()->GridIndex(), index, modes)) return Refuse(index);
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
        if (!cell) return Refuse(index);
        wGrid& grid = *cell->ParentGrid();
        grid.Document().SwitchExclusion(cell->mCell()->GridIndex(), index);
        grid.ShowCells();
        if (index == 0) return platform_qt::Announce(QStringLiteral("Tous les chiffres réadmis"));
        platform_qt::Announce(
            (cell->mCell()->Inhib(index) ? QStringLiteral("%1 exclu") : QStringLiteral("%1 réadmis"))
                .arg(index));
    });
}

void wMain::ToggleCandidate(int digit) {
    Trap("wMain", "ToggleCandidate", [&] {
        if (digit != 0 && !palette_->cmdMask(digit).isEnabled()) return Refuse(digit);
        cmdMask_Click(digit);
    });
}

void wMain::Refuse(int digit) const {
    platform::TheHost().messages->Beep();
    const ctrlCell* cell = Cell();
    if (!cell) return;
    cell->ParentGrid()->FlashRefusal();
    QString reason = QStringLiteral("%1 impossible ici").arg(digit);
    if (cell->Locked() && !InitialisationMode()) {
        reason = QStringLiteral("Case donnée");
    } else if (cell->mCell()->Inhib(digit)) {
        reason = QStringLiteral("%1 exclu").arg(digit);
    }
    platform_qt::Announce(reason);
}
