// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/window/BusyGuard.h"
#include "platform/Host.h"
#include "shell/wMain.h"

template <class Routine>
void wMain::WithActiveGrid(const char* routine, Routine&& command) {
    Trap("wMain", routine, [&] {
        if (RefusedWhileBusy()) return;
        const OpenGrid grid = ActiveGrid();
        if (!grid) return platform::TheHost().messages->Beep();
        std::forward<Routine>(command)(grid);
    });
}
