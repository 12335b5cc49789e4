// SPDX-License-Identifier: MIT

// The commands of the menus File (grids), Edit, Grid and Help.

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>
#include <memory>
#include <string>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"
#include "document/window/BusyGuard.h"
#include "document/window/wGrid.h"
#include "platform/Host.h"
#include "settings/ColorTable.h"
#include "settings/Settings.h"
#include "settings/dialogs/wLevel.h"
#include "settings/dialogs/wOptions.h"
#include "shell/WithActiveGrid.h"
#include "shell/wMain.h"
#include "shell/wSplash.h"

namespace {

using platform::PointerShape;
using platform::TheHost;
using platform::MessageStyle::Exclamation;
using platform::MessageStyle::Information;
using platform::MessageStyle::OkCancel;
using platform::MessageStyle::SecondDefault;
using platform::MessageStyle::Stop;

bool AskLevel(QWidget* owner) {
    if (Settings::Read(Settings::LevelAsk)) return true;
    wLevel level(owner);
    level.exec();
    return level.Accepted();
}

// "base *(*)", the base taken literally.
bool IsCopyOf(const std::string& caption, const std::string& base) {
    return caption.starts_with(base + " ") && caption.ends_with(")") &&
           caption.find('(', base.size() + 1) != std::string::npos;
}

}  // namespace

std::string wMain::NextCaption() {
    return "Grille" + std::to_string(++gridCounter_);
}

void wMain::mnuFileNew_Click() {
    Trap("wMain", "mnuFileNew_Click", [this] {
        if (!RefusedWhileBusy()) ShowNewGrid(std::make_unique<GridDocument>());
    });
}

void wMain::ShowNewGrid(std::unique_ptr<GridDocument> document) {
    TheHost().pointer->Shape(PointerShape::Hourglass);
    document->Caption(NextCaption());
    if (!InitialisationMode()) mnuGridConfig_Click();
    ShowDocumentWindow(std::move(document));
    TheHost().pointer->Shape(PointerShape::Default);
}

// The grid is made before any window is: a run that comes to nothing disturbs none.
void wMain::mnuFileCreate_Click() {
    Trap("wMain", "mnuFileCreate_Click", [this] {
        if (RefusedWhileBusy() || !AskLevel(this)) return;
        auto document = std::make_unique<GridDocument>();
        TheHost().pointer->Shape(PointerShape::ArrowAndHourglass);
        bool kept = false;
        {
            BusyGuard run(this);
            const bool created = document->CreateGrid(&run.Progress());
            kept = created && run.StillVisible();
            if (created && !kept) {
                TheHost().messages->Show("Le temps de création est dépassé.\rTentez une nouvelle génération.",
                                         Stop);
            }
        }
        if (kept) {
            document->Caption(NextCaption());
            ShowDocumentWindow(std::move(document));
        }
        TheHost().pointer->Shape(PointerShape::Default);
        if (InitialisationMode()) mnuGridConfig_Click();
    });
}

void wMain::mnuFileClose_Click() {
    Trap("wMain", "mnuFileClose_Click", [this] {
        if (RefusedWhileBusy()) return;
        if (const OpenGrid grid = ActiveGrid()) grid->parentWidget()->close();
    });
}

void wMain::mnuFilePrint_Click() {
    WithActiveGrid("mnuFilePrint_Click", [](const OpenGrid& grid) { grid->PrintGrid(); });
}

void wMain::mnuFileQuit_Click() {
    Trap("wMain", "mnuFileQuit_Click", [this] { close(); });
}

void wMain::mnuEditUndo_Click() {
    WithActiveGrid("mnuEditUndo_Click", [](const OpenGrid& grid) { grid->Undo(); });
}

void wMain::mnuEditRedo_Click() {
    WithActiveGrid("mnuEditRedo_Click", [](const OpenGrid& grid) { grid->Redo(); });
}

void wMain::mnuEditCopy_Click() {
    WithActiveGrid("mnuEditCopy_Click", [](const OpenGrid& grid) {
        const std::string text = GridText::Write(grid->Document().Values());
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    });
}

void wMain::mnuEditPaste_Click() {
    Trap("wMain", "mnuEditPaste_Click", [this] { PasteGrid(QGuiApplication::clipboard()->text()); });
}

