// SPDX-License-Identifier: MIT

// A program that is killed at any moment of play loses nothing that is older than two seconds. One process
// plays and tells what its grids hold, this one kills it and looks at what the next start would find.
// kills [--kills N] [--seed N]

#include <QProcess>
#include <iostream>
#include <map>
#include <random>
#include <sstream>

#include "Program.h"
#include "Soak.h"
#include "document/LostGrids.h"
#include "document/RecoveryFile.h"

namespace {

using platform::MessageButton;
using std::chrono::nanoseconds;

nanoseconds Now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::string Fingerprint(const GridSnapshot& grid) {
    return std::to_string(std::hash<std::string>()(RecoveryFile::Text(grid)));
}

// ---- The process that is killed. What it writes: "time caption fingerprint", "-" for what is in its file.

class Victim : public RunningProgram, protected Chance {
  protected:
    Victim() : Chance(Option("--seed").value_or(0)) {}

    // No event is served between the step and the word of it: what is kept was told before.
    void Play() {
        const auto grids = main->Grids();
        if (grids.empty() || (grids.size() < 4 && OnceIn(100))) return main->mnuFileNew_Click();
        Area().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(OneOf(grids)->parentWidget()));
        Active().ctrlCells(1 + Below(81)).DoSelect();
        static constexpr void (wMain::*commands[])() = {
            &wMain::mnuHelpSolve_Click, &wMain::mnuGridReinit_Click, &wMain::mnuFileSave_Click,
            &wMain::mnuGridConfig_Click};
        if (OnceIn(240)) return main->mnuFileClose_Click();
        if (OnceIn(16)) return (main.get()->*OneOf(commands))();
        if (OnceIn(5)) return OnceIn(2) ? main->mnuEditUndo_Click() : main->mnuEditRedo_Click();
        OnceIn(3) ? main->cmdMask_Click(Below(10)) : main->cmdValue_Click(Below(10));
    }

    void Tell() {
        std::map<std::string, std::string> open;
        for (const OpenGrid& grid : main->Grids()) {
            const GridDocument& document = grid->Document();
            open[document.Caption()] = document.Modified() ? Fingerprint(document.Snapshot()) : "-";
        }
        for (const auto& [caption, state] : told_) open.try_emplace(caption, "-");
        for (const auto& [caption, state] : open) {
            if (std::exchange(told_[caption], state) != state)
                std::cout << Now().count() << " " << caption << " " << state << "\n";
        }
        std::cout.flush();
    }

  private:
    std::map<std::string, std::string> told_;
};

TEST_F(Victim, DISABLED_Plays) {
    int saves = 0;
    host.onShow = [&] {
        const bool agrees = LastBox().starts_with("305 ");  // to a solution, to a beginning anew
        host.AnswerAlways(agrees ? MessageButton::Ok : MessageButton::No);
        host.fileAnswers = {host.PathOf("s" + std::to_string(saves++) + ".nx3")};
    };
    while (true) {
        Play();
        host.boxes.clear();
        host.fileAnswers.clear();
        Tell();
        QTest::qWait(Below(8));
    }
}

// ---- The one that kills.

struct State {
    nanoseconds age;  // when its grid's process was killed
    std::string fingerprint;
};
using Story = std::map<std::string, std::vector<State>>;  // by caption

// Plays until it is killed. Its own and all of its files lie in the folder.
Story PlayAndKill(const std::string& folder, std::uint64_t seed, int milliseconds) {
    qputenv("TMPDIR", folder.c_str());
    QProcess victim;
    victim.start("/proc/self/exe", {"--gtest_also_run_disabled_tests", "--gtest_brief=1",
                                    "--gtest_filter=Victim.*", "--seed", QString::number(seed)});
    qunsetenv("TMPDIR");
    QTest::qWait(milliseconds);
    victim.kill();
    const nanoseconds killed = Now();
    EXPECT_TRUE(victim.waitForFinished());
    Story story;
    std::istringstream lines(victim.readAllStandardOutput().toStdString());
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::int64_t time = 0;
        std::string caption, fingerprint;
        if (fields >> time >> caption >> fingerprint)
            story[caption].push_back({killed - nanoseconds(time), fingerprint});
    }
    return story;
}

TEST(Kills, LoseNothingThatIsOlderThanTwoSeconds) {
    using namespace std::chrono_literals;
    const std::uint64_t kills = Option("--kills").value_or(4);
    const std::uint64_t first = Option("--seed").value_or(std::random_device()());
    std::size_t states = 0, back = 0;
    for (std::uint64_t seed = first; seed < first + kills; ++seed) {
        SCOPED_TRACE("--kills 1 --seed " + std::to_string(seed));
        const ScriptedHost place;
        const int life = 500 + static_cast<int>(std::mt19937(static_cast<unsigned>(seed))() % 4500);
        const Story story = PlayAndKill(place.folder, seed, life);
        std::map<std::string, std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(place.folder)) {
            const LostGrids lost(entry.path() / "state/recovery");
            EXPECT_TRUE(lost.Damaged().empty());
            for (const GridSnapshot& grid : lost.Grids()) found[grid.caption] = Fingerprint(grid);
        }
        back += found.size();
        for (const auto& [caption, told] : story) {
            states += told.size();
            const std::string is = found.contains(caption) ? found[caption] : "-";
            // A grid that is younger than that need not be there yet.
            bool fits = is == "-" && told.front().age < 2s;
            for (std::size_t i = 0; i < told.size(); ++i) {
                const bool replacedLongAgo = i + 1 < told.size() && told[i + 1].age > 2s;
                fits = fits || (is == told[i].fingerprint && !replacedLongAgo);
            }
            EXPECT_TRUE(fits) << caption;
            found.erase(caption);
        }
        EXPECT_TRUE(found.empty()) << "grids that nobody told of";
    }
    std::cout << kills << " kills, " << states << " states told, " << back << " grids came back\n";
    EXPECT_GT(back, kills / 2);
}

}  // namespace
