// Ends that are none, and what the next start makes of them.

#include <QTest>
#include <algorithm>

#include "Program.h"
#include "document/window/BusyGuard.h"

namespace {

using platform::MessageButton;
namespace fs = std::filesystem;

class Session : public RunningProgram {
  protected:
    bool Kept() const {
        std::error_code missing;
        const fs::recursive_directory_iterator entries(host.PathOf("state"), missing);
        return std::any_of(begin(entries), end(entries),
                           [](const auto& entry) { return entry.path().extension() == ".nx3"; });
    }
    void Type(int cell, int digit) const {
        Active().ctrlCells(cell).DoSelect();
        main->cmdValue_Click(digit);
    }
    // The process is told to end, then there is another one.
    void EndAndStart() {
        main->EndNow();
        main.reset();
        Start();
    }
};

TEST_F(Session, AModifiedGridIsKeptUntilItIsSavedOrThrownAway) {
    Open(GridFile("a.nx3"));
    for (const char* command : {"mnuFileSave", "mnuFileClose"}) {
        Type(2, Document().CanUndo() ? 4 : 3);
        EXPECT_TRUE(Eventually([this] { return Kept(); }));
        if (command == std::string("mnuFileClose")) host.Expect(MessageButton::No);
        Run(command);
        EXPECT_TRUE(Eventually([this] { return !Kept(); })) << command;
    }
}

TEST_F(Session, GridsComeBackWithTheirHistoryAfterAnEndWithoutQuestions) {
    Run("mnuFileOpen", GridFile("a.nx3"));
    Type(2, 3);
    Type(3, 4);
    Run("mnuFileNew");
    Type(1, 9);
    Run("mnuFileNew");  // empty, as new ones are
    host.Expect(MessageButton::Yes);
    EndAndStart();
    EXPECT_EQ(Grids() + " " + RecentFiles(), "a, [Grille1] a.nx3");
    EXPECT_NE(LastBox().find(": a, Grille1.\r\n"), std::string::npos) << LastBox();
    EXPECT_EQ(State(1), "9|1|0");
    Activate(0);
    EXPECT_EQ(PathPanel() + State(3), host.PathOf("a.nx3") + "4|0|0");
    Active().SetFocus();
    Run("mnuEditUndo");
    Run("mnuEditUndo");
    EXPECT_FALSE(Document().Modified()) << "as its file is";
    Run("mnuFileNew");
    EXPECT_EQ(Grids(), "a, Grille1, [Grille2]") << "no name twice";
}

TEST_F(Session, NoThrowsAwayCancelAsksAgain) {
    Run("mnuFileNew");
    Type(1, 9);
    for (const MessageButton answer : {MessageButton::Cancel, MessageButton::No}) {
        host.Expect(answer);
        EndAndStart();
        EXPECT_EQ(Grids(), "");
    }
    EndAndStart();
    EXPECT_EQ(host.boxes.size(), 2);
}

TEST_F(Session, TheEndIsAnOrderlyOneInAQuestionAndInARun) {
    Run("mnuFileNew");
    Type(1, 9);
    for (auto* moment : {&host.onShow, &host.onYield}) {
        *moment = [this] { main->EndNow(); };
        if (moment == &host.onShow)
            Run("mnuFileClose", MessageButton::Cancel);
        else
            Run("mnuHelpSolve", MessageButton::Ok);
        EXPECT_TRUE(Kept());
        EXPECT_FALSE(BusyGuard::Active());
        *moment = {};
        host.Expect(MessageButton::Yes);
        EndAndStart();
        EXPECT_EQ(State(1), "9|1|0");
    }
}

TEST_F(Session, ItsManagerGetsTheUsersAnswer) {
    Run("mnuFileNew");
    Type(1, 9);
    EXPECT_TRUE(main->CommitSession(false) && Kept());
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(main->CommitSession(true));
    host.Expect(MessageButton::No);
    EXPECT_TRUE(main->CommitSession(true));
    EXPECT_TRUE(Kept()) << "another program may still refuse to end the session";
    Type(2, 8);
    Run("mnuFileQuit", MessageButton::Cancel);
    host.Expect(MessageButton::No);
    EXPECT_TRUE(main->CommitSession(true));
    Run("mnuFileQuit");  // as the toolkit does it then, without the question again
    EXPECT_FALSE(main->isVisible());
    host.Expect(MessageButton::Yes);
    EndAndStart();
    EXPECT_EQ(State(2), "8|1|0");
    Run("mnuFileClose", MessageButton::No);
}

TEST_F(Session, AFileThatCannotComeBackIsNamed) {
    fs::create_directories(host.PathOf("state/recovery/session-abc"));
    for (const char* name : {"lock", "1.nx3"}) {
        ScriptedHost::WriteFile(host.PathOf("state/recovery/session-abc/") + name, "damaged");
    }
    host.Expect(MessageButton::Ok);
    EndAndStart();
    EXPECT_TRUE(LastBox().ends_with("session-abc-1.nx3")) << LastBox();
    EndAndStart();
}

}  // namespace
