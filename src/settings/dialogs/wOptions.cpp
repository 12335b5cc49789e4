#include "settings/dialogs/wOptions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cmath>
#include <string>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "platform/Host.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"
#include "settings/Conversions.h"
#include "settings/IniParamProcs.h"
#include "settings/dialogs/ChooseColor.h"
#include "settings/dialogs/WrappedCheckBox.h"

namespace {

// Top to bottom; the number is the colour's index in the table.
constexpr std::array<std::pair<int, const char*>, 7> colorLabels{{
    {0, "Fond de la fenêtre"},
    {1, "Fond de la case sélectionnée"},
    {2, "Lignes du quadrillage"},
    {3, "Chiffre de valeur des cases verrouillées"},
    {4, "Chiifre de valeur des cases non verrouillées"},
    {6, "Chiffres de masque"},
    {5, "Chiffres d'aide verrouillés"},
}};

constexpr std::array<std::pair<int, const char*>, 4> levelOptions{
    {{7, "Débutant"}, {6, "Facile"}, {5, "Moyen"}, {4, "Difficile"}}};

constexpr std::array<int, 5> pageHelpContexts{0, 210, 220, 230, 240};

// A field that shows a colour and is pressed to change it.
class ColorSwatch : public QAbstractButton {
  public:
    ColorSwatch(QWidget* parent, const std::uint32_t& color) : QAbstractButton(parent), color_(color) {
        setFixedSize(56, 24);
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), platform_qt::FromLowRed(color_));
        const QColor frame = palette().color(hasFocus() ? QPalette::Highlight : QPalette::Dark);
        painter.setPen(QPen(frame, hasFocus() ? 3 : 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

  private:
    const std::uint32_t& color_;
};

bool IsOn(const IniParamProcs::IniSnapshot& settings, const char* key, const char* byDefault) {
    return Conversions::NumericPrefix(settings.Read("Options", key, byDefault)) != 0;
}

}  // namespace

wOptions::wOptions(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      tbsOnglets_(new QTabWidget(this)),
      colors_(ColorTable::Defaults) {
    setObjectName(QStringLiteral("wOptions"));
    setWindowTitle(QStringLiteral("Préférences"));
    tbsOnglets_->setObjectName(QStringLiteral("tbsOnglets"));
    QFrame* sample = AddPage(0, QStringLiteral("Page 0"));
    new QLabel(QStringLiteral("Page témoin. Dupliquer mais ne pas utiliser"), sample);
    BuildDivers();
    BuildCouleurs();
    BuildImpression();
    BuildNiveau();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(12);
    layout->addWidget(tbsOnglets_);
    layout->addWidget(BuildCommands());
    layout->setSizeConstraint(QLayout::SetFixedSize);
    Trap("wOptions", "Form_Load", [this] { Form_Load(); });
    connect(tbsOnglets_, &QTabWidget::currentChanged, this, &wOptions::tbsOnglets_Click);
}

// Page 0 is made but never gets a tab.
QFrame* wOptions::AddPage(int index, const QString& caption) {
    auto* page = new QFrame(this);
    page->setObjectName(QStringLiteral("frmPages(%1)").arg(index));
    page->setWindowTitle(caption);
    page->hide();
    frmPages_[static_cast<std::size_t>(index)] = page;
    if (index > 0) tbsOnglets_->addTab(page, caption);
    return page;
}

QCheckBox* wOptions::AddCheckBox(QFrame* page, const char* name, const char* caption) {
    auto* box = new WrappedCheckBox(QString::fromUtf8(caption), page);
    box->setObjectName(QLatin1String(name));
    return box;
}

void wOptions::BuildDivers() {
    QFrame* page = AddPage(1, QStringLiteral("Divers"));
    chkNoSplash_ = AddCheckBox(page, "chkNoSplash", "Ne pas afficher l'écran d'accueil au démarrage");
    chkLinesWidth_ = AddCheckBox(page, "chkLinesWidth", "Corriger les lignes trop épaisses à l'impression");
    chkConfigOnNew_ =
        AddCheckBox(page, "chkConfigOnNew", "Mode Initialisation à l'ouverture d'une nouvelle grille");
    chkConfigOnNew_->setChecked(true);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(12);
    for (QCheckBox* box : {chkNoSplash_, chkLinesWidth_, chkConfigOnNew_}) layout->addWidget(box);
    layout->addStretch();
}

void wOptions::BuildCouleurs() {
    QFrame* page = AddPage(2, QStringLiteral("Couleurs"));
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setHorizontalSpacing(14);
    int row = 0;
    for (const auto& [index, caption] : colorLabels) {
        const auto slot = static_cast<std::size_t>(index);
        auto* swatch = new ColorSwatch(page, colors_[slot]);
        swatch->setObjectName(QStringLiteral("lblColors(%1)").arg(index));
        swatch->setAccessibleName(QString::fromUtf8(caption));
        connect(swatch, &QAbstractButton::clicked, this, [this, index = index] { lblColors_Click(index); });
        lblColors_[slot] = swatch;
        layout->addWidget(swatch, row, 0);
        layout->addWidget(new QLabel(QString::fromUtf8(caption), page), row, 1);
        ++row;
    }
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(row, 1);
    // Only the dialog itself sets it; it says whether there is anything to save on this page.
    chkColorChanged_ = new QCheckBox(page);
    chkColorChanged_->setObjectName(QStringLiteral("chkColorChanged"));
    chkColorChanged_->hide();
}

QLineEdit* wOptions::MakeLayoutField(QFrame* page, const char* name, const char* text) {
    auto* field = new QLineEdit(QLatin1String(text), page);
    field->setObjectName(QLatin1String(name));
    field->setFixedWidth(90);
    field->installEventFilter(this);
    return field;
}

void wOptions::BuildImpression() {
    QFrame* page = AddPage(3, QStringLiteral("Impression"));
    txtMarginLeft_ = MakeLayoutField(page, "txtMarginLeft", "45");
    txtMarginTop_ = MakeLayoutField(page, "txtMarginTop", "15");
    txtGridSize_ = MakeLayoutField(page, "txtGridSize", "120");
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setVerticalSpacing(12);
    int row = 0;
    for (const auto& [caption, field] : {std::pair{"Marge Gauche", txtMarginLeft_},
                                         {"Marge Haute", txtMarginTop_},
                                         {"Dimension de la grille (carrée) :", txtGridSize_}}) {
        auto* label = new QLabel(QString::fromUtf8(caption), page);
        label->setBuddy(field);
        field->setAccessibleName(label->text());
        layout->addWidget(label, row, 0);
        layout->addWidget(field, row, 1);
        ++row;
    }
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(row, 1);
}

void wOptions::BuildNiveau() {
    QFrame* page = AddPage(4, QStringLiteral("Niveau"));
    optLevelValue_ = new QButtonGroup(this);
    chkLevelAsk_ = AddCheckBox(page, "chkLevelAsk",
                               "Ne pas demander le niveau à la création d'une grille, mais toujours "
                               "appliquercelui défini c-dessous");
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(8);
    layout->addWidget(chkLevelAsk_);
    for (const auto& [value, caption] : levelOptions) {
        auto* option = new QRadioButton(QString::fromUtf8(caption), page);
        option->setObjectName(QStringLiteral("optLevelValue(%1)").arg(value));
        optLevelValue_->addButton(option, value);
        auto* line = new QHBoxLayout;
        line->addSpacing(24);
        line->addWidget(option);
        layout->addLayout(line);
    }
    auto* label =
        new QLabel(QStringLiteral("Nombre de tentatives\nde résolution avant\nconfirmation lors de\n"
                                  "la création des grilles"),
                   page);
    cboResolLoop_ = new QComboBox(page);
    cboResolLoop_->setObjectName(QStringLiteral("cboResolLoop"));
    cboResolLoop_->setAccessibleName(label->text().replace(QLatin1Char('\n'), QLatin1Char(' ')));
    for (int attempts = 10; attempts <= 90; attempts += 10) cboResolLoop_->addItem(QString::number(attempts));
    label->setBuddy(cboResolLoop_);
    auto* attemptsLine = new QHBoxLayout;
    attemptsLine->setContentsMargins(0, 12, 0, 0);
    attemptsLine->setSpacing(16);
    attemptsLine->addWidget(label);
    attemptsLine->addWidget(cboResolLoop_, 0, Qt::AlignVCenter);
    attemptsLine->addStretch();
    layout->addLayout(attemptsLine);
    layout->addStretch();
}

QWidget* wOptions::BuildCommands() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    for (const auto& [index, caption] : {std::pair{1, "Ok"}, std::pair{0, "Annuler"}}) {
        auto* button = new QPushButton(QString::fromUtf8(caption), row);
        button->setObjectName(QStringLiteral("cmdCommands(%1)").arg(index));
        button->setDefault(index == 1);
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, [this, index = index] { cmdCommands_Click(index); });
        layout->addWidget(button);
    }
    return row;
}

