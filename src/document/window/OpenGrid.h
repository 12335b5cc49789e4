// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>

class wGrid;

// A grid window as long as it is open: none from the moment on at which it was closed, although its memory
// goes later, when the event loop comes round. Whoever keeps a grid window across anything that lets events
// happen - a dialog, a message box, a run of the engine, a return to the event loop - keeps it as this, and
// asks again afterwards.
class OpenGrid {
  public:
    OpenGrid() = default;
    explicit OpenGrid(wGrid* window);

    // Null once the window was closed. Use it at once, do not keep it.
    wGrid* Get() const;
    explicit operator bool() const { return Get() != nullptr; }
    // Only while it is open (asserted).
    wGrid* operator->() const;
    wGrid& operator*() const { return *operator->(); }

    friend bool operator==(const OpenGrid& one, const OpenGrid& other) { return one.Get() == other.Get(); }

  private:
    QPointer<wGrid> window_;
};
