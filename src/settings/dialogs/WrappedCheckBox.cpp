// SPDX-License-Identifier: MIT
#include "settings/dialogs/WrappedCheckBox.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace {
constexpr int textFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int preferredWidth = 380;  // pixels
}  // namespace

WrappedCheckBox::WrappedCheckBox(const QString& text, QWidget* parent) : QCheckBox(text, parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrappedCheckBox::IndicatorSpace() const {
    return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
           style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
}

int WrappedCheckBox::heightForWidth(int width) const {
    const QRect room(0, 0, std::max(1, width - IndicatorSpace()), 10000);
    const int textHeight = fontMetrics().boundingRect(room, textFlags, text()).height();
    return std::max(textHeight, style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)) + 4;
}

QSize WrappedCheckBox::sizeHint() const {
    return {preferredWidth, heightForWidth(preferredWidth)};
}

void WrappedCheckBox::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QRect whole = option.rect;
    // The indicator stands beside the first line.
    option.text.clear();
    option.rect.setHeight(std::max(fontMetrics().lineSpacing(),
                                   style()->pixelMetric(QStyle::PM_IndicatorHeight, &option, this)) +
                          4);
    painter.drawControl(QStyle::CE_CheckBox, option);
    const QRect textPlace = whole.adjusted(IndicatorSpace(), 2, 0, 0);
    painter.drawItemText(textPlace, textFlags, option.palette, isEnabled(), text(), foregroundRole());
}
