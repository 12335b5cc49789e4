// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

// A panel of the status bar. The keyboard can be led to it, so that it is read out; it shows that by a frame.
class StatusPanel : public QLabel {
    Q_OBJECT

  public:
    StatusPanel(QWidget* parent, const QString& name);

    // While the text keeps its size the window around it is not laid out anew: at most entries only a number
    // is another one.
    void Show(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void FreeSize();
};
