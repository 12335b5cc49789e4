// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <string>

#include "Program.h"
#include "document/window/BusyGuard.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"

// A program of which it can be asked whether what has to be true after every event is true.
class Promises : public Program {
  protected:
    static std::string CellsOf(const GridDocument& document) {
        std::string cells;
        for (int i = 1; i <= 81; ++i) cells += StateText(document, i) + " ";
        return cells;
    }

    // That is open.
    std::string Everything() const {
        std::string everything = Grids() + "\n" + PathPanel();
        for (const OpenGrid& grid : main->Grids()) everything += "\n" + CellsOf(grid->Document());
        return everything;
    }

    void CheckShown(bool allGrids) {
        EXPECT_FALSE(BusyGuard::Active()) << "a run is left";
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "a dialog is left";
        EXPECT_TRUE(host.shapes.empty() || host.shapes.back() == platform::PointerShape::Default)
            << "still waits";
        for (const char* mode : {"mnuGridConfig", "mnuGridHelpNone", "mnuGridNoAutoMasks"}) {
            EXPECT_EQ(Item(mode).isChecked(), Tool(mode).isChecked()) << "menu and toolbar, " << mode;
        }
        if (!main->isVisible()) return;
        Grids();  // the title
        const OpenGrid grid = main->ActiveGrid();
        EXPECT_EQ(!grid, main->Grids().empty()) << "grids are open, none is active";
        EXPECT_EQ(PathPanel(), grid ? grid->Path().toStdString() : "") << "path of the active grid";
        EXPECT_EQ(main->Cell(), grid ? grid->CurrentCell() : nullptr) << "current cell of the active grid";
        for (const OpenGrid& open : main->Grids()) {
            if (allGrids || open == grid) CheckGrid(*open);
        }
        CheckPalette();
        EXPECT_LE(host.boxes.size(), 10'000U) << "boxes without end";
    }

    // Value, given or not, and candidates of every view are the model's.
    void CheckGrid(const wGrid& grid) const {
        EXPECT_TRUE(&grid != main->ActiveGrid().Get() ||
                    grid.parentWidget()->geometry() == Area().viewport()->rect())
            << "the grid fills its area";
        EXPECT_EQ(grid.NoAutoMask(), main->ManualMasks());
        clsGrid& model = grid.Document().Grid();
        model.ManageAvails();  // counted anew: nothing that is shown was out of date
        const auto& colours = ColorTable::Shared();
        for (int i = 1; i <= 81; ++i) {
            SCOPED_TRACE(grid.Caption().toStdString() + ", cell " + std::to_string(i));
            const ctrlCell& view = grid.ctrlCells(i);
            const clsCell& cell = *model.Cells(i);
            std::string shown = view.lblValue().text.toStdString();
            std::string holds = cell.Value() != 0 ? std::to_string(cell.Value()) : "";
            for (int d = 1; d <= 9; ++d) {
                const bool candidate =
                    cell.Value() == 0 && !main->MasksHidden() && cell.Avail(d) && !cell.Inhib(d);
                if (view.Mask(d)) shown += " " + std::to_string(d);
                if (candidate) holds += " " + std::to_string(d);
            }
            EXPECT_EQ(shown, holds);
            EXPECT_EQ(view.lblValue().color, platform_qt::FromLowRed(colours[cell.Locked() ? 3 : 4]));
            EXPECT_EQ(view.BackColor(), platform_qt::FromLowRed(colours[&view == grid.CurrentCell() ? 1 : 0]))
                << "the one current cell";
        }
    }

    // Mask buttons: red for an excluded digit, green for one that may be entered, where one can be. Value
    // buttons: enabled where the mask button is green.
    void CheckPalette() const {
        const clsCell* cell = main->Cell() ? main->Cell()->mCell() : nullptr;
        const bool speaks = cell && !main->MasksHidden();
        for (int d = 1; d <= 9; ++d) {
            SCOPED_TRACE("palette, digit " + std::to_string(d));
            const PaletteButton& value = main->picPalette().cmdValue(d);
            const PaletteButton& mask = main->picPalette().cmdMask(d);
            const bool applies = speaks && cell->Avail(d) && !cell->Locked();
            const DigitState state = !applies         ? DigitState::Neutral
                                     : cell->Inhib(d) ? DigitState::Excluded
                                                      : DigitState::Allowed;
            EXPECT_EQ(mask.State(), state);
            EXPECT_EQ(mask.isEnabled(), speaks && cell->Avail(d));
            EXPECT_EQ(value.State() == DigitState::Allowed, speaks && cell->Value() == d);
            EXPECT_EQ(value.isEnabled(), speaks ? state == DigitState::Allowed : cell != nullptr);
        }
    }

    // Taken back to its beginning and done again, a grid is as it was.
    static void CheckHistory(GridDocument& document) {
        const std::string before = CellsOf(document);
        int steps = 0;
        for (; document.CanUndo(); ++steps) document.Undo();
        for (; steps > 0 && document.CanRedo(); --steps) document.Redo();
        EXPECT_EQ(steps, 0) << "fewer steps to redo than were undone";
        EXPECT_EQ(CellsOf(document), before) << "all undone and redone";
    }

    void CheckFile(const GridDocument& document) const {
        const std::string file = host.PathOf("promise.nx3");
        GridDocument saved, loaded;
        saved.CopyFrom(document);
        EXPECT_TRUE(saved.SaveFile(file) && loaded.LoadFile(file));
        EXPECT_EQ(CellsOf(loaded), CellsOf(document)) << "saved and loaded";
    }
};
