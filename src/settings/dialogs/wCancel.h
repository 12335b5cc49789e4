// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "platform/ProgressWindow.h"

class QProgressBar;
class QPushButton;
class QTimer;

// The small window of a long run. Its button, its close box and Escape only hide it; the run looks for that.
// There is one at a time, owned by whoever starts the run.
class wCancel : public QWidget, public platform::ProgressWindow {
    Q_OBJECT

  public:
    explicit wCancel(QWidget* owner);

    // From now on it is visible for the run. On the screen it comes only when the run lasts: most take a few
    // milliseconds, and a window that comes and goes in that time is a flicker.
    void Open();
    void Progress(double percent) override;
    bool IsVisible() const override { return open_; }

  public slots:
    void cmdCancel_Click();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    QProgressBar* pbProgress_;
    QPushButton* cmdCancel_;
    QTimer* redraw_;
    QTimer* appear_;
    bool open_ = false;
    double percent_ = 0;
};
