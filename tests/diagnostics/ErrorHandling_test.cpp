// SPDX-License-Identifier: MIT
#include "diagnostics/ErrorHandling.h"

#include "support/ScriptedHost.h"

namespace {

// A host that shows one box after the pointer was put back, and that can break down instead.
class ReportHost : public ScriptedHost {
  public:
    platform::MessageButton Show(std::string_view text, int style, int /*helpContext*/) override {
        EXPECT_EQ(shapes, std::vector{platform::PointerShape::Default});
        EXPECT_EQ(style, platform::MessageStyle::Stop);
        if (breaksDown) throw std::runtime_error("no display");
        return report += text, platform::MessageButton::Ok;
    }
    std::string report;
    bool breaksDown = false;
};

}  // namespace

TEST(ErrorReport, NamesThePlace) {
    const std::pair<const char*, const char*> places[] = {
        {"wMain.mnuFileOpen_Click", "wMain\r\nObject : mnuFileOpen\r\nEvent : Click"},
        {"my_Grid.Load", "my_Grid\r\nFunction : Load"},
        {"a.b.c_d_e", "a\r\nObject : b.c\r\nEvent : d_e"},
        {"no_stop", "no_stop"},
    };
    for (const auto& [location, place] : places) {
        const ReportHost host;
        ShowError(location, -12345);
        EXPECT_EQ(host.report, std::string("Error Nr -12345 : \r\n\r\nModule : ") + place);
    }
}

TEST(ErrorTrap, ReportsOnceAndReturnsTheFallback) {
    const std::pair<std::function<int()>, std::string> cases[] = {
        {[]() -> int { throw RuntimeError(6); }, "Error Nr 6 : Dépassement de capacité\r\n"},
        {[]() -> int { throw std::bad_alloc(); }, "Error Nr 7 : Mémoire insuffisante\r\n"},
        {[]() -> int { throw 42; }, "Error Nr 51 : Erreur interne\r\n"},
    };
    for (const auto& [body, start] : cases) {
        ReportHost host;
        EXPECT_EQ(Trap("wGrid", "Run_Load", body, 5), 5);
        EXPECT_EQ(host.report, start + "\r\nModule : wGrid\r\nObject : Run\r\nEvent : Load");
        host.shapes.clear();
        host.breaksDown = true;
        EXPECT_EQ(Trap("a", "b", body, 5), 5) << "nothing escapes when even the report fails";
    }
}
