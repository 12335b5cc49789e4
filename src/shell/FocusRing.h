// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QToolBar;
class QWidget;

// The parts of a window that F6 leads the keyboard through, in a circle, and Shift+F6 back.
class FocusRing : public QObject {
    Q_OBJECT

  public:
    explicit FocusRing(QWidget* window);

    // `stop`: where the keyboard goes inside of the part; none while the part is of no use.
    void Add(QWidget* part, std::function<QWidget*()> stop);
    // The tools of a bar take the keyboard in the ring alone; inside the arrows lead from one to the next.
    void Add(QToolBar* bar);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Region {
        QWidget* widget;
        std::function<QWidget*()> stop;
    };
    void Walk(int step);

    QWidget* window_;
    std::vector<Region> regions_;
};
