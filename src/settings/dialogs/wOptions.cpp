// SPDX-License-Identifier: MIT
#include "settings/dialogs/wOptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <tuple>

#include "diagnostics/ErrorHandling.h"
#include "platform/qt/Contrast.h"
#include "platform/qt/DialogParts.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"
#include "settings/HelpContexts.h"
#include "settings/dialogs/ChooseColor.h"
#include "settings/dialogs/LevelOptions.h"
#include "settings/dialogs/WrappedCheckBox.h"

namespace {

struct Page {
    const char* caption;
    int helpContext;
};
constexpr std::array<Page, 5> pages{{{"Page 0", 0},
                                     {"Divers", HelpContext::Divers},
                                     {"Couleurs", HelpContext::Couleurs},
                                     {"Impression", HelpContext::Impression},
                                     {"Niveau", HelpContext::Niveau}}};

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
        const int thickness = hasFocus() ? 3 : 1;
        // As areas: pens are blurred at some scales.
        painter.fillRect(
            rect(), hasFocus() ? platform_qt::FocusColor(palette()) : palette().color(QPalette::WindowText));
        painter.fillRect(rect().adjusted(thickness, thickness, -thickness, -thickness),
                         platform_qt::FromLowRed(color_));
    }

  private:
    const std::uint32_t& color_;
};

// A colour in words: its name, or how much it has of each light.
QString ColorInWords(std::uint32_t color) {
    static constexpr std::pair<std::uint32_t, const char*> names[] = {
        {0x000000, "noir"},    {0xFFFFFF, "blanc"}, {0x0000FF, "rouge"},
        {0x00FF00, "vert"},    {0xFF0000, "bleu"},  {0x00FFFF, "jaune"},
        {0xFF00FF, "magenta"}, {0xFFFF00, "cyan"},  {0x808080, "gris"}};
    for (const auto& [named, name] : names) {
        if (named == color) return QString::fromUtf8(name);
    }
    const QColor parts = platform_qt::FromLowRed(color);
    return QStringLiteral("rouge %1, vert %2, bleu %3").arg(parts.red()).arg(parts.green()).arg(parts.blue());
}

}  // namespace

