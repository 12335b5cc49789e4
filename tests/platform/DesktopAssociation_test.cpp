#include "platform/DesktopAssociation.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

namespace fs = std::filesystem;
using namespace platform;
using namespace std::chrono_literals;

namespace {

const std::string ownType(DesktopAssociation::MimeType);
const std::string oddNames[] = {"a b", "it's", "\"q\"", "100%f", "$HOME `id` \\ ;&|", "two\nExec=lines"};

// A variable of the environment for as long as the test runs.
class Variable {
  public:
    Variable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> old_;
};

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// What a command prints, without line ends behind it.
std::string Output(const std::string& command) {
    FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    std::string text;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;) text += static_cast<char>(c);
    pclose(pipe);
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

bool HasTool(const std::string& tool) {
    return !Output("command -v " + tool).empty();
}

// A desktop of its own: data and settings folders, and a program that tells what it was called with.
class Desktop : public testing::Test {
  protected:
    explicit Desktop(const std::string& dataName = "data") : data(host.PathOf(dataName)) {
        mkfifo(host.PathOf("calls").c_str(), 0600);
        calls = open(host.PathOf("calls").c_str(), O_RDWR | O_CLOEXEC);
    }
    ~Desktop() override { close(calls); }

    std::string MakeProgram(const std::string& name) const {
        const std::string path = host.PathOf(name);
        ScriptedHost::WriteFile(path, "#!/bin/sh\nprintf '%s:%s' $# \"$1\" >" + host.PathOf("calls") + "\n");
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }
    std::string NextCall() const {
        pollfd ready{calls, POLLIN, 0};
        char text[1000];
        if (poll(&ready, 1, 10'000) != 1) return "the program was not started";
        const ssize_t size = read(calls, text, sizeof text);
        return {text, static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
    }
    // Runs a command as somebody would whose home is this desktop.
    std::string Run(const std::string& command) const {
        const std::string home = Quoted(host.folder);
        return Output("env -i PATH=\"$PATH\" DISPLAY=:none HOME=" + home + " XDG_CONFIG_HOME=" + home +
                      "/config XDG_CACHE_HOME=" + home + "/cache XDG_DATA_HOME=" + Quoted(data) + " " +
                      command);
    }
    void Publish(const std::string& program, const std::string& description = "Grille de Ninarix") {
        ASSERT_TRUE(association.Publish({"nx3", program, description}));
        ASSERT_TRUE(association.ToolsEnded(20s));
    }
    void ExpectEveryNameStarts(const std::string& opener) {
        const std::string file = host.PathOf("g.nx3");
        ScriptedHost::WriteFile(file, "[]\r\n");
        for (const std::string& name : oddNames) {
            Publish(MakeProgram(name), "<Grille> & \"\x01");
            Run(opener + " " + Quoted(file));
            EXPECT_EQ(NextCall(), "1:" + file) << name;
        }
    }
    // Everything in the data folder that names the program or its files.
    std::string Traces() const {
        return Output("cd " + Quoted(data) +
                      " && { find . -iname '*ninarix*'; grep -rli 'nx3\\|ninarix' .; }");
    }

    ScriptedHost host;
    const std::string data;
    int calls = -1;
    std::vector<IconFile> icons{{0, "drawing"}, {16, "picture"}};
    DesktopAssociation association{{data, {host.PathOf("shared")}}, [this] { return icons; }};
};

class DesktopWithBlanks : public Desktop {
  protected:
    DesktopWithBlanks() : Desktop("my \"data\" $HOME") {}
};

}  // namespace

TEST_F(Desktop, OpensGridFilesWithTheProgramUntilItIsUninstalled) {
    for (const auto* tool :
         {"update-mime-database", "update-desktop-database", "xdg-mime", "xdg-open", "mimetype"}) {
        if (!HasTool(tool)) GTEST_SKIP() << tool << " is not installed";
    }
    const std::string file = host.PathOf("ma grille.NX3");
    ScriptedHost::WriteFile(file, "[]\r\n1=5|1|0\r\n");
    Publish(MakeProgram("Ninarix"));
    EXPECT_EQ(Run("xdg-mime query filetype " + Quoted(file)), ownType);
    EXPECT_EQ(Run("xdg-mime query default " + ownType), "ninarix.desktop");
    // Without the cache only this one tool would still find the program.
    EXPECT_EQ(Run("grep -c ninarix " + Quoted(data + "/applications/mimeinfo.cache")), "1");
    Run("xdg-open " + Quoted(file));
    EXPECT_EQ(NextCall(), "1:" + file);
    EXPECT_EQ(association.OtherOwner("nx3"), "") << "its own type looks like somebody else's";

    EXPECT_EQ(ScriptedHost::ReadFile(data + "/icons/hicolor/16x16/apps/ninarix.png"), "picture");
    EXPECT_EQ(ScriptedHost::ReadFile(data + "/icons/hicolor/scalable/apps/ninarix.svg"), "drawing");

    Run(Quoted(NINARIX_UNINSTALL));
    EXPECT_EQ(Run("xdg-mime query default " + ownType), "");
    EXPECT_EQ(Run("xdg-mime query filetype " + Quoted(file)).find("ninarix"), std::string::npos);
    EXPECT_EQ(Traces(), "");
}

TEST_F(Desktop, ProgramPathsThatNoCommandLineTakesStillStart) {
    if (!HasTool("xdg-open") || !HasTool("mimetype")) GTEST_SKIP() << "xdg-open or mimetype is not installed";
    ExpectEveryNameStarts("xdg-open");
}

TEST_F(DesktopWithBlanks, QuotedCommandsStartTheProgramToo) {
    if (!HasTool("gio")) GTEST_SKIP() << "gio is not installed";
    ExpectEveryNameStarts("gio launch " + Quoted(data + "/applications/ninarix.desktop"));
}

TEST_F(Desktop, ToolsThatAreMissingOrHangHoldNothingUp) {
    const std::string program = MakeProgram("Ninarix");
    const std::string tools = host.PathOf("tools");
    fs::create_directory(tools);
    {
        const Variable path("PATH", tools);
        EXPECT_TRUE(association.Publish({"nx3", program, "Grille"}));
        EXPECT_TRUE(association.ToolsEnded(20s));
    }
    const std::string gate = host.PathOf("gate");
    mkfifo(gate.c_str(), 0600);
    ScriptedHost::WriteFile(tools + "/update-mime-database", "#!/bin/sh\nread line <" + gate + "\n");
    fs::permissions(tools + "/update-mime-database", fs::perms::owner_all);
    const Variable path("PATH", tools + ":/usr/bin:/bin");
    EXPECT_TRUE(association.Publish({"nx3", program, "Grille"}));
    EXPECT_FALSE(association.ToolsEnded(0s));
    const int opened = open(gate.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(write(opened, "go on\n", 6), 6);
    EXPECT_TRUE(association.ToolsEnded(20s));
    close(opened);
}

TEST_F(Desktop, WithoutAProgramOrAFolderNothingIsPublished) {
    ScriptedHost::WriteFile(host.PathOf("not executable"), "text");
    for (const auto* name : {"missing", "not executable", ""}) {
        EXPECT_FALSE(association.Publish({"nx3", host.PathOf(name), "Grille"})) << name;
    }
    EXPECT_FALSE(fs::exists(data));
    const std::string program = MakeProgram("Ninarix");
    const std::string blocked = host.PathOf("not executable");
    for (const std::string& folder : {std::string(), blocked, blocked + "/data"}) {
        DesktopAssociation nowhere({folder, {}}, [this] { return icons; });
        EXPECT_FALSE(nowhere.Publish({"nx3", program, "Grille"})) << folder;
    }
    fs::create_directories(data + "/applications/ninarix.desktop");
    EXPECT_FALSE(association.Publish({"nx3", program, "Grille"}));
    EXPECT_EQ(Output("find " + data + " -name '*-new'"), "") << "half-written files are left";
}

TEST_F(Desktop, OwnerIsTheHeaviestOtherTypeOfExactlyThisExtension) {
    const struct {
        std::string own, shared, owner;
    } cases[] = {
        {"50:" + ownType + ":*.nx3\n", "50:a/b:*.nx30\n50:a/c:*.anx3\n50:a/e:*.nx\n#50:a/f:*.nx3\n", ""},
        {"60:" + ownType + ":*.nx3\n", "50:a/b:*.NX3:cs", "a/b"},
        {"40:a/c:*.nx3\n", "50:a/b:*.nx3\n45:a/d:*.nx3\n", "a/b"},
        {"70:a/c:*.nx3\n", "50:a/b:*.nx3\n", "a/c"},
        {"", "\n:\n::\n50\n50:\n50:a/x\n:::*.nx3\nx:a/b:*.nx3", ""},
    };
    fs::create_directories(data + "/mime");
    fs::create_directories(host.PathOf("shared/mime"));
    for (const auto& [own, shared, owner] : cases) {
        ScriptedHost::WriteFile(data + "/mime/globs2", own);
        ScriptedHost::WriteFile(host.PathOf("shared/mime/globs2"), shared);
        EXPECT_EQ(association.OtherOwner("nx3"), owner) << own << shared;
    }
}

TEST(DesktopFolders, RelativePathsOfTheEnvironmentCountAsMissing) {
    const Variable home("HOME", "/h");
    const Variable shared("XDG_DATA_DIRS", "/a:b::/c");
    const Variable absolute("XDG_DATA_HOME", "/d/");
    EXPECT_EQ(platform::DesktopFolders::OfEnvironment().own, "/d");
    const Variable relative("XDG_DATA_HOME", "./d");
    EXPECT_EQ(platform::DesktopFolders::OfEnvironment().own, "/h/.local/share");
    EXPECT_EQ(platform::DesktopFolders::OfEnvironment().shared, (std::vector<std::string>{"/a", "/c"}));
}
