// SPDX-License-Identifier: MIT
#include "settings/dialogs/wCancel.h"

#include <QProgressBar>

#include "DialogSupport.h"

namespace {

// The run still holds it and looks at it once more.
TEST(ProgressWindow, EveryWayToCancelOnlyHidesIt) {
    for (const int way : {0, 1, 2}) {
        wCancel window(nullptr);
        window.Open();
        window.Progress(49.6);
        EXPECT_TRUE(window.IsVisible() && !window.isVisible()) << "a short run would only flicker";
        EXPECT_TRUE(Eventually([&] { return Child<QProgressBar>(window, "pbProgress").text() == "50%"; }));
        EXPECT_TRUE(window.IsVisible());
        Leave(window, way, "cmdCancel");
        ServeEvents();
        EXPECT_FALSE(window.IsVisible());
    }
}

}  // namespace
