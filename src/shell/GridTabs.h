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

    QTabBar& Strip() const { return *strip_; }

  signals:
    // By place in the strip, from 0.
    void Chosen(int place);
    void CloseAsked(int place);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FillList();

    QTabBar* strip_;
    QToolButton* list_;
};
