#include "settings/dialogs/wCancel.h"

#include <QPointer>
#include <QProgressBar>

#include "DialogSupport.h"

namespace {

TEST(ProgressWindow, ShowsTheShareAndEveryWayToCancelOnlyHidesIt) {
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
        const QPointer<wCancel> window = new wCancel(&owner);
        window->show();
        ASSERT_TRUE(window->IsVisible());
        QTest::keyClick(window, Qt::Key_A);
        EXPECT_TRUE(window->IsVisible());
        const auto& bar = Child<QProgressBar>(*window, "pbProgress");
        ExpectLaidOut(*window);
        window->Progress(49.6);
        EXPECT_TRUE(Eventually([&] { return bar.text() == "50%"; }));
        cancel(*window);
        ServeEvents();
        // The run still holds it and looks at it once more.
        ASSERT_TRUE(window);
        EXPECT_FALSE(window->IsVisible());
        delete window;
    }
}

}  // namespace
