// SPDX-License-Identifier: MIT
#include "shell/GridTabs.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QToolButton>

#include "document/window/wGrid.h"
#include "platform/qt/QtHost.h"

namespace {

constexpr int longestCaption = 24;  // of a tab, in average characters

}  // namespace

GridTabs::GridTabs(QWidget* parent)
    : QWidget(parent), strip_(new QTabBar(this)), list_(new QToolButton(this)) {
    setObjectName(QStringLiteral("tabGrids"));
    strip_->setObjectName(QStringLiteral("tabStrip"));
    strip_->setDocumentMode(true);
    strip_->setExpanding(false);
    strip_->setElideMode(Qt::ElideNone);  // many tabs are scrolled, not squeezed
    strip_->setUsesScrollButtons(true);
    strip_->setTabsClosable(true);
    strip_->setFocusPolicy(Qt::TabFocus);
    strip_->setAccessibleName(QStringLiteral("Grilles ouvertes"));
    strip_->installEventFilter(this);
    connect(strip_, &QTabBar::currentChanged, this, [this](int place) {
        // Whoever walks along the tabs stays on them.
        const bool walking = strip_->hasFocus();
        emit Chosen(GridAt(place));
        if (walking) strip_->setFocus();
    });
    connect(strip_, &QTabBar::tabCloseRequested, this, [this](int place) { emit CloseAsked(GridAt(place)); });

    list_->setObjectName(QStringLiteral("cmdGrids"));
    list_->setAutoRaise(true);
    list_->setArrowType(Qt::DownArrow);
    list_->setPopupMode(QToolButton::InstantPopup);
    list_->setToolTip(QStringLiteral("Toutes les grilles"));
    list_->setAccessibleName(list_->toolTip());
    auto* menu = new QMenu(list_);
    connect(menu, &QMenu::aboutToShow, this, &GridTabs::FillList);
    list_->setMenu(menu);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(strip_, 1);
    row->addWidget(list_);
    hide();
}

void GridTabs::Show(const std::vector<OpenGrid>& grids, const OpenGrid& active) {
    const QSignalBlocker silent(strip_);
    grids_ = grids;
    const auto count = static_cast<int>(grids.size());
    while (strip_->count() > count) strip_->removeTab(strip_->count() - 1);
    while (strip_->count() < count) strip_->addTab({});
    for (int place = 0; place < count; ++place) {
        ShowTab(place);
        if (GridAt(place) == active) strip_->setCurrentIndex(place);
    }
    setVisible(count > 1);
}

// What is spoken tells whether the tab is another; cutting its caption to a length is what takes time.
void GridTabs::ShowTab(int place) {
    const wGrid& grid = *GridAt(place);
    const bool modified = grid.Document().Modified();
    const QString caption = grid.Caption();
    const QString spoken = caption + (modified ? QStringLiteral(", modifiée") : QString());
    if (strip_->accessibleTabName(place) != spoken) {
        const QFontMetrics metrics = strip_->fontMetrics();
        QString shown =
            metrics.elidedText(caption, Qt::ElideMiddle, longestCaption * metrics.averageCharWidth());
        shown.replace(QLatin1Char('&'), QLatin1String("&&"));
        strip_->setTabText(place, shown + (modified ? QStringLiteral(" *") : QString()));
        strip_->setAccessibleTabName(place, spoken);
    }
    const QString path = platform_qt::ShownPath(grid.Path());
    strip_->setTabToolTip(place, path.isEmpty() ? caption : path);
}

void GridTabs::Walk(int step) {
    const int count = strip_->count();
    if (count > 1) strip_->setCurrentIndex((strip_->currentIndex() + step + count) % count);
}

void GridTabs::FillList() {
    QMenu& menu = *list_->menu();
    menu.clear();
    for (int place = 0; place < strip_->count(); ++place) {
        QAction* item =
            menu.addAction(strip_->tabText(place), this, [this, place] { emit Chosen(GridAt(place)); });
        item->setCheckable(true);
        item->setChecked(place == strip_->currentIndex());
    }
}

// A middle click closes, as the cross does.
bool GridTabs::eventFilter(QObject* watched, QEvent* event) {
    if (watched == strip_ && event->type() == QEvent::MouseButtonRelease) {
        const auto& click = static_cast<const QMouseEvent&>(*event);
        const int place = strip_->tabAt(click.position().toPoint());
        if (click.button() == Qt::MiddleButton && place >= 0) {
            emit CloseAsked(GridAt(place));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
