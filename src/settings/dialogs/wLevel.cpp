// SPDX-License-Identifier: MIT
#include "settings/dialogs/wLevel.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "diagnostics/ErrorHandling.h"
#include "platform/qt/DialogParts.h"
#include "settings/HelpContexts.h"
#include "settings/Settings.h"
#include "settings/dialogs/LevelOptions.h"

wLevel::wLevel(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      levels_(new LevelOptions(this, 16)),
      chkLevelAsk_(new QCheckBox(QStringLiteral("Ne plus demander"), this)) {
    setObjectName(QStringLiteral("wLevel"));
    setWindowTitle(QStringLiteral("Nouvelle grille"));
    chkLevelAsk_->setObjectName(QStringLiteral("chkLevelAsk"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(8);
    layout->addWidget(new QLabel(QStringLiteral("Niveau de difficulté :"), this));
    layout->addWidget(levels_);
    layout->addSpacing(8);
    layout->addWidget(chkLevelAsk_);
    layout->addSpacing(10);
    layout->addWidget(platform_qt::CommandRow(this, [this](int index) { cmdCommands_Click(index); }));
    layout->setSizeConstraint(QLayout::SetFixedSize);
    platform_qt::HelpOnF1(*this, [] { return HelpContext::Generer; });
    Form_Load();
}

void wLevel::Form_Load() {
    Trap("wLevel", "Form_Load", [this] {
        const Settings::IniSnapshot settings;
        chkLevelAsk_->setChecked(Settings::Read(Settings::LevelAsk, settings));
        levels_->Load(settings);
        levels_->setFocus();
    });
}

void wLevel::cmdCommands_Click(int index) {
    Trap("wLevel", "cmdCommands_Click", [this, index] {
        if (index == 1) {
            Settings::ProfileChanges changes;
            Settings::Write(changes, Settings::LevelAsk, chkLevelAsk_->isChecked());
            levels_->Save(changes);
            changes.Commit();
            accepted_ = true;
        }
        hide();
    });
}
