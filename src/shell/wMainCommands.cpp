// The commands of the menus File (grids), Edit, Grid and Help.

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>
#include <string>

#include "diagnostics/ErrorHandling.h"
#include "document/BusyGuard.h"
#include "document/wGrid.h"
#include "platform/Host.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"
#include "settings/Conversions.h"
#include "settings/IniParamProcs.h"
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
    if (Conversions::NumericPrefix(IniParamProcs::ReadIniParam("Options", "LevelAsk", "0")) != 0) return true;
    wLevel level(owner);
    level.exec();
    return level.Accepted();
}

// "base *(*)", the base taken literally.
bool IsCopyOf(const QString& caption, const QString& base) {
    const QString start = base + QLatin1Char(' ');
    if (!caption.startsWith(start) || !caption.endsWith(QLatin1Char(')'))) return false;
    return caption.indexOf(QLatin1Char('('), start.size()) >= 0;
}

}  // namespace

QString wMain::NextCaption() {
    return QStringLiteral("Grille%1").arg(++gridCounter_);
}

void wMain::mnuFileNew_Click() {
    Trap("wMain", "mnuFileNew_Click", [this] {
        if (RefusedWhileBusy()) return;
        TheHost().pointer->Shape(PointerShape::Hourglass);
        wGrid* grid = LoadGridWindow();
        grid->Caption(NextCaption());
        if (!InitialisationMode()) mnuGridConfig_Click();
        ShowGridWindow(*grid);
        TheHost().pointer->Shape(PointerShape::Default);
    });
}

void wMain::mnuFileCreate_Click() {
    Trap("wMain", "mnuFileCreate_Click", [this] {
        if (RefusedWhileBusy() || !AskLevel(this)) return;
        wGrid* grid = LoadGridWindow();
        TheHost().pointer->Shape(PointerShape::ArrowAndHourglass);
        bool kept = false;
        {
            const BusyGuard run(this);
            const bool created = grid->CreateGrid();
            kept = created && run.StillVisible();
            if (created && !kept) {
                TheHost().messages->Show("Le temps de création est dépassé.\rTentez une nouvelle génération.",
                                         Stop);
            }
        }
        if (kept) {
            grid->Caption(NextCaption());
            ShowGridWindow(*grid);
        } else {
            UnloadGrid(grid);
        }
        TheHost().pointer->Shape(PointerShape::Default);
        if (InitialisationMode()) mnuGridConfig_Click();
    });
}

void wMain::mnuFileClose_Click() {
    Trap("wMain", "mnuFileClose_Click", [this] {
        if (RefusedWhileBusy()) return;
        if (wGrid* grid = ActiveGrid()) grid->parentWidget()->close();
    });
}

void wMain::mnuFilePrint_Click() {
    WithActiveGrid("mnuFilePrint_Click", [](wGrid& grid) { grid.PrintGrid(); });
}

void wMain::mnuFileQuit_Click() {
    Trap("wMain", "mnuFileQuit_Click", [this] { close(); });
}

void wMain::mnuEditUndo_Click() {
    WithActiveGrid("mnuEditUndo_Click", [](wGrid& grid) { grid.Undo(); });
}

void wMain::mnuEditRedo_Click() {
    WithActiveGrid("mnuEditRedo_Click", [](wGrid& grid) { grid.Redo(); });
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
    for (wGrid* grid : Grids()) grid->SetColors(ColorTable::Shared());
}

void wMain::mnuGridConfig_Click() {
    Trap("wMain", "mnuGridConfig_Click",
         [this] { ToggleMode("mnuGridConfig", "mnuGridConfig", "mnuGridConfig"); });
}

void wMain::mnuGridHelpNone_Click() {
    Trap("wMain", "mnuGridHelpNone_Click", [this] {
        const bool hidden = ToggleMode("mnuGridHelpNone", "mnuGridHelpDisplay", "mnuGridHelpNone");
        for (wGrid* grid : Grids()) grid->UpdateGrid();
        UpdateColors();
        IniParamProcs::WriteIniParam("Options", "GridHelpNone", hidden ? "1" : "0");
    });
}

void wMain::mnuGridNoAutoMasks_Click() {
    Trap("wMain", "mnuGridNoAutoMasks_Click", [this] {
        const bool manual = ToggleMode("mnuGridNoAutoMasks", "mnuGridNoAutoMasksOn", "mnuGridNoAutoMasks");
        for (wGrid* grid : Grids()) grid->NoAutoMask(manual);
        IniParamProcs::WriteIniParam("Options", "NoAutoMasks", manual ? "1" : "0");
    });
}

QString wMain::CopyCaption(const QString& caption) const {
    const auto bracket = caption.lastIndexOf(QLatin1String(" ("));
    const QString base = bracket < 0 ? caption : caption.left(bracket);
    int number = 1;
    for (const wGrid* grid : Grids()) {
        if (IsCopyOf(grid->Caption(), base)) ++number;
    }
    return QStringLiteral("%1 (%2)").arg(base).arg(number);
}

void wMain::mnGridCopy_Click() {
    WithActiveGrid("mnGridCopy_Click", [this](const wGrid& source) {
        const QString caption = CopyCaption(source.Caption());
        TheHost().pointer->Shape(PointerShape::Hourglass);
        wGrid* copy = LoadGridWindow();
        copy->CopyFrom(source, caption);
        ShowGridWindow(*copy);
        TheHost().pointer->Shape(PointerShape::Default);
    });
}

void wMain::mnuGridReinit_Click() {
    WithActiveGrid("mnuGridReinit_Click", [](wGrid& grid) { grid.Reinit(); });
}

void wMain::mnuHelpAsk_Click() {
    WithActiveGrid("mnuHelpAsk_Click", [](wGrid& grid) {
        const int wrong = grid.TestGrid();
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
    WithActiveGrid("mnuHelpSolve_Click", [](wGrid& grid) {
        const auto answer =
            TheHost().messages->Show("Attention, vous allez résoudre la grille.\r\nContinuer ?",
                                     Exclamation + OkCancel + SecondDefault);
        if (answer == platform::MessageButton::Ok) grid.SolveGrid();
    });
}

void wMain::mnuHelpHelp_Click() {
    Trap("wMain", "mnuHelpHelp_Click",
         [] { TheHost().help->ShowContents(TheHost().application->HelpFile()); });
}

void wMain::mnuHelpAbout_Click() {
    Trap("wMain", "mnuHelpAbout_Click", [this] {
        ShowSplash();
        splash_->tmrClose().stop();
    });
}
