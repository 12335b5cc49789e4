// SPDX-License-Identifier: MIT
#include "settings/dialogs/LevelOptions.h"

#include <QButtonGroup>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/qt/QtHost.h"
#include "settings/Levels.h"

LevelOptions::LevelOptions(QWidget* parent, int indent)
    : QWidget(parent), optLevelValue_(new QButtonGroup(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(indent, 0, 0, 0);
    layout->setSpacing(8);
    for (const Settings::Level& level : Settings::Levels) {
        auto* option = new QRadioButton(platform_qt::FromUtf8(level.caption), this);
        option->setObjectName(QStringLiteral("optLevelValue(%1)").arg(level.value));
        optLevelValue_->addButton(option, level.value);
        layout->addWidget(option);
    }
}

void LevelOptions::Load(const Settings::IniSnapshot& settings) {
    const double level = Settings::Read(Settings::LevelValue, settings);
    for (QAbstractButton* option : optLevelValue_->buttons()) {
        if (optLevelValue_->id(option) != level) continue;
        option->setChecked(true);
        setFocusProxy(option);
    }
}

void LevelOptions::Save(Settings::ProfileChanges& changes) const {
    const int level = optLevelValue_->checkedId();
    if (level >= 0) Settings::Write(changes, Settings::LevelValue, level);
}
