// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "settings/dialogs/wCancel.h"

// One run of the engine: shows the progress window, lets only it and the run's own message boxes react to
// the user, and puts everything back at its end, whatever ends it. There is one at a time.
class BusyGuard : public QObject {
    Q_OBJECT

  public:
    // `owner`: any widget of the window that the progress window belongs to.
    explicit BusyGuard(QWidget* owner);
    ~BusyGuard() override;

    // A run is under way. Whoever would start another one, close a window or quit beeps instead.
    static bool Active() { return Current() != nullptr; }
    // None while no run is under way.
    static BusyGuard* Current();

    // What the run shows its progress in, and is cancelled by.
    platform::ProgressWindow& Progress() { return progress_; }
    void Cancel() { progress_.cmdCancel_Click(); }
    // False once the user pressed the progress window's button, or closed it.
    bool StillVisible() const { return progress_.IsVisible(); }

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;

  private:
    wCancel progress_;
};

// True, and a beep, while a run is under way.
bool RefusedWhileBusy();
