#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <string>

#include "settings/Settings.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// "Ok", as the user presses it.
inline void PressOk(QDialog& dialog) {
    dialog.show();
    QTest::mouseClick(&Child<QPushButton>(dialog, "cmdCommands(1)"), Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

// Without "Ok": 0 the button, 1 the close box, 2 Escape.
inline void Leave(QWidget& dialog, int way, const char* button = "cmdCommands(0)") {
    dialog.show();
    if (way == 0) QTest::mouseClick(&Child<QPushButton>(dialog, button), Qt::LeftButton);
    if (way == 1) dialog.close();
    if (way == 2) QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

inline std::string Stored(std::string_view key) {
    return IniParamProcs::ReadIniParam("Options", key, "missing");
}
