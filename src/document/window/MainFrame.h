// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class ctrlCell;

// What a grid window asks of the main window that holds it.
class MainFrame {
  public:
    virtual ~MainFrame() = default;

    // The three modes, kept as check marks of the main window's menu.
    virtual bool InitialisationMode() const = 0;
    virtual bool MasksHidden() const = 0;
    virtual bool ManualMasks() const = 0;

    // The cell that the palette and the keyboard work on; borrowed, may be none. Setting it refreshes the
    // palette.
    virtual ctrlCell* Cell() const = 0;
    virtual void Cell(ctrlCell* cell) = 0;

    // Value entry: 1..9 puts the digit into the current cell, 0 clears it; a refused digit beeps.
    virtual void cmdValue_Click(int index) = 0;
    // Excludes digit 1..9 from the current cell or readmits it, 0 readmits all; beeps where the palette's
    // button is of no use.
    virtual void ToggleCandidate(int digit) = 0;
    // The palette shows the current cell's state again, for changes made behind its back.
    virtual void UpdateColors() = 0;
    // Where the active grid stands is shown again, and said where that is news.
    virtual void ShowStanding() = 0;

    // The status panel "path" and the main window's caption; empty texts when no document is active.
    virtual void ShowDocument(const QString& path, const QString& caption) = 0;
};
