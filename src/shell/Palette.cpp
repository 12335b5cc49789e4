// SPDX-License-Identifier: MIT
#include "shell/Palette.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QGroupBox>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "diagnostics/ErrorHandling.h"
#include "platform/qt/Contrast.h"
#include "platform/qt/QtHost.h"

namespace {

constexpr int margin = 10;       // pixels, around the frames and between the buttons
constexpr int usualWidth = 150;  // of the panel
constexpr int lowestButton = 12;

QColor FillOf(DigitState state) {
    switch (state) {
        case DigitState::Allowed:
            return platform_qt::FromLowRed(0x00CC00);
        case DigitState::Excluded:
            return platform_qt::FromLowRed(0x0000CC);
        default:
            return platform_qt::FromLowRed(0x888888);
    }
}

// A tick in the lower right corner for an allowed digit, a stroke across the button for an excluded one.
void PaintMark(QPainter& painter, const QRectF& area, DigitState state, const QColor& ink) {
    const double unit = std::min(area.width(), area.height()) / 10;
    painter.setPen(QPen(ink, std::max(1.5, unit * 0.7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (state == DigitState::Excluded) {
        painter.drawLine(area.bottomLeft() + QPointF(1.5 * unit, -1.5 * unit),
                         area.topRight() + QPointF(-1.5 * unit, 1.5 * unit));
    } else if (state == DigitState::Allowed) {
        const QPointF corner = area.bottomRight() - QPointF(unit, unit);
        painter.drawPolyline(
            QPolygonF({corner + QPointF(-2.6 * unit, -1.1 * unit), corner + QPointF(-1.7 * unit, -0.2 * unit),
                       corner + QPointF(0, -2.2 * unit)}));
    }
}

// A frame with its caption above. The desktop's own frame is a picture that the toolkit stretches whenever it
// paints: 0.8 ms at every step of a resize.
class Frame : public QGroupBox {
  public:
    using QGroupBox::QGroupBox;

    int CaptionHeight() const { return std::max(18, fontMetrics().height() + 2); }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.drawText(QRect(0, 0, width(), CaptionHeight()), Qt::AlignLeft | Qt::AlignVCenter, title());
        const QColor ground = palette().color(QPalette::Window);
        painter.setPen(platform_qt::Legible(ground, ground, 1.25));
        painter.setBrush(ground.darker(102));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, CaptionHeight() + 0.5, -0.5, -0.5), 2, 2);
    }
};

// The names are made when they are asked for: at every move eighteen of them change.
class ButtonAccessible : public QAccessibleWidget {
  public:
    explicit ButtonAccessible(PaletteButton* button) : QAccessibleWidget(button, QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return Button().SpokenName();
        if (kind == QAccessible::Description) return Button().SpokenState();
        return QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) return QAccessibleWidget::doAction(action);
        // Later: a message may come of it, and who asked must not wait for its end.
        QMetaObject::invokeMethod(&Button(), &QAbstractButton::click, Qt::QueuedConnection);
    }

  private:
    PaletteButton& Button() const { return *static_cast<PaletteButton*>(object()); }
};

QAccessibleInterface* MakeButtonAccessible(const QString& /*className*/, QObject* object) {
    auto* button = qobject_cast<PaletteButton*>(object);
    return button ? new ButtonAccessible(button) : nullptr;
}

}  // namespace

PaletteButton::PaletteButton(QWidget* parent, Column column, int index)
    : QAbstractButton(parent), column_(column), index_(index) {
    setFocusPolicy(Qt::NoFocus);
    const bool value = column == Column::Value;
    setObjectName(QStringLiteral("%1(%2)")
                      .arg(value ? QStringLiteral("cmdValue") : QStringLiteral("cmdMask"))
                      .arg(index));
    if (index == 0) {
        setIcon(QIcon(QStringLiteral(":/icons/Chiffre_Clear.svg")));
        setToolTip(value ? QStringLiteral("Effacement de la valeur de la cellule active")
                         : QStringLiteral("Effacement des inhibitions de la cellule active"));
        return;
    }
    setText(QString::number(index));
    setToolTip(value ? QStringLiteral("Affectation de la valeur %1 à la cellule active").arg(index)
                     : QStringLiteral("Inhibition de la valeur %1pour la cellule active").arg(index));
}

void PaletteButton::State(DigitState state) {
    if (state == state_) return;
    state_ = state;
    update();
}

QString PaletteButton::SpokenName() const {
    if (column_ == Column::Value) {
        return index_ == 0 ? QStringLiteral("Effacer la valeur") : QStringLiteral("Mettre %1").arg(index_);
    }
    if (index_ == 0) return QStringLiteral("Réadmettre tous les chiffres");
    return (state_ == DigitState::Excluded ? QStringLiteral("Réadmettre le %1")
                                           : QStringLiteral("Exclure le %1"))
        .arg(index_);
}

QString PaletteButton::SpokenState() const {
    if (state_ == DigitState::Excluded) return QStringLiteral("%1 exclu").arg(index_);
    if (state_ == DigitState::Neutral) return {};
    return column_ == Column::Value ? QStringLiteral("valeur de la case")
                                    : QStringLiteral("%1 possible").arg(index_);
}

// The cell's value keeps its colour although nothing can be done with it.
QColor PaletteButton::Fill() const {
    QColor fill = FillOf(state_);
    if (!isEnabled() && state_ == DigitState::Neutral) {
        return platform_qt::Mixed(fill, palette().color(QPalette::Window), 64);
    }
    if (isDown()) return fill.darker(130);
    return underMouse() && isEnabled() ? fill.lighter(112) : fill;
}

void PaletteButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5);
    const QColor fill = Fill();
    const bool faded = !isEnabled() && state_ == DigitState::Neutral;
    const QColor ink =
        faded ? platform_qt::Legible(FillOf(state_), fill, platform_qt::ShapeContrast)
              : platform_qt::Legible(state_ == DigitState::Excluded ? Qt::white : Qt::black, fill);
    painter.setPen(faded ? QPen(Qt::NoPen) : QPen(fill.darker(180), 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(area, 4, 4);
    PaintMark(painter, area, state_, ink);
    if (hasFocus()) {
        painter.setPen(QPen(platform_qt::FocusColor(palette()), 3));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 5, 5);
    }
    if (!icon().isNull()) {
        const int side = static_cast<int>(std::min(area.width(), area.height()) * 0.7);
        QRect place(0, 0, side, side);
        place.moveCenter(rect().center());
        icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        return;
    }
    painter.setFont(font());
    painter.setPen(ink);
    painter.drawText(area, Qt::AlignCenter, text());
}

void PaletteButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            return emit Arrow(-1, 0);
        case Qt::Key_Right:
            return emit Arrow(1, 0);
        case Qt::Key_Up:
            return emit Arrow(0, -1);
        case Qt::Key_Down:
            return emit Arrow(0, 1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return click();
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

Palette::Palette(QWidget* parent)
    : QWidget(parent),
      frmValue_(new Frame(QStringLiteral("Valeur"), this)),
      frmMask_(new Frame(QStringLiteral("Masque"), this)) {
    QAccessible::installFactory(MakeButtonAccessible);
    setObjectName(QStringLiteral("picPalette"));
    frmValue_->setObjectName(QStringLiteral("frmValue"));
    frmMask_->setObjectName(QStringLiteral("frmMask"));
    for (int i = 0; i <= 9; ++i) {
        columns_[0][static_cast<std::size_t>(i)] =
            new PaletteButton(frmValue_, PaletteButton::Column::Value, i);
        columns_[1][static_cast<std::size_t>(i)] =
            new PaletteButton(frmMask_, PaletteButton::Column::Mask, i);
        connect(&cmdValue(i), &QAbstractButton::clicked, this, [this, i] { emit cmdValue_Clicked(i); });
        connect(&cmdMask(i), &QAbstractButton::clicked, this, [this, i] { emit cmdMask_Clicked(i); });
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            connect(&Button(column, i), &PaletteButton::Arrow, this,
                    [this, column, i](int columns, int rows) { Walk(column, i, columns, rows); });
        }
    }
}

void Palette::PlaceTabStops(bool hasCell) {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        int& stop = stops_[column];
        if (!Button(column, stop).isEnabled()) stop = 0;  // the clear button always is
        for (int row = 0; row <= 9; ++row) {
            Button(column, row).setFocusPolicy(hasCell && row == stop ? Qt::TabFocus : Qt::NoFocus);
        }
    }
}

PaletteButton* Palette::FirstStop() const {
    PaletteButton& stop = Button(0, stops_[0]);
    return stop.focusPolicy() == Qt::NoFocus ? nullptr : &stop;
}

void Palette::Walk(std::size_t column, int row, int columns, int rows) {
    if (columns != 0) column = columns > 0 ? 1 : 0;
    row += rows;
    // Beside, what is of no use gives way to what is above it.
    while (row >= 0 && row <= 9 && !Button(column, row).isEnabled()) row += rows > 0 ? 1 : -1;
    if (row < 0 || row > 9) return;
    stops_[column] = row;
    PlaceTabStops(true);
    Button(column, row).setFocus(Qt::OtherFocusReason);
}

int Palette::CaptionHeight() const {
    return std::max(18, fontMetrics().height() + 2);
}

QSize Palette::sizeHint() const {
    return {minimumSizeHint().width(), 480};
}

QSize Palette::minimumSizeHint() const {
    const int caption = std::max(fontMetrics().horizontalAdvance(frmValue_->title()),
                                 fontMetrics().horizontalAdvance(frmMask_->title()));
    return {std::max(usualWidth, 2 * (caption + margin) + 3 * margin),
            2 * margin + CaptionHeight() + 10 * (margin + lowestButton)};
}

void Palette::resizeEvent(QResizeEvent* /*event*/) {
    Trap("wMain", "picPalette_Resize", [this] { picPalette_Resize(); });
}

void Palette::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange || !columns_[1].back()) return;
    updateGeometry();
    Trap("wMain", "picPalette_Resize", [this] { picPalette_Resize(); });
}

void Palette::picPalette_Resize() {
    const int frameWidth = (width() - 3 * margin) / 2;
    const int frameHeight = height() - 2 * margin;
    if (frameWidth < 0) return;
    frmValue_->setGeometry(margin, margin, frameWidth, frameHeight);
    frmMask_->setGeometry(2 * margin + frameWidth, margin, frameWidth, frameHeight);
    PlaceButtons(*frmValue_, columns_[0]);
    PlaceButtons(*frmMask_, columns_[1]);
}

void Palette::PlaceButtons(const QGroupBox& frame, const Buttons& buttons) const {
    const int buttonHeight = (frame.height() - CaptionHeight() - 10 * margin) / 10;
    const int buttonWidth = frame.width() - 2 * margin;
    QFont digits(font());
    digits.setPixelSize(std::max(1, std::min(buttonHeight, buttonWidth) * 8 / 10));
    int top = CaptionHeight() + margin / 2;
    for (PaletteButton* button : buttons) {
        button->setGeometry(margin, top, buttonWidth, buttonHeight);
        button->setFont(digits);
        top += buttonHeight + margin;
    }
}
