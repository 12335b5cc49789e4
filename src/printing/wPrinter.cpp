// SPDX-License-Identifier: MIT
#include "printing/wPrinter.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "platform/qt/DialogParts.h"
#include "platform/qt/PrintSystem.h"
#include "platform/qt/QtHost.h"
#include "printing/PageLayout.h"
#include "settings/HelpContexts.h"
#include "settings/Settings.h"

namespace {

namespace PrintSystem = platform_qt::PrintSystem;

const QString pdfFile = QStringLiteral("Fichier PDF");

constexpr int largestPreview = 420;  // pixels
constexpr int aroundPreview = 90;    // margins and the window's title

}  // namespace

// The page as it will be printed, as large as the widget allows.
class PagePreview : public QWidget {
  public:
    PagePreview(const PrintedGrid& grid, QWidget* parent) : QWidget(parent), grid_(grid) {
        // On a small screen the buttons below it must not be cut off.
        const int side = std::min(largestPreview, screen()->availableSize().height() - aroundPreview);
        setFixedSize(side, side);
        setAccessibleName(QStringLiteral("Aperçu de la page"));
    }

    void Show(const PageLayout& page, bool blackAndWhite) {
        page_ = page;
        ink_.colors = ColorTable::FromSettings();
        ink_.blackAndWhite = blackAndWhite;
        update();
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr double border = 4;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QSizeF room = QSizeF(size()) - QSizeF(2 * border, 2 * border);
        const double scale = page_.paper.scaled(room, Qt::KeepAspectRatio).width() / page_.paper.width();
        QRectF paper(QPointF(), page_.paper * scale);
        paper.moveCenter(QRectF(rect()).center());
        painter.fillRect(paper.translated(border, border), palette().color(QPalette::Mid));
        painter.fillRect(paper, Qt::white);
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        PaintPage(painter, scale, grid_, page_, ink_);
    }

  private:
    PrintedGrid grid_;
    PageLayout page_;
    PageInk ink_;
};

wPrinter::wPrinter(const PrintedGrid& grid, QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      cboPrinter_(new QComboBox(this)),
      optOrientation_(new QButtonGroup(this)),
      preview_(new PagePreview(grid, this)),
      query_(std::make_unique<PrintSystem::PrinterQuery>()) {
    setObjectName(QStringLiteral("wPrinter"));
    setWindowTitle(QStringLiteral("Imprimer la grille"));

    auto* left = new QVBoxLayout;
    left->addWidget(BuildChoices());
    left->addStretch();
    left->addWidget(platform_qt::CommandRow(this, [this](int index) { cmdCommands_Click(index); }));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(20);
    layout->addLayout(left);
    layout->addWidget(preview_);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    platform_qt::HelpOnF1(*this, [] { return HelpContext::Imprimer; });
    Trap("wPrinter", "Form_Load", [this] { Form_Load(); });
    connect(optOrientation_, &QButtonGroup::idClicked, this, &wPrinter::ShowPage);
    connect(chkBlackWhite_, &QCheckBox::clicked, this, &wPrinter::ShowPage);
    connect(cboPrinter_, &QComboBox::activated, this, [this] { neverChosen_ = false; });
    connect(query_.get(), &PrintSystem::PrinterQuery::Answered, this, &wPrinter::FillPrinters);
}

wPrinter::~wPrinter() = default;

QWidget* wPrinter::BuildChoices() {
    auto* choices = new QWidget(this);
    auto* layout = new QVBoxLayout(choices);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto* label = new QLabel(QStringLiteral("Imprimante :"), choices);
    label->setBuddy(cboPrinter_);
    cboPrinter_->setObjectName(QStringLiteral("cboPrinter"));
    cboPrinter_->setAccessibleName(QStringLiteral("Imprimante"));
    // The list changes while the dialog is open; its width must not.
    cboPrinter_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboPrinter_->setMinimumContentsLength(26);
    layout->addWidget(label);
    layout->addWidget(cboPrinter_);
    layout->addSpacing(12);
    layout->addWidget(new QLabel(QStringLiteral("Orientation :"), choices));
    for (const auto& [value, caption] : {std::pair{0, "Portrait"}, std::pair{1, "Paysage"}}) {
        auto* option = new QRadioButton(QString::fromUtf8(caption), choices);
        option->setObjectName(QStringLiteral("optOrientation(%1)").arg(value));
        optOrientation_->addButton(option, value);
        layout->addWidget(option);
    }
    layout->addSpacing(12);
    chkBlackWhite_ = new QCheckBox(QStringLiteral("Imprimer en noir et blanc"), choices);
    chkBlackWhite_->setObjectName(QStringLiteral("chkBlackWhite"));
    layout->addWidget(chkBlackWhite_);
    return choices;
}

void wPrinter::Form_Load() {
    const Settings::IniSnapshot settings;
    const QString stored = platform_qt::FromUtf8(Settings::Read(Settings::Printer, settings));
    neverChosen_ = stored.isEmpty();
    // The printer of the last time is believed in until the system has answered.
    if (!neverChosen_ && stored != pdfFile) cboPrinter_->addItem(stored);
    cboPrinter_->addItem(pdfFile);
    optOrientation_->button(Settings::Read(Settings::Orientation, settings) ? 1 : 0)->setChecked(true);
    chkBlackWhite_->setChecked(Settings::Read(Settings::BlackAndWhite, settings));
    ShowPage();
}

void wPrinter::FillPrinters(const PrintSystem::Printers& printers) {
    Trap("wPrinter", "FillPrinters", [&] {
        const QString current = cboPrinter_->currentText();
        cboPrinter_->clear();
        cboPrinter_->addItems(printers.names);
        cboPrinter_->addItem(pdfFile);
        int chosen =
            neverChosen_ ? -1 : cboPrinter_->findText(current, Qt::MatchFixedString | Qt::MatchCaseSensitive);
        if (chosen < 0) {
            chosen = cboPrinter_->findText(printers.byDefault, Qt::MatchFixedString | Qt::MatchCaseSensitive);
        }
        cboPrinter_->setCurrentIndex(chosen >= 0 ? chosen : cboPrinter_->count() - 1);
    });
}

PrintChoice wPrinter::Choice() const {
    PrintChoice choice;
    choice.printer = cboPrinter_->currentText();
    choice.toFile = choice.printer == pdfFile;
    choice.landscape = optOrientation_->checkedId() == 1;
    choice.blackAndWhite = chkBlackWhite_->isChecked();
    return choice;
}

void wPrinter::ShowPage() {
    Trap("wPrinter", "ShowPage", [this] {
        const PrintChoice choice = Choice();
        preview_->Show(LayoutFromSettings(Settings::IniSnapshot(), choice.landscape), choice.blackAndWhite);
    });
}

void wPrinter::cmdCommands_Click(int index) {
    Trap("wPrinter", "cmdCommands_Click", [this, index] {
        if (index == 1) {
            const PrintChoice choice = Choice();
            Settings::ProfileChanges changes;
            Settings::Write(changes, Settings::Printer, choice.printer.toStdString());
            Settings::Write(changes, Settings::Orientation, choice.landscape);
            Settings::Write(changes, Settings::BlackAndWhite, choice.blackAndWhite);
            changes.Commit();
            accepted_ = true;
        }
        hide();
    });
}
