// SPDX-License-Identifier: MIT
#pragma once

#include <QTabBar>
#include <QWidget>
#include <vector>

#include "document/window/OpenGrid.h"

class QToolButton;

// The strip of tabs above the grids, in the order in which they were made; there is none for a single grid.
// A button beside it lists them all.
class GridTabs : public QWidget {
    Q_OBJECT

  public:
    explicit GridTabs(QWidget* parent);

    // Shows these grids, the active one chosen, modified ones with a star. Cheap when nothing has changed.
    void Show(const std::vector<OpenGrid>& grids, const OpenGrid& active);

    // Chooses the tab so many places on, in a circle.
    void Walk(int step);
    QTabBar& Strip() const { return *strip_; }

  signals:
    void Chosen(const OpenGrid& grid);
    void CloseAsked(const OpenGrid& grid);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FillList();
    void ShowTab(int place);
    const OpenGrid& GridAt(int place) const { return grids_[static_cast<std::size_t>(place)]; }

    std::vector<OpenGrid> grids_;  // in the order of the tabs
    QTabBar* strip_;
    QToolButton* list_;
};
