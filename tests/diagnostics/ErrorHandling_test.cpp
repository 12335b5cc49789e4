#include "diagnostics/ErrorHandling.h"

#include <gtest/gtest.h>

#include "support/ScriptedHost.h"

namespace {

// A host whose box remembers what the pointer was while it was shown, and that can break down itself.
class ReportHost : public ScriptedHost {
  public:
    ReportHost() { AnswerAlways(platform::MessageButton::Ok); }
    platform::MessageButton Show(std::string_view text, int style, int helpContext) override {
        shapesBeforeBox = shapes.size();
        if (breaksDown) throw std::runtime_error("no display");
        return ScriptedHost::Show(text, style, helpContext);
    }
    std::size_t shapesBeforeBox = 0;
    bool breaksDown = false;
};

// The lines behind the first one, which is cut off together with the empty line.
std::string PlaceIn(const std::string& location) {
    ReportHost host;
    ShowError(location, 53);
    const std::string head = "Error Nr 53 : Fichier introuvable\r\n\r\n";
    const std::string text = host.boxes.at(0).text;
    EXPECT_EQ(text.substr(0, head.size()), head);
    return text.substr(head.size());
}

}  // namespace

TEST(ErrorReport, NamesThePlace) {
    EXPECT_EQ(PlaceIn("wGrid.SaveFile"), "Module : wGrid\r\nFunction : SaveFile");
    EXPECT_EQ(PlaceIn("wMain.mnuFileOpen_Click"), "Module : wMain\r\nObject : mnuFileOpen\r\nEvent : Click");
    EXPECT_EQ(PlaceIn("a.b_c_d"), "Module : a\r\nObject : b\r\nEvent : c_d");
    EXPECT_EQ(PlaceIn("my_Grid.Load"), "Module : my_Grid\r\nFunction : Load");
    EXPECT_EQ(PlaceIn("a.b.c_d"), "Module : a\r\nObject : b.c\r\nEvent : d");
    EXPECT_EQ(PlaceIn(".Load"), "Module : \r\nFunction : Load");
    EXPECT_EQ(PlaceIn("no_stop"), "Module : no_stop");
    EXPECT_EQ(PlaceIn(""), "Module : ");
}

TEST(ErrorReport, PointerIsResetBeforeTheBox) {
    ReportHost host;
    host.Shape(platform::PointerShape::Hourglass);
    ShowError("a.b", -12345);
    ASSERT_EQ(host.boxes.size(), 1u);
    EXPECT_EQ(host.boxes[0].style, platform::MessageStyle::Stop);
    EXPECT_EQ(host.boxes[0].text, "Error Nr -12345 : \r\n\r\nModule : a\r\nFunction : b");
    EXPECT_EQ(host.shapesBeforeBox, 2u);
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

TEST(ErrorTrap, ReportsOnceAndReturnsTheFallback) {
    const struct {
        std::function<int()> body;
        std::string start;
    } cases[] = {
        {[]() -> int { throw RuntimeError(6); }, "Error Nr 6 : Dépassement de capacité\r\n"},
        {[]() -> int { throw std::bad_alloc(); }, "Error Nr 7 : Mémoire insuffisante\r\n"},
        {[] { return static_cast<int>(std::string().at(1)); }, "Error Nr 51 : Erreur interne\r\n"},
        {[]() -> int { throw 42; }, "Error Nr 51 : Erreur interne\r\n"},
    };
    for (const auto& [body, start] : cases) {
        ReportHost host;
        EXPECT_EQ(Trap("wGrid", "Run_Load", body, 5), 5);
        ASSERT_EQ(host.boxes.size(), 1u) << start;
        EXPECT_EQ(host.boxes[0].text, start + "\r\nModule : wGrid\r\nObject : Run\r\nEvent : Load");
    }
}

// An exception that left the trap would end the program, so that these lines are only reached without one.
TEST(ErrorTrap, NothingEscapesWhenEvenTheReportFails) {
    ReportHost host;
    host.breaksDown = true;
    EXPECT_FALSE(Trap("a", "b", []() -> bool { throw RuntimeError(9); }));
    EXPECT_EQ(host.shapes.size(), 1u);
}
