#pragma once

#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/BusyGuard.h"
#include "platform/Host.h"
#include "shell/wMain.h"

template <class Command>
void wMain::WithActiveGrid(const char* routine, Command&& command) {
    Trap("wMain", routine, [&] {
        if (RefusedWhileBusy()) return;
        wGrid* grid = ActiveGrid();
        if (!grid) return platform::TheHost().messages->Beep();
        std::forward<Command>(command)(*grid);
    });
}
