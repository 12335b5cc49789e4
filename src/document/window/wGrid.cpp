// SPDX-License-Identifier: MIT
#include "document/window/wGrid.h"

#include <QCloseEvent>
#include <QFontInfo>
#include <QPalette>
#include <QResizeEvent>
#include <algorithm>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/window/BusyGuard.h"
#include "document/window/GridLayout.h"
#include "document/window/MainFrame.h"
#include "document/window/ctrlCell.h"
#include "platform/qt/QtHost.h"
#include "printing/CandidatePlaces.h"

namespace {

// To give a widget a palette costs some microseconds, also the one that it has.
void Recolor(QWidget& widget, const QColor& color) {
    QPalette palette = widget.palette();
    if (palette.color(QPalette::Window) == color) return;
    palette.setColor(QPalette::Window, color);
    widget.setPalette(palette);
}

constexpr double valueRatio = 0.8;   // of a cell's height
constexpr double widestValue = 1.6;  // of its width, so that a digit stays inside

QWidget* MakeBar(QWidget* parent, const QString& name) {
    auto* bar = new QWidget(parent);
    bar->setObjectName(name);
    bar->setAutoFillBackground(true);
    bar->setAttribute(Qt::WA_TransparentForMouseEvents);
    return bar;
}

}  // namespace

