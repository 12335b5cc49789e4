// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QTimer;

// The picture shown at start-up, closed by its timer alone; the keyboard stays where it is. Shown as the
// about box its timer is off, and a click or Escape closes it. Deletes itself when closed.
class wSplash : public QWidget {
    Q_OBJECT

  public:
    explicit wSplash(QWidget* owner);

    QTimer& tmrClose() { return *tmrClose_; }
    // Shows the window in the middle of its owner's screen.
    void Present();
    // Makes it the about box.
    void StayOpen();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QLabel* lblVersion_;
    QTimer* tmrClose_;
};