void wMain::PasteGrid(const QString& text) {
    if (RefusedWhileBusy()) return;
    const auto givens = GridText::Read(text.toStdString());
    if (!givens) return TheHost().messages->Beep();
    auto document = std::make_unique<GridDocument>();
    document->Become(*givens);
    ShowNewGrid(std::move(document));
}

void wMain::mnuEditOptions_Click() {
    Trap("wMain", "mnuEditOptions_Click", [this] {
        if (RefusedWhileBusy()) return;
        wOptions options(this);
        connect(&options, &wOptions::ColorsChanged, this, &wMain::Recolor);
        options.exec();
    });
}

void wMain::Recolor() {
    for (const OpenGrid& grid : Grids()) grid->SetColors(ColorTable::Shared());
}

void wMain::mnuGridConfig_Click() {
    Trap("wMain", "mnuGridConfig_Click", [this] { Switch(Mode::Initialisation); });
}

void wMain::mnuGridHelpNone_Click() {
    Trap("wMain", "mnuGridHelpNone_Click", [this] { Switch(Mode::MasksHidden); });
}

void wMain::MasksHiddenChanged() {
    Trap("wMain", "mnuGridHelpNone_Click", [this] {
        for (const OpenGrid& grid : Grids()) grid->UpdateGrid();
        UpdateColors();
        Settings::Write(Settings::GridHelpNone, MasksHidden());
    });
}

void wMain::mnuGridNoAutoMasks_Click() {
    Trap("wMain", "mnuGridNoAutoMasks_Click", [this] { Switch(Mode::ManualMasks); });
}

void wMain::ManualMasksChanged() {
    Trap("wMain", "mnuGridNoAutoMasks_Click", [this] {
        for (const OpenGrid& grid : Grids()) grid->NoAutoMask(ManualMasks());
        Settings::Write(Settings::NoAutoMasks, ManualMasks());
    });
}

// "base (n)", n one more than there are captions of the form "base *(*)".
std::string wMain::CopyCaption(const std::string& caption) const {
    const std::string base = caption.substr(0, caption.rfind(" ("));
    int number = 1;
    for (const OpenGrid& grid : Grids()) {
        if (IsCopyOf(grid->Document().Caption(), base)) ++number;
    }
    return base + " (" + std::to_string(number) + ")";
}

void wMain::mnGridCopy_Click() {
    WithActiveGrid("mnGridCopy_Click", [this](const OpenGrid& source) {
        TheHost().pointer->Shape(PointerShape::Hourglass);
        auto copy = std::make_unique<GridDocument>();
        copy->CopyFrom(source->Document());
        copy->Caption(CopyCaption(source->Document().Caption()));
        ShowDocumentWindow(std::move(copy));
        TheHost().pointer->Shape(PointerShape::Default);
    });
}

void wMain::mnuGridReinit_Click() {
    WithActiveGrid("mnuGridReinit_Click", [](const OpenGrid& grid) { grid->Reinit(); });
}

void wMain::mnuHelpAsk_Click() {
    WithActiveGrid("mnuHelpAsk_Click", [](const OpenGrid& grid) {
        const int wrong = grid->TestGrid();
        if (wrong == -1) {
            TheHost().messages->Show("Désolé, la grille n'a pas pu être résolue par l'application.",
                                     Exclamation);
        } else if (wrong == 0) {
            TheHost().messages->Show("Il n'y a aucune erreur.", Information);
        } else {
            TheHost().messages->Show(
                "Il y a " + std::to_string(wrong) + " erreur" + (wrong > 1 ? "s" : "") + ".", Exclamation);
        }
    });
}

void wMain::mnuHelpSolve_Click() {
    WithActiveGrid("mnuHelpSolve_Click", [](const OpenGrid& grid) {
        const auto answer =
            TheHost().messages->Show("Attention, vous allez résoudre la grille.\r\nContinuer ?",
                                     Exclamation + OkCancel + SecondDefault);
        if (answer == platform::MessageButton::Ok && grid) grid->SolveGrid();
    });
}

void wMain::mnuHelpHelp_Click() {
    Trap("wMain", "mnuHelpHelp_Click",
         [] { TheHost().help->ShowContents(TheHost().application->HelpFile()); });
}

void wMain::mnuHelpAbout_Click() {
    Trap("wMain", "mnuHelpAbout_Click", [this] {
        ShowSplash();
        splash_->StayOpen();
    });
}
