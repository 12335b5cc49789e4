// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "document/RecoveryStore.h"
#include "document/window/OpenGrid.h"

class wGrid;

// Keeps the modified grids in recovery files: half a second after a change, without a wait for the disk. A
// grid's file goes when the grid is saved or its window closed. Nothing runs while nothing changes.
class Recovery : public QObject {
    Q_OBJECT

  public:
    // Where the recovery files of all running copies are; empty when there is no such place.
    static std::string Folder();

    Recovery();

    // Looks after the grid for as long as its window is open.
    void Watch(wGrid& grid);
    // How often a grid changed.
    std::uint64_t Changes() const { return changes_; }
    // Everything there is to keep is on disk now. False: something is not.
    bool KeepNow();
    // For an end without questions: what is not saved is kept, and stays when this object goes.
    void KeepForNextStart();

  private:
    void Changed(int grid);
    void Keep();
    void Forget(int grid);

    RecoveryStore store_;
    std::map<int, OpenGrid> grids_;
    std::set<int> changed_;
    std::uint64_t changes_ = 0;
    QTimer timer_;
};
