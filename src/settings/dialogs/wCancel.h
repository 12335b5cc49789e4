#pragma once

#include <QWidget>

#include "platform/ProgressWindow.h"

class QProgressBar;
class QPushButton;
class QTimer;

// The small window of a long run. Its button, its close box and Escape only hide it; the run looks for that.
// There is one at a time: Owned by whoever starts the run, through a ProgressScope.
class wCancel : public QWidget, public platform::ProgressWindow {
    Q_OBJECT

  public:
    explicit wCancel(QWidget* owner);

    void Progress(double percent) override;
    bool IsVisible() const override { return isVisible(); }

  public slots:
    void cmdCancel_Click();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QProgressBar* pbProgress_;
    QPushButton* cmdCancel_;
    QTimer* redraw_;
    double percent_ = 0;
};
