#include "shell/Palette.h"

#include <QGroupBox>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "diagnostics/ErrorHandling.h"
#include "platform/qt/QtHost.h"

namespace {

constexpr int margin = 10;         // pixels, around the frames and between the buttons
constexpr int captionHeight = 18;  // room for a frame's caption

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
void PaintMark(QPainter& painter, const QRectF& area, DigitState state) {
    const double unit = std::min(area.width(), area.height()) / 10;
    painter.setPen(QPen(Qt::white, std::max(1.5, unit * 0.7), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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

PaletteButton* MakePaletteButton(QGroupBox* frame, const QString& name, int index) {
    auto* button = new PaletteButton(frame);
    button->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(index));
    if (index > 0) {
        button->setText(QString::number(index));
    } else {
        button->setIcon(QIcon(QStringLiteral(":/icons/Chiffre_Clear.svg")));
    }
    return button;
}

void Describe(PaletteButton& button, const QString& text) {
    button.setToolTip(text);
    button.setAccessibleName(text);
}

}  // namespace

void PaletteButton::State(DigitState state) {
    if (state == state_) return;
    state_ = state;
    update();
}

void PaletteButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    QColor fill = FillOf(state_);
    if (isDown())
        fill = fill.darker(130);
    else if (underMouse() && isEnabled())
        fill = fill.lighter(112);
    painter.setPen(
        QPen(hasFocus() ? palette().color(QPalette::Highlight) : fill.darker(150), hasFocus() ? 3 : 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(area, 4, 4);
    PaintMark(painter, area, state_);
    if (!icon().isNull()) {
        const int side = static_cast<int>(std::min(area.width(), area.height()) * 0.7);
        QRect place(0, 0, side, side);
        place.moveCenter(rect().center());
        icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        return;
    }
    painter.setFont(font());
    painter.setPen(isEnabled() ? Qt::white : QColor(255, 255, 255, 110));
    painter.drawText(area, Qt::AlignCenter, text());
}

Palette::Palette(QWidget* parent)
    : QWidget(parent),
      frmValue_(new QGroupBox(QStringLiteral("Valeur"), this)),
      frmMask_(new QGroupBox(QStringLiteral("Masque"), this)) {
    setObjectName(QStringLiteral("picPalette"));
    frmValue_->setObjectName(QStringLiteral("frmValue"));
    frmMask_->setObjectName(QStringLiteral("frmMask"));
    for (int i = 0; i <= 9; ++i) {
        values_[static_cast<std::size_t>(i)] = MakePaletteButton(frmValue_, QStringLiteral("cmdValue"), i);
        masks_[static_cast<std::size_t>(i)] = MakePaletteButton(frmMask_, QStringLiteral("cmdMask"), i);
        connect(&cmdValue(i), &QAbstractButton::clicked, this, [this, i] { emit cmdValue_Clicked(i); });
        connect(&cmdMask(i), &QAbstractButton::clicked, this, [this, i] { emit cmdMask_Clicked(i); });
        if (i == 0) continue;
        Describe(cmdValue(i), QStringLiteral("Affectation de la valeur %1 à la cellule active").arg(i));
        Describe(cmdMask(i), QStringLiteral("Inhibition de la valeur %1pour la cellule active").arg(i));
    }
    Describe(cmdValue(0), QStringLiteral("Effacement de la valeur de la cellule active"));
    Describe(cmdMask(0), QStringLiteral("Effacement des inhibitions de la cellule active"));
}

void Palette::resizeEvent(QResizeEvent* /*event*/) {
    Trap("wMain", "picPalette_Resize", [this] {
        const int frameWidth = (width() - 3 * margin) / 2;
        const int frameHeight = height() - 2 * margin;
        if (frameWidth < 0) return;
        frmValue_->setGeometry(margin, margin, frameWidth, frameHeight);
        frmMask_->setGeometry(2 * margin + frameWidth, margin, frameWidth, frameHeight);
        PlaceButtons(*frmValue_, values_);
        PlaceButtons(*frmMask_, masks_);
    });
}

void Palette::PlaceButtons(const QGroupBox& frame, const Buttons& buttons) {
    const int buttonHeight = (frame.height() - captionHeight - 10 * margin) / 10;
    const int buttonWidth = frame.width() - 2 * margin;
    QFont digits(font());
    digits.setPixelSize(std::max(1, std::min(buttonHeight, buttonWidth) * 8 / 10));
    int top = captionHeight + margin / 2;
    for (PaletteButton* button : buttons) {
        button->setGeometry(margin, top, buttonWidth, buttonHeight);
        button->setFont(digits);
        top += buttonHeight + margin;
    }
}
