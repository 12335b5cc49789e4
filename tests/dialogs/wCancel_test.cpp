#include "settings/dialogs/wCancel.h"

#include <QPointer>
#include <QProgressBar>

#include "DialogSupport.h"

namespace {

TEST(ProgressWindow, ShowsTheShareAndEveryWayToCancelOnlyHidesIt) {
    const ScriptedHost host;
    QWidget owner;
    owner.show();
    for (const int way : {0, 1, 2}) {
        const QPointer<wCancel> window = new wCancel(&owner);
        window->show();
        window->Progress(49.6);
        EXPECT_TRUE(Eventually([&] { return Child<QProgressBar>(*window, "pbProgress").text() == "50%"; }));
        EXPECT_TRUE(window->IsVisible());
        Leave(*window, way, "cmdCancel");
        ServeEvents();
        // The run still holds it and looks at it once more.
        ASSERT_TRUE(window);
        EXPECT_FALSE(window->IsVisible());
        delete window;
    }
}

}  // namespace
