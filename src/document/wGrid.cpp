#include "document/wGrid.h"

#include <QCloseEvent>
#include <QPalette>
#include <QResizeEvent>

#include "diagnostics/ErrorHandling.h"
#include "document/BusyGuard.h"
#include "document/GridLayout.h"
#include "document/MainFrame.h"
#include "document/ctrlCell.h"
#include "engine/clsGrid.h"
#include "platform/Host.h"
#include "platform/qt/QtHost.h"
#include "printing/PagePainter.h"
#include "printing/Printing.h"
#include "settings/Conversions.h"
#include "settings/FilesPaths.h"
#include "settings/IniParamProcs.h"

namespace {

void Recolor(QWidget& widget, const QColor& color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, color);
    widget.setPalette(palette);
}

QWidget* MakeBar(QWidget* parent, const QString& name) {
    auto* bar = new QWidget(parent);
    bar->setObjectName(name);
    bar->setAutoFillBackground(true);
    bar->setAttribute(Qt::WA_TransparentForMouseEvents);
    return bar;
}

}  // namespace

wGrid::wGrid(MainFrame& frame, QWidget* parent) : QWidget(parent), frame_(frame) {
    setObjectName(QStringLiteral("wGrid"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAutoFillBackground(true);
    setMinimumSize(GridLayout::SmallestSide, GridLayout::SmallestSide);
    Trap("wGrid", "Form_Load", [this] { Form_Load(); });
}

wGrid::~wGrid() {
    emit Unloading(this);
    for (ctrlCell* cell : cells_) delete cell;
}

void wGrid::Form_Load() {
    grid_ = std::make_unique<clsGrid>();
    grid_->NoAutoMask(frame_.ManualMasks());
    const ColorTable::Colors colors = ColorTable::FromSettings();
    for (int i = 1; i <= 81; ++i) {
        auto* cell = new ctrlCell(this, colors);
        cell->setObjectName(QStringLiteral("ctrlCells(%1)").arg(i));
        cell->ParentGrid(this);
        connect(cell, &ctrlCell::Click, this, [this, i] { ctrlCells_Click(i); });
        connect(cell, &ctrlCell::KeyDown, this, [this, i](int code) { ctrlCells_KeyDown(i, code); });
        connect(cell, &ctrlCell::Keypress, this, [this, i](int code) { ctrlCells_Keypress(i, code); });
        cells_[static_cast<std::size_t>(i - 1)] = cell;
    }
    BindCells();
    for (std::size_t k = 0; k < picV_.size(); ++k) {
        picV_[k] = MakeBar(this, QStringLiteral("picV(%1)").arg(k));
        picH_[k] = MakeBar(this, QStringLiteral("picH(%1)").arg(k));
    }
    SetColors(colors);
}

// The views show the cells of the present model.
void wGrid::BindCells() {
    const bool hidden = frame_.MasksHidden();
    for (int i = 1; i <= 81; ++i) {
        ctrlCell& cell = ctrlCells(i);
        cell.NoMask(hidden);
        cell.mCell(grid_->Cells(i));
    }
}

ctrlCell& wGrid::ctrlCells(int index) const {
    if (index < 1 || index > 81) throw RuntimeError(ErrorNumber::OutOfBounds);
    return *cells_[static_cast<std::size_t>(index - 1)];
}

void wGrid::Path(const QString& path) {
    path_ = path;
    Caption(QString::fromStdString(FilesPaths::NameOf(path.toStdString())));
}

void wGrid::Caption(const QString& caption) {
    caption_ = caption;
    // A file may be called "a[*]b", which the toolkit would read as its mark of modified windows.
    setWindowTitle(QString(caption).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

bool wGrid::NoAutoMask() const {
    return grid_->NoAutoMask();
}

void wGrid::NoAutoMask(bool flag) {
    Trap("wGrid", "NoAutoMask", [&] {
        grid_->NoAutoMask(flag);
        UpdateGrid();
    });
}

void wGrid::UpdateGrid() {
    Trap("wGrid", "UpdateGrid", [this] {
        const bool hidden = frame_.MasksHidden();
        grid_->ManageAvails();
        for (ctrlCell* cell : cells_) {
            cell->NoMask(hidden);
            cell->ManageMasks();
        }
        frame_.UpdateColors();
    });
}

bool wGrid::IsComplete() const {
    return Trap("wGrid", "IsComplete", [this] {
        for (const ctrlCell* cell : cells_) {
            if (cell->Value() == 0) return false;
        }
        return true;
    });
}

void wGrid::CopyFrom(const wGrid& source, const QString& caption) {
    Trap("wGrid", "CopyFrom", [&] {
        for (int i = 1; i <= 81; ++i) {
            const ctrlCell& from = source.ctrlCells(i);
            ctrlCell& to = ctrlCells(i);
            to.Value(from.Value());
            to.Locked(from.Locked());
            for (int d = 1; d <= 9; ++d) to.mCell()->Inhib(d, from.mCell()->Inhib(d));
        }
        Caption(caption);
        UpdateGrid();
    });
}

void wGrid::Reinit() {
    Trap("wGrid", "Reinit", [this] {
        using namespace platform;
        const auto answer = TheHost().messages->Show(
            "Attention, vous allez rétablir cette grille à son état initial.\r\nÊtes-vous sûr ?",
            MessageStyle::Exclamation + MessageStyle::OkCancel + MessageStyle::SecondDefault);
        if (answer != MessageButton::Ok) return;
        for (ctrlCell* cell : cells_) {
            if (cell->Locked()) continue;
            cell->Value(0);
            for (int d = 1; d <= 9; ++d) cell->mCell()->Inhib(d, false);
        }
        UpdateGrid();
    });
}

void wGrid::PrintGrid() {
    Trap("wGrid", "PrintGrid", [this] {
        PrintedGrid page;
        page.caption = caption_;
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

void wGrid::Form_Activate() {
    Trap("wGrid", "Form_Activate", [this] {
        frame_.ShowDocument(path_, caption_);
        frame_.Cell(currentCell_);
    });
}

void wGrid::Form_Deactivate() {
    Trap("wGrid", "Form_Deactivate", [this] { frame_.ShowDocument({}, {}); });
}

void wGrid::SetColors(const ColorTable::Colors& colors) {
    for (ctrlCell* cell : cells_) {
        cell->SetColors(platform_qt::FromLowRed(colors[0]), platform_qt::FromLowRed(colors[4]),
                        platform_qt::FromLowRed(colors[3]), platform_qt::FromLowRed(colors[6]));
    }
    if (currentCell_) currentCell_->BackColor(platform_qt::FromLowRed(colors[1]));
    Recolor(*this, platform_qt::FromLowRed(colors[0]));
    for (QWidget* bar : picV_) Recolor(*bar, platform_qt::FromLowRed(colors[2]));
    for (QWidget* bar : picH_) Recolor(*bar, platform_qt::FromLowRed(colors[2]));
}

void wGrid::SetFocus() {
    ctrlCell* cell = currentCell_ ? currentCell_ : cells_.front();
    cell->setFocus();
}

void wGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Trap("wGrid", "Form_Resize", [this] { Form_Resize(); });
}

void wGrid::Form_Resize() {
    const QColor lines = platform_qt::FromLowRed(ColorTable::FromSettings()[2]);
    for (int i = 1; i <= 81; ++i) ctrlCells(i).setGeometry(GridLayout::CellPlace(i, size()));
    for (int k = 0; k <= 9; ++k) {
        QWidget* vertical = picV_[static_cast<std::size_t>(k)];
        QWidget* horizontal = picH_[static_cast<std::size_t>(k)];
        vertical->setGeometry(GridLayout::VerticalBar(k, size()));
        horizontal->setGeometry(GridLayout::HorizontalBar(k, size()));
        Recolor(*vertical, lines);
        Recolor(*horizontal, lines);
    }
}

bool wGrid::AskBeforeUnload() {
    if (discarded_) return true;
    // After a failure the window stays: what it holds may exist nowhere else.
    return Trap("wGrid", "Form_QueryUnload", [this] { return Form_QueryUnload(); });
}

bool wGrid::Form_QueryUnload() {
    using namespace platform;
    if (!grid_->Modified()) return true;
    const std::string question =
        "La grille " + caption_.toStdString() + " a été modifiée.\r\nVoulez-vous la sauvegarder ?";
    const auto answer = TheHost().messages->Show(
        question, MessageStyle::Exclamation + MessageStyle::YesNoCancel + MessageStyle::ThirdDefault);
    if (answer == MessageButton::Yes) return SaveOnUnload();
    return answer == MessageButton::No;
}

bool wGrid::SaveOnUnload() {
    if (path_.isEmpty()) {
        const std::string file = FilesPaths::AskSaveFile(
            IniParamProcs::ReadIniParam("Files", "LastOpened", ""), caption_.toStdString());
        if (file.empty()) return false;
        Path(QString::fromStdString(file));
    }
    return SaveFile(path_);
}

void wGrid::closeEvent(QCloseEvent* event) {
    if (RefusedWhileBusy() || !AskBeforeUnload()) return event->ignore();
    discarded_ = true;
    event->accept();
}

void wGrid::ctrlCells_Click(int index) {
    Trap("wGrid", "ctrlCells_Click", [&] {
        const ColorTable::Colors colors = ColorTable::FromSettings();
        for (ctrlCell* cell : cells_) cell->BackColor(platform_qt::FromLowRed(colors[0]));
        ctrlCell& clicked = ctrlCells(index);
        clicked.BackColor(platform_qt::FromLowRed(colors[1]));
        currentCell_ = &clicked;
        clicked.setFocus();
        frame_.Cell(&clicked);
    });
}

void wGrid::ctrlCells_KeyDown(int index, int keyCode) {
    Trap("wGrid", "ctrlCells_KeyDown", [&] {
        constexpr int left = 37;
        constexpr int up = 38;
        constexpr int right = 39;
        constexpr int down = 40;
        constexpr int erase = 46;
        if (keyCode == 0) return;
        const ctrlCell* current = frame_.Cell();
        // Before any cell was chosen the keys begin at the one that has the keyboard.
        if (!current || current->ParentGrid() != this) return ctrlCells_Click(index);
        const int from = current->mCell()->GridIndex();
        const int column = current->mCell()->Col();
        const int row = current->mCell()->Row();
        if (keyCode == erase) return frame_.cmdValue_Click(0);
        if (keyCode == right && column < 9) return MoveTo(from + 1);
        if (keyCode == left && column >= 2) return MoveTo(from - 1);
        if (keyCode == down && row < 9) return MoveTo(from + 9);
        if (keyCode == up && row >= 2) return MoveTo(from - 9);
    });
}

void wGrid::MoveTo(int index) {
    ctrlCells(index).setFocus();
    ctrlCells(index).DoSelect();
}

void wGrid::ctrlCells_Keypress(int index, int keyAscii) {
    Trap("wGrid", "ctrlCells_Keypress", [&] {
        ctrlCell& pressed = ctrlCells(index);
        if (&pressed != frame_.Cell()) pressed.DoSelect();
        if (keyAscii >= '1' && keyAscii <= '9') frame_.cmdValue_Click(keyAscii - '0');
    });
}