void wOptions::Form_Load() {
    tbsOnglets_->setCurrentIndex(0);
    tbsOnglets_Click();
    colors_ = ColorTable::FromSettings();
    const IniParamProcs::IniSnapshot settings;
    for (const auto& [key, field] : {std::pair{"GridSize", txtGridSize_},
                                     {"MarginTop", txtMarginTop_},
                                     {"MarginLeft", txtMarginLeft_}}) {
        field->setText(platform_qt::FromUtf8(settings.Read("Options", key, field->text().toStdString())));
    }
    chkLinesWidth_->setChecked(IsOn(settings, "LinesWidth", "0"));
    chkNoSplash_->setChecked(IsOn(settings, "NoSplash", "0"));
    chkConfigOnNew_->setChecked(IsOn(settings, "ConfigOnNew", "1"));
    chkLevelAsk_->setChecked(IsOn(settings, "LevelAsk", "0"));
    const double level = Conversions::NumericPrefix(settings.Read("Options", "LevelValue", "5"));
    for (QAbstractButton* option : optLevelValue_->buttons()) {
        if (optLevelValue_->id(option) == level) option->setChecked(true);
    }
    const double position = Conversions::NumericPrefix(settings.Read("Options", "ResolLoop", "0"));
    const bool inList = position >= 0 && position <= cboResolLoop_->count() - 1;
    cboResolLoop_->setCurrentIndex(inList ? static_cast<int>(std::lround(position)) : 0);
}

