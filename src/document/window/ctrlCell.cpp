#include "document/window/ctrlCell.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "diagnostics/ErrorHandling.h"
#include "document/window/ctrlCellAccessible.h"
#include "engine/clsCell.h"
#include "platform/qt/QtHost.h"
#include "printing/CandidatePlaces.h"

namespace {

constexpr double valueRatio = 0.8;        // of the view's height
constexpr double maskRatio = 1.0 / 12.0;  // of the view's height
// Below this many pixels nobody reads a candidate, so a view of ordinary size draws its candidates larger
// than the ratio says, as far as three rows of them fit.
constexpr double legibleMask = 11;

QFont DigitFont(double pixelSize) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    return font;
}

void PaintLabel(QPainter& painter, const CellLabel& label) {
    painter.setPen(label.color);
    painter.drawText(label.place, Qt::AlignCenter | Qt::TextDontClip, label.text);
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
        case Qt::Key_Delete:
            return KeyCode::Delete;
        default:
            return 0;
    }
}

int ShiftStateOf(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0) |
           (modifiers & Qt::AltModifier ? 4 : 0);
}

}  // namespace

ctrlCell::ctrlCell(QWidget* parent, const ColorTable::Colors& colors)
    : QWidget(parent), backColor_(platform_qt::FromLowRed(colors[0])) {
    InstallCellAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    lockedColor_ = platform_qt::FromLowRed(colors[3]);
    unlockedColor_ = platform_qt::FromLowRed(colors[4]);
    lblValue_.color = unlockedColor_;
    for (int d = 1; d <= 9; ++d) {
        CellLabel& label = lblMask_[static_cast<std::size_t>(d - 1)];
        label.text = QString::number(d);
        label.color = platform_qt::FromLowRed(colors[6]);
        label.visible = false;
    }
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
}

void ctrlCell::BackColor(const QColor& color) {
    if (backColor_ == color) return;
    backColor_ = color;
    update();
}

std::uint8_t ctrlCell::Value() const {
    return cell_ ? cell_->Value() : std::uint8_t{0};
}

void ctrlCell::Value(std::uint8_t value) {
    if (!cell_) throw RuntimeError(ErrorNumber::ObjectNotSet);
    cell_->Value(value);  // its Change event updates the labels
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
    return d >= 1 && d <= 9 && lblMask(d).visible;
}

void ctrlCell::Mask(int d, bool visible) {
    if (d < 1 || d > 9) return;
    lblMask_[static_cast<std::size_t>(d - 1)].visible = visible;
    update();
}

void ctrlCell::DoSelect() {
    emit Click();
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
    for (CellLabel& label : lblMask_) label.color = mask;
    SetColors(background, unlocked, locked);
}

void ctrlCell::ManageMasks() {
    const bool show = lblValue_.text.isEmpty() && !noMask_ && cell_;
    bool changed = false;
    for (int d = 1; d <= 9; ++d) {
        CellLabel& label = lblMask_[static_cast<std::size_t>(d - 1)];
        const bool visible = show && !cell_->Inhib(d) && cell_->Avail(d);
        changed = changed || visible != label.visible;
        label.visible = visible;
    }
    if (!changed) return;
    update();
    AnnounceCellChange(*this);
}

QString ctrlCell::PlaceText() const {
    if (!cell_) return {};
    return QStringLiteral("Ligne %1, colonne %2").arg(cell_->Row()).arg(cell_->Col());
}

QString ctrlCell::StateText() const {
    if (!cell_) return {};
    if (!lblValue_.text.isEmpty()) {
        return cell_->Locked() ? QStringLiteral("%1, donnée verrouillée").arg(lblValue_.text)
                               : lblValue_.text;
    }
    QStringList candidates;
    for (const CellLabel& label : lblMask_) {
        if (label.visible) candidates.append(label.text);
    }
    if (candidates.isEmpty()) return QStringLiteral("vide");
    if (candidates.size() == 1) return QStringLiteral("vide, candidat %1").arg(candidates.constFirst());
    const QString last = candidates.takeLast();
    return QStringLiteral("vide, candidats %1 et %2").arg(candidates.join(QStringLiteral(", ")), last);
}

void ctrlCell::mCell_Change(std::uint8_t value) {
    Trap("ctrlCell", "mCell_Change", [this, value] {
        ShowValue(value);
        ManageMasks();
    });
}

void ctrlCell::ShowValue(std::uint8_t value) {
    const QString text = value == 0 ? QString() : QString::number(value);
    if (text == lblValue_.text && Locked() == showsGiven_) return;
    lblValue_.text = text;
    showsGiven_ = Locked();
    lblValue_.color = showsGiven_ ? lockedColor_ : unlockedColor_;
    update();
    AnnounceCellChange(*this);
}

void ctrlCell::Relocate() {
    const double w = width();
    const double h = height();
    lblValue_.pixelSize = valueRatio * h;
    lblValue_.place = QRectF(0, 0, w, h);

    const double maskSize = std::max(maskRatio * h, std::min(legibleMask, h / 4));
    const auto places = CandidatePlaces(lblValue_.place, QFontMetricsF(DigitFont(maskSize)));
    for (std::size_t i = 0; i < places.size(); ++i) {
        lblMask_[i].pixelSize = maskSize;
        lblMask_[i].place = places[i];
    }
}

void ctrlCell::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), backColor_);
    if (lblValue_.visible && !lblValue_.text.isEmpty()) {
        painter.setFont(DigitFont(lblValue_.pixelSize));
        PaintLabel(painter, lblValue_);
    }
    painter.setFont(DigitFont(lblMask_.front().pixelSize));
    for (const CellLabel& label : lblMask_) {
        if (label.visible) PaintLabel(painter, label);
    }
}

void ctrlCell::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    emit Click();
}

void ctrlCell::keyPressEvent(QKeyEvent* event) {
    Trap("ctrlCell", "UserControl_KeyDown",
         [&] { emit KeyDown(KeyCodeOf(event->key()), ShiftStateOf(event->modifiers())); });
    // The typed text, not the key: digits come out of the keypad and of every keyboard layout alike.
    const bool command =
        (event->modifiers() & Qt::ControlModifier) && !(event->modifiers() & Qt::AltModifier);
    if (event->text().isEmpty() || command) return;
    const char16_t typed = event->text().front().unicode();
    Trap("ctrlCell", "UserControl_KeyPress", [&] { emit Keypress(typed); });
}

void ctrlCell::resizeEvent(QResizeEvent* /*event*/) {
    Trap("ctrlCell", "UserControl_Resize", [this] { Relocate(); });
}

void ctrlCell::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    // Walking through the cells with the Tab key selects them as the arrows do.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) emit Click();
}
