#include "shell/GridTabs.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QToolButton>

#include "document/window/wGrid.h"
#include "platform/qt/QtHost.h"

namespace {

struct Tab {
    QString text;
    QString spoken;
    QString toolTip;
};

constexpr int longestCaption = 24;  // of a tab, in average characters

Tab TabOf(wGrid& grid, const QFontMetrics& metrics) {
    const QString caption = grid.Caption();
    const QString shown =
        metrics.elidedText(caption, Qt::ElideMiddle, longestCaption * metrics.averageCharWidth());
    const bool modified = grid.Document().Modified();
    const QString path = platform_qt::ShownPath(grid.Path());
    return {QString(shown).replace(QLatin1Char('&'), QLatin1String("&&")) +
                (modified ? QStringLiteral(" *") : QString()),
            caption + (modified ? QStringLiteral(", modifiée") : QString()), path.isEmpty() ? caption : path};
}

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
    connect(strip_, &QTabBar::currentChanged, this, &GridTabs::Chosen);
    connect(strip_, &QTabBar::tabCloseRequested, this, &GridTabs::CloseAsked);

    list_->setObjectName(QStringLiteral("cmdGrids"));
    list_->setAutoRaise(true);
    list_->setArrowType(Qt::DownArrow);
    list_->setPopupMode(QToolButton::InstantPopup);
    list_->setToolTip(QStringLiteral("Toutes les grilles"));
    list_->setAccessibleName(list_->toolTip());
    list_->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
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
    const auto count = static_cast<int>(grids.size());
    while (strip_->count() > count) strip_->removeTab(strip_->count() - 1);
    while (strip_->count() < count) strip_->addTab({});
    for (int place = 0; place < count; ++place) {
        const OpenGrid& grid = grids[static_cast<std::size_t>(place)];
        const Tab tab = TabOf(*grid, strip_->fontMetrics());
        if (strip_->tabText(place) != tab.text) {
            strip_->setTabText(place, tab.text);
            strip_->setAccessibleTabName(place, tab.spoken);
        }
        if (strip_->tabToolTip(place) != tab.toolTip) strip_->setTabToolTip(place, tab.toolTip);
        if (grid == active) strip_->setCurrentIndex(place);
    }
    setVisible(count > 1);
}

void GridTabs::FillList() {
    QMenu& menu = *list_->menu();
    menu.clear();
    for (int place = 0; place < strip_->count(); ++place) {
        QAction* item = menu.addAction(strip_->tabText(place), this, [this, place] { emit Chosen(place); });
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
            emit CloseAsked(place);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
