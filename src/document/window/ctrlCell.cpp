// SPDX-License-Identifier: MIT
#include "document/window/ctrlCell.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/window/CellHolder.h"
#include "document/window/DigitGlyphs.h"
#include "document/window/ctrlCellAccessible.h"
#include "engine/clsCell.h"
#include "platform/qt/Announce.h"
#include "platform/qt/Contrast.h"
#include "platform/qt/NumberRow.h"
#include "platform/qt/QtHost.h"
#include "printing/CandidatePlaces.h"

namespace {

constexpr int flashTime = 90;  // milliseconds

// All cells share the texts of their digits.
const QString& DigitText(int digit) {
    static const std::array<QString, 10> texts = [] {
        std::array<QString, 10> made;
        for (int d = 1; d <= 9; ++d) made[static_cast<std::size_t>(d)] = QString::number(d);
        return made;
    }();
    return texts[static_cast<std::size_t>(digit)];
}

int KeyCodeOf(int key) {
    switch (key) {
        case Qt::Key_Left:
            return KeyCode::Left;
        case Qt::Key_Up:
            return KeyCode::Up;
        case Qt::Key_Right:
            return KeyCode::Right;
        case Qt::Key_Down:
            return KeyCode::Down;
        case Qt::Key_Home:
            return KeyCode::Home;
        case Qt::Key_End:
            return KeyCode::End;
        case Qt::Key_Delete:
            return KeyCode::Delete;
        case Qt::Key_Backspace:
            return KeyCode::Backspace;
        default:
            return 0;
    }
}

int ShiftStateOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? ShiftState::Shift : 0) |
           (modifiers & Qt::ControlModifier ? ShiftState::Control : 0) |
           (modifiers & Qt::AltModifier ? ShiftState::Alt : 0);
}

}  // namespace

ctrlCell::ctrlCell(QWidget* parent, CellHolder& holder, const ColorTable::Colors& colors)
    : QWidget(parent), holder_(holder), backColor_(platform_qt::FromLowRed(colors[0])) {
    InstallCellAccessibility();
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    lockedColor_ = platform_qt::FromLowRed(colors[3]);
    unlockedColor_ = platform_qt::FromLowRed(colors[4]);
    maskColor_ = platform_qt::FromLowRed(colors[6]);
    lblValue_.color = unlockedColor_;
}

ctrlCell::~ctrlCell() {
    if (cell_) cell_->OnChange({});
}

void ctrlCell::mCell(clsCell* cell) {
    if (cell_) cell_->OnChange({});
    cell_ = cell;
    if (!cell_) return;
    cell_->OnChange([this](std::uint8_t value) { mCell_Change(value); });
    ShowValue(cell_->Value());
    ManageMasks();
    toldValue_ = cell_->Value();
}

void ctrlCell::BackColor(const QColor& color) {
    if (backColor_ == color) return;
    backColor_ = color;
    update();
}

void ctrlCell::Current(bool current) {
    if (current_ == current) return;
    current_ = current;
    flashes_ = 0;
    update();
}

void ctrlCell::Flash() {
    flashes_ = 3;
    tmrFlash_.start(flashTime, this);
    update();
}

void ctrlCell::timerEvent(QTimerEvent* event) {
    if (event->timerId() != tmrFlash_.timerId()) return QWidget::timerEvent(event);
    if (flashes_ > 0) --flashes_;
    if (flashes_ == 0) tmrFlash_.stop();
    update();
}

std::uint8_t ctrlCell::Value() const {
    return cell_ ? cell_->Value() : std::uint8_t{0};
}

void ctrlCell::Value(std::uint8_t value) {
    if (!cell_) throw RuntimeError(ErrorNumber::ObjectNotSet);
    cell_->Value(value);  // its Change event shows it
}

bool ctrlCell::Locked() const {
    return cell_ && cell_->Locked();
}

