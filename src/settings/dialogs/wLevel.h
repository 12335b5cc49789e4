// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class LevelOptions;
class QCheckBox;

// Asks the level of a new puzzle. Made anew for every question; only "Ok" writes the settings.
class wLevel : public QDialog {
    Q_OBJECT

  public:
    explicit wLevel(QWidget* owner);

    // True only after "Ok".
    bool Accepted() const { return accepted_; }

  public slots:
    void cmdCommands_Click(int index);  // 1 "Ok", 0 "Annuler"

  private:
    void Form_Load();

    LevelOptions* levels_;
    QCheckBox* chkLevelAsk_;
    bool accepted_ = false;
};
