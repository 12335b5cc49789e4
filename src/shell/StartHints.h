// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

// What the empty area says: how to begin, each way with its key. Its lines are links that name a command.
class StartHints : public QLabel {
    Q_OBJECT

  public:
    explicit StartHints(QWidget* parent);

    // In its parent.
    void Center();

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Fill();
};