void ctrlCell::Locked(bool locked) {
    if (!cell_) return;
    cell_->Locked(locked);
    ShowValue(cell_->Value());
}

bool ctrlCell::Mask(int d) const {
    return d >= 1 && d <= 9 && shownMasks_[static_cast<std::size_t>(d)];
}

void ctrlCell::Mask(int d, bool visible) {
    if (d < 1 || d > 9) return;
    shownMasks_[static_cast<std::size_t>(d)] = visible;
    update();
}

void ctrlCell::DoSelect() {
    holder_.ctrlCells_Click(*this);
}

void ctrlCell::Type(int digit) {
    Trap("ctrlCell", "UserControl_KeyPress", [&] {
        if (digit == 0) return holder_.ctrlCells_KeyDown(*this, KeyCode::Delete, 0);
        holder_.ctrlCells_Keypress(*this, '0' + digit);
    });
}

void ctrlCell::SetColors(const QColor& background, const QColor& unlocked, const QColor& locked) {
    backColor_ = background;
    unlockedColor_ = unlocked;
    lockedColor_ = locked;
    lblValue_.color = Locked() ? lockedColor_ : unlockedColor_;
    update();
}

void ctrlCell::SetColors(const QColor& background, const QColor& unlocked, const QColor& locked,
                         const QColor& mask) {
    maskColor_ = mask;
    SetColors(background, unlocked, locked);
}

void ctrlCell::ManageMasks() {
    const bool show = lblValue_.text.isEmpty() && !noMask_ && cell_;
    const std::bitset<10> before = shownMasks_;
    for (int d = 1; d <= 9; ++d) {
        shownMasks_[static_cast<std::size_t>(d)] = show && !cell_->Inhib(d) && cell_->Avail(d);
    }
    if (shownMasks_ != before) update();
}

QString ctrlCell::PlaceText() const {
    if (!cell_) return {};
    const QString place = QStringLiteral("Ligne %1, colonne %2").arg(cell_->Row()).arg(cell_->Col());
    return cell_->Locked() ? place + QStringLiteral(", donnée") : place;
}

QString ctrlCell::ValueText() const {
    return lblValue_.text.isEmpty() ? QStringLiteral("vide") : lblValue_.text;
}

QString ctrlCell::CandidatesText() const {
    if (!cell_ || !lblValue_.text.isEmpty()) return {};
    QStringList candidates;
    for (int d = 1; d <= 9; ++d) {
        if (Mask(d)) candidates.append(DigitText(d));
    }
    if (noMask_) return QStringLiteral("chiffres d'aide masqués");
    if (candidates.isEmpty()) return QStringLiteral("aucun candidat");
    if (candidates.size() == 1) return QStringLiteral("candidat %1").arg(candidates.constFirst());
    const QString last = candidates.takeLast();
    return QStringLiteral("candidats %1 et %2").arg(candidates.join(QStringLiteral(", ")), last);
}

void ctrlCell::TellChange() {
    if (std::exchange(toldValue_, Value()) != Value()) AnnounceCellChange(*this);
}

void ctrlCell::mCell_Change(std::uint8_t value) {
    Trap("ctrlCell", "mCell_Change", [this, value] {
        ShowValue(value);
        ManageMasks();
    });
}

void ctrlCell::ShowValue(std::uint8_t value) {
    const QString text = value <= 9 ? DigitText(value) : QString::number(value);
    if (text == lblValue_.text && Locked() == showsGiven_) return;
    lblValue_.text = text;
    showsGiven_ = Locked();
    lblValue_.color = showsGiven_ ? lockedColor_ : unlockedColor_;
    update();
}

void ctrlCell::DigitSizes(double valueSize, double candidateSize) {
    valueSize_ = valueSize;
    candidateSize_ = candidateSize;
    update();
}

int ctrlCell::CandidateAt(const QPointF& point) const {
    const auto third = [](double place, int side) {
        return std::clamp(static_cast<int>(3 * place / std::max(1, side)), 0, 2);
    };
    return 3 * third(point.y(), height()) + third(point.x(), width()) + 1;
}

