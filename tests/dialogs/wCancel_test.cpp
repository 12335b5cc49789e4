#include "settings/dialogs/wCancel.h"

#include "DialogSupport.h"

namespace {

// The run still holds it and looks at it once more.
TEST(ProgressWindow, EveryWayToCancelOnlyHidesIt) {
    for (const int way : {0, 1, 2}) {
        wCancel window(nullptr);
        window.show();
        EXPECT_TRUE(window.IsVisible());
        Leave(window, way, "cmdCancel");
        ServeEvents();
        EXPECT_FALSE(window.IsVisible());
    }
}

}  // namespace
