#include "settings/dialogs/wLevel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>
#include <string>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "settings/Conversions.h"
#include "settings/IniParamProcs.h"

namespace {

using namespace IniParamProcs;

constexpr std::array<std::pair<int, const char*>, 4> levels{
    {{7, "Débutant"}, {6, "Facile"}, {5, "Moyen"}, {4, "Difficile"}}};

}  // namespace

wLevel::wLevel(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      optLevelValue_(new QButtonGroup(this)),
      chkLevelAsk_(new QCheckBox(QStringLiteral("Ne plus demander"), this)) {
    setObjectName(QStringLiteral("wLevel"));
    setWindowTitle(QStringLiteral("Nouvelle grille"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->setSpacing(8);
    layout->addWidget(new QLabel(QStringLiteral("Niveau de difficulté :"), this));
    auto* options = new QVBoxLayout;
    options->setContentsMargins(16, 0, 0, 8);
    for (const auto& [value, caption] : levels) {
        auto* option = new QRadioButton(QString::fromUtf8(caption), this);
        option->setObjectName(QStringLiteral("optLevelValue(%1)").arg(value));
        optLevelValue_->addButton(option, value);
        options->addWidget(option);
    }
    layout->addLayout(options);
    chkLevelAsk_->setObjectName(QStringLiteral("chkLevelAsk"));
    layout->addWidget(chkLevelAsk_);

    auto* commands = new QHBoxLayout;
    commands->setContentsMargins(0, 10, 0, 0);
    commands->addStretch();
    for (const auto& [index, caption] : {std::pair{1, "Ok"}, std::pair{0, "Annuler"}}) {
        auto* button = new QPushButton(QString::fromUtf8(caption), this);
        button->setObjectName(QStringLiteral("cmdCommands(%1)").arg(index));
        button->setDefault(index == 1);
        connect(button, &QPushButton::clicked, this, [this, index = index] { cmdCommands_Click(index); });
        commands->addWidget(button);
    }
    layout->addLayout(commands);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    Form_Load();
}

void wLevel::Form_Load() {
    Trap("wLevel", "Form_Load", [this] {
        chkLevelAsk_->setChecked(Conversions::NumericPrefix(ReadIniParam("Options", "LevelAsk", "0")) != 0);
        const double level = Conversions::NumericPrefix(ReadIniParam("Options", "LevelValue", "5"));
        for (QAbstractButton* option : optLevelValue_->buttons()) {
            if (optLevelValue_->id(option) != level) continue;
            option->setChecked(true);
            option->setFocus();
        }
    });
}

void wLevel::cmdCommands_Click(int index) {
    Trap("wLevel", "cmdCommands_Click", [this, index] {
        if (index == 1) {
            ProfileChanges changes(IniFilePath());
            changes.Write("Options", "LevelAsk", chkLevelAsk_->isChecked() ? "1" : "0");
            const int level = optLevelValue_->checkedId();
            if (level >= 0) changes.Write("Options", "LevelValue", std::to_string(level));
            changes.Commit();
            accepted_ = true;
        }
        hide();
    });
}
