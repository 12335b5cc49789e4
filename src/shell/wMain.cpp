// SPDX-License-Identifier: MIT
#include "shell/wMain.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <algorithm>

#include "diagnostics/ErrorHandling.h"
#include "document/window/BusyGuard.h"
#include "document/window/GridLayout.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "platform/Host.h"
#include "platform/qt/Announce.h"
#include "platform/qt/QtHost.h"
#include "settings/ColorTable.h"
#include "settings/FilesPaths.h"
#include "settings/IniParamProcs.h"
#include "settings/RegBase.h"
#include "settings/Settings.h"
#include "settings/dialogs/wOptions.h"
#include "shell/GridFileType.h"
#include "shell/GridTabs.h"
#include "shell/Palette.h"
#include "shell/Recovery.h"
#include "shell/StartHints.h"
#include "shell/StatusPanel.h"
#include "shell/WindowPlace.h"
#include "shell/wSplash.h"

namespace {

constexpr QSize smallestSize(480, 420);
constexpr int usualSide = 560;              // of the first grid's area
constexpr double usualShare = 0.6;          // of a large screen's height
constexpr double largestPalette = 1.0 / 3;  // of the window's width

}  // namespace

wMain::wMain() : area_(new QMdiArea(this)), recovery_(std::make_unique<Recovery>()) {
    setObjectName(QStringLiteral("wMain"));
    setAcceptDrops(true);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_->setFocusPolicy(Qt::NoFocus);
    area_->viewport()->installEventFilter(this);
    connect(area_, &QMdiArea::subWindowActivated, this, &wMain::GridActivated);
    BuildMenus();
    BuildToolbar();
    BuildTabs();
    BuildStatusBar();
    BuildPalette();
    BuildHints();
    BuildFocusRing();
    wMain::ShowDocument({}, {});
    setMinimumSize(smallestSize.boundedTo(WindowPlace::Room(*this)));
    if (!WindowPlace::Restore(*this)) TakeFirstSize();
}

// Asked before everything is laid out.
int wMain::HeightAroundGrids() const {
    return menuBar()->sizeHint().height() + toolbar_->sizeHint().height() + statusBar()->sizeHint().height();
}

void wMain::TakeFirstSize() {
    const QSize room = WindowPlace::Room(*this);
    const int separator = style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent);
    const QSize around(palette_->sizeHint().width() + 2 * separator, HeightAroundGrids());
    const int wanted = std::max(usualSide, static_cast<int>(usualShare * room.height()));
    const QSize left = room - around;
    const int side =
        std::max(GridLayout::SmallestSide, std::min({wanted, left.width(), left.height()})) / 9 * 9;
    resize((around + QSize(side, side)).expandedTo(minimumSize()));
}

// Of a wide window the palette takes what the grid does not need for square cells, as far as its buttons
// look well.
void wMain::ShareWidth() {
    const int smallest = palette_->minimumSizeHint().width();
    const int spare = width() - (height() - HeightAroundGrids());
    const int largest = static_cast<int>(largestPalette * width());
    palette_->setFixedWidth(std::max(smallest, std::min(spare, largest)));
}

void wMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    ShareWidth();
}

wMain::~wMain() {
    // Grid windows reach for this window while they go; they go first, and nothing is laid out
    // or shown for them then.
    area_->viewport()->removeEventFilter(this);
    for (const OpenGrid& grid : Grids()) disconnect(grid.Get(), nullptr, this, nullptr);
    delete area_;
}

