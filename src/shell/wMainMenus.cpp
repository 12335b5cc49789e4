// SPDX-License-Identifier: MIT

// The main window's menus, toolbar, status bar and palette panel.

#include <QAction>
#include <QDockWidget>
#include <QIcon>
#include <QMdiArea>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "document/window/BusyGuard.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "platform/qt/Announce.h"
#include "shell/FocusRing.h"
#include "shell/GridTabs.h"
#include "shell/Palette.h"
#include "shell/StartHints.h"
#include "shell/StatusPanel.h"
#include "shell/wMain.h"

QIcon ToolPicture(const QString& key) {
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(key));
}

void wMain::BuildMenus() {
    // In the order of CommandMenu.
    constexpr std::array<std::pair<const char*, const char*>, 4> menus{
        {{"mnuFile", "&Fichier"}, {"mnuEdit", "&Edition"}, {"mnuGrid", "&Grille"}, {"mnuHelp", "&Aide"}}};
    std::array<QMenu*, menus.size()> made{};
    for (std::size_t i = 0; i < menus.size(); ++i) {
        made[i] = menuBar()->addMenu(QString::fromUtf8(menus[i].second));
        made[i]->setObjectName(QLatin1String(menus[i].first));
        made[i]->setToolTipsVisible(true);
    }
    for (const Command& command : Commands())
        AddMenuItem(*made[static_cast<std::size_t>(command.menu)], command);
}

void wMain::AddMenuItem(QMenu& menu, const Command& command) {
    QAction* item = menu.addAction(QString::fromUtf8(command.caption));
    item->setObjectName(QLatin1String(command.name));
    QList<QKeySequence> keys;
    for (const QKeyCombination key : command.keys) {
        if (key != QKeyCombination()) keys.append(key);
    }
    item->setShortcuts(keys);
    switch (command.kind) {
        case Command::Kind::Item:
            connect(item, &QAction::triggered, this, command.click);
            break;
        case Command::Kind::Check:
            // The item has switched itself; its routine is for those who switch it from elsewhere.
            item->setCheckable(true);
            modes_[static_cast<std::size_t>(command.mode)].item = item;
            connect(item, &QAction::toggled, this, [this, &command] { ModeSwitched(command); });
            // Readers get the names of items, not whether they are checked; that is said after the name.
            connect(
                item, &QAction::hovered, this,
                [item] {
                    platform_qt::Announce(item->isChecked() ? QStringLiteral("coché")
                                                            : QStringLiteral("non coché"));
                },
                Qt::QueuedConnection);
            break;
        case Command::Kind::Rule:
            item->setSeparator(true);
            break;
        case Command::Kind::Hidden:
            item->setVisible(false);
            break;
    }
}

void wMain::BuildToolbar() {
    toolbar_ = addToolBar(QStringLiteral("Outils"));
    toolbar_->setObjectName(QStringLiteral("tbrTools"));
    toolbar_->setMovable(false);
    toolbar_->setIconSize(QSize(32, 32));
    toolbar_->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const Command* command : ToolCommands()) {
        const QString key = QLatin1String(command->name);
        const QString text = QString::fromUtf8(command->toolTip);
        QAction* button = toolbar_->addAction(ToolPicture(key), text);
        button->setObjectName(QStringLiteral("tbrTools(%1)").arg(key));
        button->setToolTip(text);
        if (command->kind != Command::Kind::Check) {
            connect(button, &QAction::triggered, this, command->click);
            continue;
        }
        ModeActions& mode = modes_[static_cast<std::size_t>(command->mode)];
        button->setCheckable(true);
        mode.button = button;
        // Assistive technology switches it without pressing it.
        connect(button, &QAction::toggled, mode.item, &QAction::setChecked);
    }
}

void wMain::BuildStatusBar() {
    statusBar()->setObjectName(QStringLiteral("sbrStatus"));
    platform_qt::AnnounceIn(*statusBar());
    pathPanel_ = new StatusPanel(this, QStringLiteral("path"));
    // A long path must not widen the window.
    pathPanel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(pathPanel_, 1);
    // Always there, and on the right, where it moves nothing when its text changes.
    statePanel_ = new StatusPanel(this, QStringLiteral("state"));
    statusBar()->addPermanentWidget(statePanel_);
}

void wMain::BuildHints() {
    hints_ = new StartHints(area_->viewport());
    connect(hints_, &QLabel::linkActivated, this, [this](const QString& command) {
        if (auto* item = findChild<QAction*>(command)) item->trigger();
    });
}

void wMain::BuildFocusRing() {
    auto* ring = new FocusRing(this);
    ring->Add(area_, [this]() -> QWidget* {
        const OpenGrid grid = ActiveGrid();
        return grid ? static_cast<QWidget*>(&grid->KeyboardCell()) : hints_;
    });
    ring->Add(palette_, [this] { return palette_->FirstStop(); });
    ring->Add(toolbar_);
    ring->Add(tabs_, [this] { return &tabs_->Strip(); });
    for (StatusPanel* panel : {pathPanel_, statePanel_}) {
        ring->Add(panel, [panel] { return panel->text().isEmpty() ? nullptr : panel; });
    }
}

void wMain::BuildTabs() {
    auto* center = new QWidget(this);
    tabs_ = new GridTabs(center);
    auto* column = new QVBoxLayout(center);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(area_, 1);
    setCentralWidget(center);
    connect(tabs_, &GridTabs::Chosen, this, [this](const OpenGrid& grid) {
        if (!BusyGuard::Active()) Activate(grid);
        ShowTabs();
    });
    connect(tabs_, &GridTabs::CloseAsked, this, [](const OpenGrid& grid) {
        if (!RefusedWhileBusy() && grid) grid->parentWidget()->close();
    });
    const std::pair<QKeyCombination, int> keys[] = {{Qt::CTRL | Qt::Key_Tab, 1},
                                                    {Qt::CTRL | Qt::Key_PageDown, 1},
                                                    {Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1},
                                                    {Qt::CTRL | Qt::Key_PageUp, -1}};
    for (const auto& [key, step] : keys) {
        connect(new QShortcut(key, this), &QShortcut::activated, tabs_,
                [this, step = step] { tabs_->Walk(step); });
    }
}

void wMain::BuildPalette() {
    auto* dock = new QDockWidget(this);
    dock->setObjectName(QStringLiteral("dckPalette"));
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setTitleBarWidget(new QWidget(dock));
    palette_ = new Palette(dock);
    dock->setWidget(palette_);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->setContextMenuPolicy(Qt::PreventContextMenu);
    connect(palette_, &Palette::cmdValue_Clicked, this, &wMain::cmdValue_Click);
    connect(palette_, &Palette::cmdMask_Clicked, this, &wMain::cmdMask_Click);
}