void wOptions::tbsOnglets_Click() {
    Trap("wOptions", "tbsOnglets_Click", [this] {
        helpContext_ = pageHelpContexts.at(static_cast<std::size_t>(tbsOnglets_->currentIndex()) + 1);
    });
}

void wOptions::lblColors_Click(int index) {
    Trap("wOptions", "lblColors_Click", [&] {
        std::uint32_t& color = colors_.at(static_cast<std::size_t>(index));
        const std::int32_t chosen = ChooseColor(color);
        if (chosen < 0) return;
        const auto newColor = static_cast<std::uint32_t>(chosen);
        if (newColor != color) chkColorChanged_->setChecked(true);
        color = newColor;
        lblColors_[static_cast<std::size_t>(index)]->update();
    });
}

void wOptions::cmdCommands_Click(int index) {
    Trap("wOptions", "cmdCommands_Click", [&] {
        if (index == 1) Save();
        hide();
    });
}

void wOptions::Save() {
    IniParamProcs::ProfileChanges changes(IniParamProcs::IniFilePath());
    const auto write = [&changes](const std::string& key, const std::string& value) {
        changes.Write("Options", key, value);
    };
    const auto writeBox = [&write](const char* key, const QCheckBox& box) {
        write(key, box.isChecked() ? "1" : "0");
    };
    if (chkColorChanged_->isChecked()) {
        for (std::size_t i = 0; i < colors_.size(); ++i) {
            write("Color_" + std::to_string(i), std::to_string(colors_[i]));
        }
    }
    write("GridSize", txtGridSize_->text().toStdString());
    write("MarginTop", txtMarginTop_->text().toStdString());
    write("MarginLeft", txtMarginLeft_->text().toStdString());
    writeBox("LinesWidth", *chkLinesWidth_);
    writeBox("NoSplash", *chkNoSplash_);
    writeBox("ConfigOnNew", *chkConfigOnNew_);
    writeBox("LevelAsk", *chkLevelAsk_);
    write("ResolLoop", std::to_string(cboResolLoop_->currentIndex()));
    const int level = optLevelValue_->checkedId();
    if (level >= 0) write("LevelValue", std::to_string(level));
    changes.Commit();
    if (!chkColorChanged_->isChecked()) return;
    ColorTable::Shared() = colors_;
    emit ColorsChanged();
}

bool wOptions::txtResolMsg_KeyPress(int keyAscii) const {
    constexpr int tab = 9;
    return (keyAscii >= '0' && keyAscii <= '9') || keyAscii == tab;
}

bool wOptions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Backspace) return true;
    // Keys that type nothing into a field: arrows, Delete, Enter, Escape, and commands such as paste.
    const bool types = !key->text().isEmpty() && key->text().front().isPrint();
    const bool command = key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier);
    if (!types || (command && !(key->modifiers() & Qt::AltModifier))) return false;
    return Trap("wOptions", "txtResolMsg_KeyPress",
                [&] { return !txtResolMsg_KeyPress(key->text().front().unicode()); });
}

void wOptions::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_F1) return QDialog::keyPressEvent(event);
    const platform::Host& host = platform::TheHost();
    host.help->ShowTopic(host.application->HelpFile(), helpContext_);
}
