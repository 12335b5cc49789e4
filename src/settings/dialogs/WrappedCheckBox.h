// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

// A check box whose caption is broken into lines where it is too long for its width.
class WrappedCheckBox : public QCheckBox {
    Q_OBJECT

  public:
    WrappedCheckBox(const QString& text, QWidget* parent);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {160, heightForWidth(sizeHint().width())}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int IndicatorSpace() const;
};