void wMain::MDIForm_Load() {
    Trap("wMain", "MDIForm_Load", [this] {
        platform::Application& application = *platform::TheHost().application;
        application.HelpFile(application.ProgramFolder() + "/" + application.ProgramFileName() + ".chm");
        RegBase::RegisterFileType(application.ProgramFolder() + "/" + application.ProgramFileName(),
                                  GridFileType::extension, "\"%1\"", GridFileType::description, 0);
        const bool commandLine = !application.CommandLine().empty();
        if (commandLine) OpenCommandLine();
        if (!commandLine && Settings::Read(Settings::NoSplash) == 0) {
            show();
            ShowSplash();
        }
        // Unlike above, any number but 1 shows the splash here.
        if (Settings::Read(Settings::NoSplash) != 1) {
            show();
            ShowSplash();
        }
        // What a file holds that cannot be read now must not be replaced by defaults later.
        const bool readable = Settings::IniSnapshot().WasRead();
        if (readable && Settings::IsMissing(Settings::Colors.front())) WriteFirstSettings();
        ColorTable::Shared() =
            ColorTable::FromSettings(readable ? ColorTable::Colors{} : ColorTable::Defaults);
        // A flag that does not convert is reported and counts as false; the start goes on.
        const auto isSet = [](const Settings::Flag& row) {
            return Trap("wMain", "MDIForm_Load", [&] { return Settings::ReadStrict(row); });
        };
        if (isSet(Settings::NoAutoMasks)) mnuGridNoAutoMasks_Click();
        if (isSet(Settings::GridHelpNone)) mnuGridHelpNone_Click();
        recentFiles_.MaxRecent(Settings::RecentFiles.last);
        recentFiles_.Load(*this, IniParamProcs::IniFilePath());
        UpdateColors();
    });
    show();
    // The splash must not lie over a question.
    if (splash_) {
        connect(splash_, &QObject::destroyed, this, &wMain::AfterStart, Qt::QueuedConnection);
    } else {
        QTimer::singleShot(0, this, &wMain::AfterStart);
    }
}

// A first start: the options dialog, unseen, writes what it starts with. What the file holds already stays.
void wMain::WriteFirstSettings() {
    const Settings::IniSnapshot before;
    wOptions options(this);
    options.chkColorChanged().setChecked(true);
    options.cmdCommands_Click(1);
    Settings::ProfileChanges kept;
    Settings::ForEach([&](const auto& row) {
        if (!Settings::IsMissing(row, before))
            kept.Write(row.section, row.key, before.Read(row.section, row.key, {}));
    });
    kept.Commit();
}

void wMain::OpenCommandLine() {
    std::string name = platform::TheHost().application->CommandLine();
    if (name.size() >= 2 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
    OpenGridFile(platform_qt::PathFromBytes(FilesPaths::Absolute(name)));
}

void wMain::ShowSplash() {
    if (splash_ && splash_->isVisible()) return;
    splash_ = new wSplash(this);
    splash_->Present();
}

bool wMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == area_->viewport() && event->type() == QEvent::Resize) MDIForm_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void wMain::MDIForm_Resize() {
    Trap("wMain", "MDIForm_Resize", [this] {
        hints_->Center();
        if (activeGrid_) FillArea(*activeGrid_);
    });
}

// The active grid covers all others, which are laid out when they become it: thirty of them took 24 ms at
// every step of a resize.
void wMain::FillArea(const wGrid& grid) {
    auto* window = qobject_cast<QMdiSubWindow*>(grid.parentWidget());
    if (window->isMinimized() || window->isMaximized()) window->showNormal();
    window->setGeometry(area_->viewport()->rect());
}

void wMain::closeEvent(QCloseEvent* event) {
    if (RefusedWhileBusy()) return event->ignore();
    if (recovery_->Changes() == committed_) {
        // The session's end, about which the user was asked. What is not saved is kept all the same: it may
        // be another end, later.
        EndNow();
    } else if (!MDIForm_QueryUnload()) {
        return event->ignore();
    }
    SaveRecentFiles();
    WindowPlace::Keep(*this);
    if (splash_) splash_->close();
    event->accept();
}

void wMain::SaveRecentFiles() {
    recentFiles_.Save(*this, IniParamProcs::IniFilePath());
}

// Every grid is asked before any is closed: a Cancel at the last question loses none of them.
bool wMain::MDIForm_QueryUnload() {
    if (!AskAboutEveryGrid()) return false;
    for (const OpenGrid& grid : Grids()) grid->Discard();
    return true;
}

bool wMain::AskAboutEveryGrid() {
    for (const OpenGrid& grid : Grids()) {
        if (!grid) continue;
        Activate(grid);
        if (!grid->AskBeforeUnload()) return false;
    }
    return true;
}