wGrid::wGrid(MainFrame& frame, std::unique_ptr<GridDocument> document, QWidget* parent)
    : QWidget(parent), frame_(frame), document_(std::move(document)) {
    setObjectName(QStringLiteral("wGrid"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAutoFillBackground(true);
    setMinimumSize(GridLayout::SmallestSide, GridLayout::SmallestSide);
    Trap("wGrid", "Form_Load", [this] { Form_Load(); });
}

wGrid::~wGrid() {
    Unload();
    // They listen to the document, and call this as their holder.
    for (ctrlCell* cell : cells_) delete cell;
}

void wGrid::Form_Load() {
    const ColorTable::Colors colors = ColorTable::FromSettings();
    for (int i = 1; i <= 81; ++i) {
        auto* cell = new ctrlCell(this, *this, colors);
        cell->setObjectName(QStringLiteral("ctrlCells(%1)").arg(i));
        cell->ParentGrid(this);
        cells_[static_cast<std::size_t>(i - 1)] = cell;
    }
    document_->NoAutoMask(frame_.ManualMasks());
    const bool hidden = frame_.MasksHidden();
    for (int i = 1; i <= 81; ++i) {
        ctrlCells(i).NoMask(hidden);
        ctrlCells(i).mCell(document_->Grid().Cells(i));
    }
    for (std::size_t k = 0; k < picV_.size(); ++k) {
        picV_[k] = MakeBar(this, QStringLiteral("picV(%1)").arg(k));
        picH_[k] = MakeBar(this, QStringLiteral("picH(%1)").arg(k));
    }
    SetColors(colors);
    ShowCaption();
}

ctrlCell& wGrid::ctrlCells(int index) const {
    if (index < 1 || index > 81) throw RuntimeError(ErrorNumber::OutOfBounds);
    return *cells_[static_cast<std::size_t>(index - 1)];
}

QString wGrid::Path() const {
    return platform_qt::PathFromBytes(document_->Path());
}

void wGrid::Path(const QString& path) {
    document_->Path(platform_qt::PathToBytes(path));
    ShowCaption();
}

QString wGrid::Caption() const {
    return platform_qt::FromUtf8(document_->Caption());
}

// A file may be called "a[*]b", which the toolkit would read as its mark of modified windows.
void wGrid::ShowCaption() {
    setAccessibleName(Caption());
    setWindowTitle(Caption().replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

void wGrid::NoAutoMask(bool flag) {
    Trap("wGrid", "NoAutoMask", [&] {
        document_->NoAutoMask(flag);
        UpdateGrid();
    });
}

void wGrid::UpdateGrid() {
    Trap("wGrid", "UpdateGrid", [this] {
        document_->Grid().ManageAvails();
        ShowCells();
    });
}

void wGrid::ShowCells() {
    Trap("wGrid", "ShowCells", [this] {
        const bool hidden = frame_.MasksHidden();
        for (ctrlCell* cell : cells_) {
            cell->NoMask(hidden);
            cell->ManageMasks();
        }
        for (ctrlCell* cell : cells_) cell->TellChange();
        frame_.UpdateColors();
        frame_.ShowStanding();
    });
}

void wGrid::Form_Activate() {
    Trap("wGrid", "Form_Activate", [this] {
        frame_.ShowDocument(Path(), Caption());
        frame_.Cell(currentCell_);
        TabStop(true);
    });
}

void wGrid::Form_Deactivate() {
    Trap("wGrid", "Form_Deactivate", [this] {
        frame_.ShowDocument({}, {});
        TabStop(false);
    });
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

void wGrid::TabStop(bool on) {
    KeyboardCell().setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
}

// By itself the toolkit walks in a circle inside the sub-window.
bool wGrid::focusNextPrevChild(bool next) {
    const QWidget* inside = parentWidget() ? parentWidget() : this;
    const auto step = [next](QWidget* w) { return next ? w->nextInFocusChain() : w->previousInFocusChain(); };
    for (QWidget* other = step(this); other != this; other = step(other)) {
        const bool stop = (other->focusPolicy() & Qt::TabFocus) && other->isVisible() && other->isEnabled();
        if (!stop || other->window() != window() || inside->isAncestorOf(other) || other == inside) continue;
        other->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

void wGrid::SetFocus() {
    KeyboardCell().setFocus();
}

void wGrid::FlashRefusal() {
    if (currentCell_) currentCell_->Flash();
}

void wGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Trap("wGrid", "Form_Resize", [this] { Form_Resize(); });
}

// A window that nobody sees is laid out when it is shown: a new one gets several sizes before.
void wGrid::Form_Resize() {
    laidOut_ = isVisible();
    if (laidOut_) LayOut();
}

void wGrid::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!laidOut_) Trap("wGrid", "Form_Resize", [this] { Form_Resize(); });
}

void wGrid::LayOut() {
    const QColor lines = platform_qt::FromLowRed(ColorTable::FromSettings()[2]);
    const QSizeF cell = QSizeF(size()) / 9;
    const double value = std::min(valueRatio * cell.height(), widestValue * cell.width());
    const double candidate = CandidateSize(cell, QFontInfo(font()).pixelSize());
    for (int i = 1; i <= 81; ++i) {
        ctrlCells(i).setGeometry(GridLayout::CellPlace(i, size()));
        ctrlCells(i).DigitSizes(value, candidate);
    }
    for (int k = 0; k <= 9; ++k) {
        QWidget* vertical = picV_[static_cast<std::size_t>(k)];
        QWidget* horizontal = picH_[static_cast<std::size_t>(k)];
        vertical->setGeometry(GridLayout::VerticalBar(k, size()));
        horizontal->setGeometry(GridLayout::HorizontalBar(k, size()));
        Recolor(*vertical, lines);
        Recolor(*horizontal, lines);
    }
}

// The smallest digits are as large as the desktop's text.
void wGrid::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && cells_.back()) {
        Trap("wGrid", "Form_Resize", [this] { Form_Resize(); });
    }
}

void wGrid::closeEvent(QCloseEvent* event) {
    if (RefusedWhileBusy() || !AskBeforeUnload()) return event->ignore();
    Unload();
    event->accept();
}

// From here on the window is no open grid, whatever still happens until its memory goes.
void wGrid::Unload() {
    if (std::exchange(closed_, true)) return;
    emit Unloading(this);
}

void wGrid::ctrlCells_Click(ctrlCell& clicked) {
    Trap("wGrid", "ctrlCells_Click", [&] {
        const ColorTable::Colors colors = ColorTable::FromSettings();
        for (ctrlCell* cell : cells_) {
            const bool current = cell == &clicked;
            cell->BackColor(platform_qt::FromLowRed(colors[current ? 1 : 0]));
            cell->Current(current);
            // The grid is one stop of the Tab key.
            cell->setFocusPolicy(current ? Qt::StrongFocus : Qt::ClickFocus);
        }
        currentCell_ = &clicked;
        clicked.setFocus();
        frame_.Cell(&clicked);
    });
}

void wGrid::ctrlCells_KeyDown(ctrlCell& cell, int keyCode, int shift) {
    Trap("wGrid", "ctrlCells_KeyDown", [&] {
        if (keyCode == 0 || (shift & ShiftState::Alt)) return;
        const ctrlCell* current = frame_.Cell();
        // Before any cell was chosen the keys begin at the one that has the keyboard.
        if (!current || current->ParentGrid() != this) return ctrlCells_Click(cell);
        const int from = current->mCell()->GridIndex();
        const bool control = (shift & ShiftState::Control) != 0;
        int to = 0;
        switch (keyCode) {
            case KeyCode::Delete:
            case KeyCode::Backspace:
                return frame_.cmdValue_Click(0);
            case KeyCode::Right:
                to = StepFrom(from, 0, 1, control);
                break;
            case KeyCode::Left:
                to = StepFrom(from, 0, -1, control);
                break;
            case KeyCode::Down:
                to = StepFrom(from, 1, 0, control);
                break;
            case KeyCode::Up:
                to = StepFrom(from, -1, 0, control);
                break;
            case KeyCode::Home:
                to = control ? 1 : (from - 1) / 9 * 9 + 1;
                break;
            case KeyCode::End:
                to = control ? 81 : (from - 1) / 9 * 9 + 9;
                break;
            default:
                break;
        }
        if (to != 0) ctrlCells(to).DoSelect();
    });
}

int wGrid::StepFrom(int index, int rows, int columns, bool toEmpty) const {
    int row = (index - 1) / 9;
    int column = (index - 1) % 9;
    do {
        row += rows;
        column += columns;
        if (row < 0 || row > 8 || column < 0 || column > 8) return 0;
        index = row * 9 + column + 1;
    } while (toEmpty && ctrlCells(index).Value() != 0);
    return index;
}

void wGrid::ctrlCells_Keypress(ctrlCell& cell, int keyAscii) {
    Trap("wGrid", "ctrlCells_Keypress", [&] {
        if (&cell != frame_.Cell()) cell.DoSelect();
        if (keyAscii >= '1' && keyAscii <= '9') frame_.cmdValue_Click(keyAscii - '0');
    });
}

void wGrid::ctrlCells_CandidateChosen(ctrlCell& cell, int digit) {
    Trap("wGrid", "ctrlCells_CandidateChosen", [&] {
        if (&cell != frame_.Cell()) cell.DoSelect();
        frame_.ToggleCandidate(digit);
    });
}
