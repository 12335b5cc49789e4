#include "settings/dialogs/wCancel.h"

#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <functional>

#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

TEST(ProgressWindow, EveryWayToCancelOnlyHidesIt) {
    const ScriptedHost host;
    QWidget owner;
    owner.show();
    const std::function<void(wCancel&)> waysOut[] = {
        [](wCancel& window) { QTest::mouseClick(&Child<QPushButton>(window, "cmdCancel"), Qt::LeftButton); },
        [](wCancel& window) { window.close(); },
        [](wCancel& window) { QTest::keyClick(&window, Qt::Key_Escape); },
        [](wCancel& window) { QTest::keyClick(&Child<QPushButton>(window, "cmdCancel"), Qt::Key_Escape); },
    };
    for (const auto& cancel : waysOut) {
        QPointer<wCancel> window = new wCancel(&owner);
        window->show();
        ASSERT_TRUE(window->IsVisible());
        cancel(*window);
        ServeEvents();
        // The run still holds it and looks at it once more.
        ASSERT_TRUE(window);
        EXPECT_FALSE(window->IsVisible());
        window->cmdCancel_Click();
        EXPECT_FALSE(window->IsVisible());
        delete window;
    }
}

}  // namespace
