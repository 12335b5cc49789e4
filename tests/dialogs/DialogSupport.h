#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <string>

#include "settings/Settings.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// 1 "Ok", 0 "Annuler", as the user presses them.
inline void Press(QDialog& dialog, int index) {
    dialog.show();
    QTest::mouseClick(&Child<QPushButton>(dialog, QStringLiteral("cmdCommands(%1)").arg(index)),
                      Qt::LeftButton);
    EXPECT_FALSE(dialog.isVisible());
}

// Without "Ok": the button, the close box, Escape.
inline void Leave(QDialog& dialog, int way) {
    dialog.show();
    if (way == 0) return Press(dialog, 0);
    way == 1 ? static_cast<void>(dialog.close()) : QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

// Every part of a window has room of its own in it.
inline void ExpectLaidOut(const QWidget& window) {
    QRegion taken;
    for (const auto* part : window.findChildren<QWidget*>()) {
        if (!part->isVisible() || !part->findChildren<QWidget*>().empty()) continue;
        const QRect place(part->mapTo(&window, QPoint()), part->size());
        EXPECT_TRUE(window.rect().contains(place)) << part->objectName().toStdString();
        EXPECT_FALSE(taken.intersects(place)) << part->objectName().toStdString();
        taken += place;
    }
}

inline std::string Stored(std::string_view key, std::string_view section = "Options") {
    return IniParamProcs::ReadIniParam(section, key, "missing");
}
