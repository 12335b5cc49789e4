// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "settings/Settings.h"

class QButtonGroup;

// The levels to choose from, one below the other.
class LevelOptions : public QWidget {
    Q_OBJECT

  public:
    LevelOptions(QWidget* parent, int indent);

    // Selects the stored level, none when another number is stored, and lets the focus go there.
    void Load(const Settings::IniSnapshot& settings);
    // Without a selected level nothing is written.
    void Save(Settings::ProfileChanges& changes) const;

  private:
    QButtonGroup* optLevelValue_;
};
