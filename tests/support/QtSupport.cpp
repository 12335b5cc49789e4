// SPDX-License-Identifier: MIT
#include "support/QtSupport.h"

#include <QPointer>
#include <deque>
#include <gtest/gtest.h>
#include <utility>

namespace {

using Act = std::function<void(QWidget& dialog)>;

// Owned by the test runner, which tells it when a test has ended.
class DialogWatch : public QObject, public testing::EmptyTestEventListener {
  public:
    DialogWatch() { testing::UnitTest::GetInstance()->listeners().Append(this); }

    void Add(Act act) {
        if (waiting_.empty()) qApp->installEventFilter(this);
        waiting_.push_back(std::move(act));
        ++open_;
    }

  private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = qobject_cast<QWidget*>(watched);
        if (event->type() != QEvent::Show || !window || !window->isModal() || waiting_.empty()) return false;
        // It is not visible before this event was handled, and its own loop starts later still.
        QTimer::singleShot(0, window, [this, window, act = std::move(waiting_.front())] {
            --open_;
            const QPointer<QWidget> dialog(window);
            EXPECT_TRUE(dialog->isVisible());
            act(*dialog);
            if (dialog) dialog->hide();
        });
        waiting_.pop_front();
        return false;
    }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        EXPECT_EQ(open_, 0) << "dialogs that were waited for and did not open";
        waiting_.clear();
        open_ = 0;
        if (qApp) qApp->removeEventFilter(this);
    }

    std::deque<Act> waiting_;
    int open_ = 0;  // with those whose window is about to be seen
};

}  // namespace

void InNextDialog(Act act) {
    static auto* const watch = new DialogWatch;
    watch->Add(std::move(act));
}