void ctrlCell::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), backColor_);
    if (current_) PaintFrame(painter);
    const QRectF area(rect());
    if (!lblValue_.text.isEmpty()) {
        painter.setPen(platform_qt::Legible(lblValue_.color, backColor_));
        DigitGlyphs::OfSize(valueSize_).Paint(painter, lblValue_.text, area);
    }
    if (shownMasks_.none()) return;
    const DigitGlyphs& candidates = DigitGlyphs::OfSize(candidateSize_);
    const auto places = CandidatePlaces(area, candidates.Metrics());
    painter.setPen(platform_qt::Legible(maskColor_, backColor_));
    for (int d = 1; d <= 9; ++d) {
        if (Mask(d)) candidates.Paint(painter, DigitText(d), places[static_cast<std::size_t>(d - 1)]);
    }
}

// Inside the lines, which lie over the cell's edges.
void ctrlCell::PaintFrame(QPainter& painter) const {
    const int side = std::min(width(), height());
    const bool flash = flashes_ % 2 == 1;
    const double inset = side < 40 ? 2 : 3;
    const double thickness = std::clamp(side / 24, 1, 4) * (flash ? 2 : 1);
    const QColor ink = flash ? QColor(0xC0, 0, 0) : QColor(0x10, 0x38, 0x80);
    QPen pen(platform_qt::Legible(ink, backColor_, platform_qt::ShapeContrast), thickness,
             hasFocus() || flash ? Qt::SolidLine : Qt::DotLine, Qt::FlatCap, Qt::MiterJoin);
    painter.setPen(pen);
    const double middle = inset + thickness / 2;
    painter.drawRect(QRectF(rect()).adjusted(middle, middle, -middle, -middle));
}

void ctrlCell::mousePressEvent(QMouseEvent* event) {
    const bool right = event->button() == Qt::RightButton;
    if (event->button() != Qt::LeftButton && !right) return QWidget::mousePressEvent(event);
    DoSelect();
    if (right && lblValue_.text.isEmpty()) {
        Trap("ctrlCell", "UserControl_MouseDown",
             [&] { holder_.ctrlCells_CandidateChosen(*this, CandidateAt(event->position())); });
    }
}

// A candidate on view that is clicked twice is entered.
void ctrlCell::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    const int digit = CandidateAt(event->position());
    if (event->button() != Qt::LeftButton || !Mask(digit)) return;
    Type(digit);
}

// The typed text comes first. Layouts that have their digits behind Shift enter them without it all the
// same, by the place of the key.
void ctrlCell::keyPressEvent(QKeyEvent* event) {
    Trap("ctrlCell", "UserControl_KeyDown", [&] {
        holder_.ctrlCells_KeyDown(*this, KeyCodeOf(event->key()), ShiftStateOf(event->modifiers()));
    });
    if (event->key() == Qt::Key_Space) platform_qt::Announce(CandidatesText());
    const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
    if (held & (Qt::AltModifier | Qt::MetaModifier)) return;
    if (held & Qt::ControlModifier) {
        const int digit = platform_qt::DigitKey(*event);
        if (digit >= 0)
            Trap("ctrlCell", "UserControl_KeyDown", [&] { holder_.ctrlCells_CandidateChosen(*this, digit); });
        return;
    }
    int digit = platform_qt::TypedDigit(*event);
    if (digit < 0 && !held) digit = platform_qt::DigitKey(*event);
    if (digit < 0 && event->text().isEmpty()) return;
    const int typed = digit >= 0 ? '0' + digit : event->text().front().unicode();
    Trap("ctrlCell", "UserControl_KeyPress", [&] { holder_.ctrlCells_Keypress(*this, typed); });
}

// Whatever brings the keyboard here makes this the current cell.
void ctrlCell::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (!current_) DoSelect();
}