wOptions::wOptions(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      tbsOnglets_(new QTabWidget(this)),
      colors_(ColorTable::Defaults) {
    setObjectName(QStringLiteral("wOptions"));
    setWindowTitle(QStringLiteral("Préférences"));
    tbsOnglets_->setObjectName(QStringLiteral("tbsOnglets"));
    new QLabel(QStringLiteral("Page témoin. Dupliquer mais ne pas utiliser"), AddPage(0));
    BuildDivers(*AddPage(1));
    BuildCouleurs(*AddPage(2));
    BuildImpression(*AddPage(3));
    BuildNiveau(*AddPage(4));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(12);
    layout->addWidget(tbsOnglets_);
    layout->addWidget(platform_qt::CommandRow(this, [this](int index) { cmdCommands_Click(index); }));
    layout->setSizeConstraint(QLayout::SetFixedSize);
    Trap("wOptions", "Form_Load", [this] { Form_Load(); });
    platform_qt::HelpOnF1(*this, [this] { return helpContext_; });
    connect(tbsOnglets_, &QTabWidget::currentChanged, this, &wOptions::tbsOnglets_Click);
}

// Page 0 is made but never gets a tab.
QFrame* wOptions::AddPage(int index) {
    const QString caption = QLatin1String(pages[static_cast<std::size_t>(index)].caption);
    auto* page = new QFrame(this);
    page->setObjectName(QStringLiteral("frmPages(%1)").arg(index));
    page->setWindowTitle(caption);
    page->hide();
    if (index > 0) tbsOnglets_->addTab(page, caption);
    return page;
}

template <class Row>
QCheckBox* wOptions::AddCheckBox(QFrame& page, const Row& row, const char* caption) {
    auto* box = new WrappedCheckBox(QString::fromUtf8(caption), &page);
    box->setObjectName(QLatin1String("chk") + platform_qt::FromUtf8(row.key));
    page.layout()->addWidget(box);
    return box;
}

void wOptions::BuildDivers(QFrame& page) {
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(12);
    chkNoSplash_ = AddCheckBox(page, Settings::NoSplash, "Ne pas afficher l'écran d'accueil au démarrage");
    chkLinesWidth_ =
        AddCheckBox(page, Settings::LinesWidth, "Corriger les lignes trop épaisses à l'impression");
    chkConfigOnNew_ =
        AddCheckBox(page, Settings::ConfigOnNew, "Mode Initialisation à l'ouverture d'une nouvelle grille");
    layout->addStretch();
}

void wOptions::BuildCouleurs(QFrame& page) {
    auto* layout = new QGridLayout(&page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setHorizontalSpacing(14);
    int row = 0;
    for (const Settings::Color& color : Settings::Colors) {
        const std::size_t index = color.Index();
        const QString caption = platform_qt::FromUtf8(color.label);
        auto* swatch = new ColorSwatch(&page, colors_[index]);
        swatch->setObjectName(QStringLiteral("lblColors(%1)").arg(index));
        connect(swatch, &QAbstractButton::clicked, this,
                [this, index] { lblColors_Click(static_cast<int>(index)); });
        lblColors_[index] = swatch;
        layout->addWidget(swatch, row, 0);
        layout->addWidget(new QLabel(caption, &page), row, 1);
        ++row;
    }
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(row, 1);
    // Only the dialog itself sets it; it says whether there is anything to save on this page.
    chkColorChanged_ = new QCheckBox(&page);
    chkColorChanged_->setObjectName(QStringLiteral("chkColorChanged"));
    chkColorChanged_->hide();
}

void wOptions::BuildImpression(QFrame& page) {
    auto* layout = new QGridLayout(&page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setVerticalSpacing(12);
    const std::tuple<Settings::Measure, const char*, QLineEdit**> fields[] = {
        {Settings::MarginLeft, "Marge Gauche", &txtMarginLeft_},
        {Settings::MarginTop, "Marge Haute", &txtMarginTop_},
        {Settings::GridSize, "Dimension de la grille (carrée) :", &txtGridSize_},
    };
    int line = 0;
    for (const auto& [row, caption, field] : fields) {
        *field = new QLineEdit(&page);
        (*field)->setObjectName(QLatin1String("txt") + platform_qt::FromUtf8(row.key));
        (*field)->setFixedWidth(90);
        (*field)->installEventFilter(this);
        auto* label = new QLabel(QString::fromUtf8(caption), &page);
        label->setBuddy(*field);
        (*field)->setAccessibleName(label->text());
        layout->addWidget(label, line, 0);
        layout->addWidget(*field, line, 1);
        ++line;
    }
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(line, 1);
}

void wOptions::BuildNiveau(QFrame& page) {
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(8);
    chkLevelAsk_ = AddCheckBox(page, Settings::LevelAsk,
                               "Ne pas demander le niveau à la création d'une grille, mais toujours "
                               "appliquercelui défini c-dessous");
    levels_ = new LevelOptions(&page, 24);
    layout->addWidget(levels_);
    auto* label =
        new QLabel(QStringLiteral("Nombre de tentatives\nde résolution avant\nconfirmation lors de\n"
                                  "la création des grilles"),
                   &page);
    cboResolLoop_ = new QComboBox(&page);
    cboResolLoop_->setObjectName(QStringLiteral("cboResolLoop"));
    cboResolLoop_->setAccessibleName(label->text().replace(QLatin1Char('\n'), QLatin1Char(' ')));
    for (int place = Settings::ResolLoop.lowest; place <= Settings::ResolLoop.highest; ++place) {
        cboResolLoop_->addItem(QString::number((place + 1) * 10));
    }
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

std::array<std::pair<Settings::Measure, QLineEdit*>, 3> wOptions::Fields() const {
    return {{{Settings::GridSize, txtGridSize_},
             {Settings::MarginTop, txtMarginTop_},
             {Settings::MarginLeft, txtMarginLeft_}}};
}

void wOptions::Form_Load() {
    tbsOnglets_->setCurrentIndex(0);
    tbsOnglets_Click();
    colors_ = ColorTable::FromSettings();
    NameSwatches();
    const Settings::IniSnapshot settings;
    for (const auto& [row, field] : Fields()) {
        field->setText(platform_qt::FromUtf8(Settings::Read(row, settings)));
    }
    chkLinesWidth_->setChecked(Settings::Read(Settings::LinesWidth, settings));
    chkNoSplash_->setChecked(Settings::Read(Settings::NoSplash, settings) != 0);
    chkConfigOnNew_->setChecked(Settings::Read(Settings::ConfigOnNew, settings));
    chkLevelAsk_->setChecked(Settings::Read(Settings::LevelAsk, settings));
    levels_->Load(settings);
    const double place = Settings::Read(Settings::ResolLoop, settings);
    cboResolLoop_->setCurrentIndex(Settings::ResolLoop.Allows(place) ? static_cast<int>(std::lround(place))
                                                                     : Settings::ResolLoop.byDefault);
}

void wOptions::NameSwatches() {
    for (const Settings::Color& row : Settings::Colors) {
        lblColors_[row.Index()]->setAccessibleName(QStringLiteral("%1 : %2").arg(
            platform_qt::FromUtf8(row.label), ColorInWords(colors_[row.Index()])));
    }
}

void wOptions::tbsOnglets_Click() {
    Trap("wOptions", "tbsOnglets_Click", [this] {
        helpContext_ = pages.at(static_cast<std::size_t>(tbsOnglets_->currentIndex()) + 1).helpContext;
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
        NameSwatches();
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
    Settings::ProfileChanges changes;
    if (chkColorChanged_->isChecked()) {
        auto rows = Settings::Colors;
        std::ranges::sort(rows, {}, &Settings::Color::Index);
        for (const Settings::Color& row : rows) Settings::Write(changes, row, colors_[row.Index()]);
    }
    for (const auto& [row, field] : Fields()) Settings::Write(changes, row, field->text().toStdString());
    Settings::Write(changes, Settings::LinesWidth, chkLinesWidth_->isChecked());
    Settings::Write(changes, Settings::NoSplash, chkNoSplash_->isChecked() ? 1 : 0);
    Settings::Write(changes, Settings::ConfigOnNew, chkConfigOnNew_->isChecked());
    Settings::Write(changes, Settings::LevelAsk, chkLevelAsk_->isChecked());
    Settings::Write(changes, Settings::ResolLoop, cboResolLoop_->currentIndex());
    levels_->Save(changes);
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
