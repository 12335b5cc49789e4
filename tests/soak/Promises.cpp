// What has to be true after every event.

#include <QApplication>

#include "Monkey.h"
#include "document/window/BusyGuard.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"

namespace {

std::string CellsOf(const GridDocument& document) {
    std::string cells;
    for (int i = 1; i <= 81; ++i) cells += StateText(document, i) + " ";
    return cells;
}

// The digits in the row, column and box of each cell, as bits.
std::array<unsigned, 82> DigitsAround(const clsGrid& grid) {
    std::array<std::array<unsigned, 9>, 3> units{};
    std::array<unsigned, 82> around{};
    for (const bool reads : {false, true}) {
        for (int i = 0; i < 81; ++i) {
            for (int kind = 0; kind < 3; ++kind) {
                const int unit = kind == 0 ? i / 9 : kind == 1 ? i % 9 : i / 27 * 3 + i % 9 / 3;
                if (reads)
                    around[i + 1] |= units[kind][unit];
                else
                    units[kind][unit] |= 1U << grid.Cells(i + 1)->Value();
            }
        }
    }
    return around;
}

}  // namespace

std::string Monkey::Everything() const {
    std::string everything = Grids() + "\n" + PathPanel();
    for (const OpenGrid& grid : main->Grids()) everything += "\n" + CellsOf(grid->Document());
    return everything;
}

void Monkey::CheckShown(bool allGrids) {
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
    CheckPalette();
    for (const OpenGrid& open : main->Grids()) {
        if (allGrids || open == grid) CheckGrid(*open);
    }
    EXPECT_LE(host.boxes.size(), 10'000U) << "boxes without end";
}

// Value, given or not, and candidates of every view are the model's.
void Monkey::CheckGrid(const wGrid& grid) const {
    EXPECT_EQ(grid.parentWidget()->geometry(), Area().viewport()->rect()) << "the grid fills its area";
    const clsGrid& model = grid.Document().Grid();
    const auto around = DigitsAround(model);
    const auto& colours = ColorTable::Shared();
    for (int i = 1; i <= 81; ++i) {
        const ctrlCell& view = grid.ctrlCells(i);
        const clsCell& cell = *model.Cells(i);
        std::string shown = view.lblValue().text.toStdString();
        std::string holds = cell.Value() != 0 ? std::to_string(cell.Value()) : "";
        for (int d = 1; d <= 9; ++d) {
            const bool free = main->ManualMasks() || !(around[i] >> d & 1U);
            if (view.Mask(d)) shown += " " + std::to_string(d);
            if (cell.Value() == 0 && !main->MasksHidden() && free && !cell.Inhib(d)) {
                holds += " " + std::to_string(d);
            }
        }
        EXPECT_EQ(shown, holds) << grid.Caption().toStdString() << ", cell " << i;
        EXPECT_EQ(view.lblValue().color, platform_qt::FromLowRed(colours[cell.Locked() ? 3 : 4]))
            << "cell " << i;
        EXPECT_EQ(view.BackColor(), platform_qt::FromLowRed(colours[&view == grid.CurrentCell() ? 1 : 0]))
            << "the one current cell, cell " << i;
    }
}

// Mask buttons: red for an excluded digit, green for one that may be entered, where one can be. Value
// buttons: enabled where the mask button is green.
void Monkey::CheckPalette() const {
    const ctrlCell* view = main->Cell();
    const clsCell* cell = view ? view->mCell() : nullptr;
    for (int d = 1; d <= 9; ++d) {
        const PaletteButton& value = main->picPalette().cmdValue(d);
        const PaletteButton& mask = main->picPalette().cmdMask(d);
        const bool speaks = cell && !main->MasksHidden();
        const bool applies = speaks && cell->Avail(d) && !cell->Locked();
        const DigitState state = !applies         ? DigitState::Neutral
                                 : cell->Inhib(d) ? DigitState::Excluded
                                                  : DigitState::Allowed;
        EXPECT_EQ(mask.State(), state) << "mask button " << d;
        EXPECT_EQ(mask.isEnabled(), speaks && cell->Avail(d)) << "mask button " << d;
        EXPECT_EQ(value.State() == DigitState::Allowed, speaks && cell->Value() == d) << "value button " << d;
        EXPECT_EQ(value.isEnabled(), speaks ? state == DigitState::Allowed : cell != nullptr)
            << "value button " << d;
    }
}

// Taken back to its beginning and done again, a grid is as it was; where the history does not know of a
// change, twice is as once.
void Monkey::CheckHistory(wGrid& grid) const {
    GridDocument& document = grid.Document();
    const std::string before = CellsOf(document);
    std::string last;
    for (int round = 0; round < 2; ++round) {
        int steps = 0;
        for (; document.CanUndo(); ++steps) document.Undo();
        for (; steps > 0 && document.CanRedo(); --steps) document.Redo();
        EXPECT_EQ(steps, 0) << "fewer steps to redo than were undone";
        if (round > 0 || !rewritten_.contains(&document)) {
            EXPECT_EQ(CellsOf(document), round > 0 ? last : before) << "all undone and redone";
        }
        last = CellsOf(document);
    }
}

void Monkey::CheckFile(const wGrid& grid) const {
    const std::string file = host.PathOf("promise.nx3");
    GridDocument saved;
    saved.CopyFrom(grid.Document());
    EXPECT_TRUE(saved.SaveFile(file));
    GridDocument loaded;
    EXPECT_TRUE(loaded.LoadFile(file));
    EXPECT_EQ(CellsOf(loaded), CellsOf(grid.Document())) << "saved and loaded";
}
