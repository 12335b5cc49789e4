// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <string>

#include "settings/Settings.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// As the user does it: 0 with the button, 1 with the close box, 2 with Escape.
inline void Leave(QWidget& dialog, int way, const char* button = "cmdCommands(0)") {
    dialog.show();
    if (way == 0) QTest::mouseClick(&Child<QPushButton>(dialog, button), Qt::LeftButton);
    if (way == 1) dialog.close();
    if (way == 2) QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

inline void PressOk(QDialog& dialog) {
    Leave(dialog, 0, "cmdCommands(1)");
}

inline std::string Stored(std::string_view key) {
    return IniParamProcs::ReadIniParam("Options", key, "missing");
}
