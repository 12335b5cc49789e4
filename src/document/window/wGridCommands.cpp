// SPDX-License-Identifier: MIT

// What the grid window asks its user about, and what it has the engine, files and the printer do.

#include "diagnostics/ErrorHandling.h"
#include "document/window/BusyGuard.h"
#include "document/window/MainFrame.h"
#include "document/window/OpenGrid.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "platform/Host.h"
#include "platform/qt/QtHost.h"
#include "printing/PagePainter.h"
#include "printing/Printing.h"
#include "settings/FilesPaths.h"
#include "settings/Settings.h"

using platform::MessageButton;
using platform::TheHost;
namespace MessageStyle = platform::MessageStyle;

bool wGrid::SaveFile(const QString& file) {
    if (file.isEmpty()) return false;
    return Trap("wGrid", "SaveFile", [&] {
        if (!document_->SaveFile(platform_qt::PathToBytes(file))) throw RuntimeError(ErrorNumber::FileAccess);
        return true;
    });
}

bool wGrid::SaveOwnFile() {
    return Trap("wGrid", "SaveFile", [this] {
        if (document_->FileChanged()) {
            const OpenGrid self(this);
            const auto answer = TheHost().messages->Show(
                "Le fichier \"" + document_->Path() +
                    "\" a été modifié par un autre programme.\r\nVoulez-vous l'écraser ?",
                MessageStyle::Exclamation + MessageStyle::OkCancel + MessageStyle::SecondDefault);
            if (answer != MessageButton::Ok || !self) return false;
        }
        return SaveFile(Path());
    });
}

void wGrid::SolveGrid() {
    Trap("wGrid", "SolveGrid", [this] {
        if (RefusedWhileBusy()) return;
        {
            BusyGuard run(this);
            TheHost().pointer->Shape(platform::PointerShape::Hourglass);
            document_->SolveGrid(&run.Progress());
        }
        ShowCells();
    });
}

std::int16_t wGrid::TestGrid() {
    return Trap("wGrid", "TestGrid", [this]() -> std::int16_t {
        if (RefusedWhileBusy()) return 0;
        if (!document_->SolutionKnown()) {
            BusyGuard run(this);
            TheHost().pointer->Shape(platform::PointerShape::Hourglass);
            document_->FindSolution(&run.Progress());
        }
        return document_->WrongValues();
    });
}

void wGrid::Reinit() {
    Trap("wGrid", "Reinit", [this] {
        const OpenGrid self(this);
        const auto answer = TheHost().messages->Show(
            "Attention, vous allez rétablir cette grille à son état initial.\r\nÊtes-vous sûr ?",
            MessageStyle::Exclamation + MessageStyle::OkCancel + MessageStyle::SecondDefault);
        if (answer != MessageButton::Ok || !self) return;
        document_->Reinit();
        ShowCells();
    });
}

void wGrid::Undo() {
    Trap("wGrid", "Undo", [this] {
        if (!qobject_cast<ctrlCell*>(focusWidget())) return TheHost().messages->Beep();
        StepInHistory(document_->CanUndo(), &GridDocument::Undo, "Rien à annuler");
    });
}

void wGrid::Redo() {
    Trap("wGrid", "Redo",
         [this] { StepInHistory(document_->CanRedo(), &GridDocument::Redo, "Rien à rétablir"); });
}

// Takes the step and selects the cell that it changed; of several the current one stays what it is.
void wGrid::StepInHistory(bool possible, int (GridDocument::*step)(), const char* refusal) {
    if (!possible) {
        TheHost().messages->Show(refusal, MessageStyle::Information);
        return;
    }
    const int changed = ((*document_).*step)();
    ShowCells();
    if (changed != 0) ctrlCells(changed).DoSelect();
}

void wGrid::PrintGrid() {
    Trap("wGrid", "PrintGrid", [this] {
        PrintedGrid page;
        page.caption = Caption();
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            PrintedCell& printed = page.cells[i];
            printed.value = cells_[i]->Value();
            printed.locked = cells_[i]->Locked();
            for (int d = 1; d <= 9; ++d)
                printed.candidates.set(static_cast<std::size_t>(d), cells_[i]->Mask(d));
        }
        Printing::PrintGrid(page);
    });
}

bool wGrid::AskBeforeUnload() {
    if (discarded_ || closed_) return true;
    // After a failure the window stays: what it holds may exist nowhere else.
    return Trap("wGrid", "Form_QueryUnload", [this] { return Form_QueryUnload(); });
}

bool wGrid::Form_QueryUnload() {
    if (!document_->Modified()) return true;
    const OpenGrid self(this);
    const auto answer = TheHost().messages->Show(
        "La grille " + document_->Caption() + " a été modifiée.\r\nVoulez-vous la sauvegarder ?",
        MessageStyle::Exclamation + MessageStyle::YesNoCancel + MessageStyle::ThirdDefault);
    if (!self) return false;
    if (answer == MessageButton::Yes) return SaveOnUnload();
    return answer == MessageButton::No;
}

bool wGrid::SaveOnUnload() {
    if (!document_->Path().empty()) return SaveOwnFile();
    const OpenGrid self(this);
    const std::string file =
        FilesPaths::AskSaveFile(Settings::Read(Settings::LastOpened), document_->Caption());
    if (file.empty() || !self || !SaveFile(platform_qt::PathFromBytes(file))) return false;
    Path(platform_qt::PathFromBytes(file));
    return true;
}