std::vector<OpenGrid> wMain::Grids() const {
    std::vector<OpenGrid> grids;
    for (QMdiSubWindow* window : area_->subWindowList(QMdiArea::CreationOrder)) {
        const OpenGrid grid(qobject_cast<wGrid*>(window->widget()));
        if (grid) grids.push_back(grid);
    }
    return grids;
}

void wMain::ShowDocumentWindow(std::unique_ptr<GridDocument> document) {
    auto* grid = new wGrid(*this, std::move(document));
    // The caption stands in the title and on the tab.
    QMdiSubWindow* window = area_->addSubWindow(grid, Qt::SubWindow | Qt::FramelessWindowHint);
    window->setSystemMenu(nullptr);
    window->setFocusPolicy(Qt::ClickFocus);
    connect(grid, &wGrid::Unloading, this, &wMain::GridUnloading);
    recovery_->Watch(*grid);
    // With the strip of tabs in its place the window is laid out once, in the size that it keeps.
    ShowTabs();
    centralWidget()->layout()->activate();
    FillArea(*grid);
    window->show();
    area_->setActiveSubWindow(window);
    GridActivated(window);
    grid->SetFocus();
}

void wMain::UnloadGrid(const OpenGrid& grid) {
    if (!grid) return;
    grid->Discard();
    grid->parentWidget()->close();
}

// The area names no window while the program is in the background; the active grid stays what it was.
void wMain::GridActivated(QMdiSubWindow* window) {
    const OpenGrid grid(window ? qobject_cast<wGrid*>(window->widget()) : nullptr);
    if (!grid || grid == activeGrid_) return;
    if (activeGrid_) activeGrid_->Form_Deactivate();
    activeGrid_ = grid;
    FillArea(*grid);
    std::erase_if(used_, [&grid](const OpenGrid& other) { return !other || other == grid; });
    used_.push_back(grid);
    grid->Form_Activate();
    platform_qt::Announce(grid->Caption() + QStringLiteral(", ") + statePanel_->text());
}

// The grid that was used last before the closed one comes back.
void wMain::GridUnloading() {
    if (!ActiveGrid()) ShowDocument({}, {});
    if (!Cell()) UpdateColors();
    ShowTabs();
    std::erase_if(used_, [](const OpenGrid& grid) { return !grid; });
    if (!ActiveGrid() && !used_.empty()) Activate(used_.back());
}

void wMain::Activate(const OpenGrid& grid) {
    if (grid) area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(grid->parentWidget()));
}

void wMain::ShowTabs() {
    const std::vector<OpenGrid> grids = Grids();
    tabs_->Show(grids, ActiveGrid());
    hints_->setVisible(grids.empty());
}

bool wMain::IsOn(Mode mode) const {
    return modes_[static_cast<std::size_t>(mode)].item->isChecked();
}

void wMain::Switch(Mode mode) {
    modes_[static_cast<std::size_t>(mode)].item->toggle();
}

void wMain::ModeSwitched(const Command& command) {
    const ModeActions& actions = modes_[static_cast<std::size_t>(command.mode)];
    const bool on = actions.item->isChecked();
    actions.button->setChecked(on);
    actions.button->setIcon(ToolPicture(QLatin1String(on ? command.pictureOn : command.name)));
    QString caption = QString::fromUtf8(command.caption).remove(QLatin1Char('&'));
    platform_qt::Announce(caption + (on ? QStringLiteral(" : oui") : QStringLiteral(" : non")));
    if (command.changed) (this->*command.changed)();
}

void wMain::ShowDocument(const QString& path, const QString& caption) {
    const QString title = platform_qt::FromUtf8(platform::TheHost().application->Title());
    setWindowTitle(caption.isEmpty()
                       ? title
                       : title + QStringLiteral(" - ") +
                             QString(caption).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    ShowPath(path);
    ShowState();
}

void wMain::ShowPath(const QString& path) {
    pathPanel_->setText(platform_qt::ShownPath(path));
    pathPanel_->setToolTip(platform_qt::ShownPath(path));
}
