// SPDX-License-Identifier: MIT
#include "platform/DesktopAssociation.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/FileRegistry.h"
#include "support/ScriptedHost.h"

namespace fs = std::filesystem;
using namespace platform;
using namespace std::literals;

namespace {

const std::string ownType(DesktopAssociation::MimeType);

// A desktop of its own, and a program that tells what it was called with.
class Desktop : public testing::Test {
  protected:
    Desktop() {
        ScriptedHost::WriteFile(file, "[]\r\n1=5|1|0\r\n");
        mkfifo(host.PathOf("calls").c_str(), 0600);
    }
    std::string MakeProgram(const std::string& name,
                            const std::string& command = "echo \"$#:$1\" >\"$HOME/calls\"") const {
        ScriptedHost::WriteFile(host.PathOf(name), "#!/bin/sh\n" + command + "\n");
        fs::permissions(host.PathOf(name), fs::perms::owner_all);
        return host.PathOf(name);
    }
    // What a command prints that somebody runs whose home this is.
    std::string Run(const std::string& command) const {
        setenv("BOX", host.folder.c_str(), 1);
        setenv("DATA", data.c_str(), 1);
        const std::string somebody =
            "env -i PATH=\"$PATH\" DISPLAY=:none HOME=\"$BOX\" XDG_DATA_HOME=\"$DATA\" sh -c '";
        FILE* pipe = popen((somebody + command + "' 2>/dev/null").c_str(), "r");
        std::string text(1000, '\0');
        text.resize(std::fread(text.data(), 1, text.size(), pipe));
        pclose(pipe);
        return text;
    }
    // The program is called with the file, and nothing else.
    void ExpectStarts(const std::string& opener) const {
        EXPECT_EQ(Run(opener + " ~/*.NX3 >/dev/null & timeout 10 cat ~/calls"), "1:" + file + "\n");
    }

    ScriptedHost host;
    std::string data = host.PathOf("data"), file = host.PathOf("ma grille.NX3");
    std::vector<IconFile> icons{{0, "drawing"}, {16, "picture"}};
    DesktopAssociation association{{data, {host.PathOf("shared")}}, [this] { return icons; }};
};

}  // namespace

TEST_F(Desktop, OpensGridFilesWithTheProgramUntilItIsUninstalled) {
    FileRegistry registry(data + "/ninarix/registry.ini", &association);
    std::unique_ptr<RegistryKey> key;
    const auto set = [&](std::string_view path, const std::string& value) {
        registry.Create(RegistryRoot::Classes, path, "", RegistryAccess::All, key);
        key->SetString({}, value);
    };
    set(".nx3", "Type");
    set("Type\\shell\\Open\\command", MakeProgram("Ninarix") + " \"%1\"");
    set("Type", "Grille de jeu");
    registry.AssociationsChanged();
    ASSERT_TRUE(association.ToolsEnded(20s));
    EXPECT_EQ(Run("xdg-mime query filetype ~/*.NX3"), ownType + "\n");
    EXPECT_EQ(Run("xdg-mime query default " + ownType), "ninarix.desktop\n");
    EXPECT_EQ(Run("grep -c \"Grille de jeu\" \"$XDG_DATA_HOME/mime/packages/ninarix.xml\""), "2\n");
    // Without the cache only this one tool would still find the program.
    EXPECT_EQ(Run("grep -c ninarix \"$XDG_DATA_HOME/applications/mimeinfo.cache\""), "1\n");
    ExpectStarts("xdg-open");
    EXPECT_EQ(association.OtherOwner("nx3"), "") << "its own type looks like somebody else's";
    EXPECT_EQ(ScriptedHost::ReadFile(data + "/icons/hicolor/16x16/apps/ninarix.png"), "picture");
    EXPECT_EQ(ScriptedHost::ReadFile(data + "/icons/hicolor/scalable/apps/ninarix.svg"), "drawing");

    fs::copy_file(NINARIX_UNINSTALL, host.PathOf("desinstaller"));
    Run("~/desinstaller");
    EXPECT_FALSE(fs::exists(data)) << "what is empty goes, too";
    registry.AssociationsChanged();
    EXPECT_FALSE(fs::exists(data + "/mime/packages/ninarix.xml")) << "nothing was created since";
}

TEST_F(Desktop, PathsThatNoCommandLineTakesStillStart) {
    const std::string withBlanks = host.PathOf("my \"data\" $HOME");
    DesktopAssociation quoted({withBlanks, {}}, {});
    for (const auto* name : {"a b", "it's", "\"q\"", "100%f", "$HOME `id` \\ ;&|", "two\nExec=lines\t\r"}) {
        SCOPED_TRACE(name);
        const FileAssociation ours{"nx3", MakeProgram(name), "<Grille> & \"\x01"};
        ASSERT_TRUE(association.Publish(ours) && quoted.Publish(ours) && association.ToolsEnded(20s));
        ExpectStarts("xdg-open");
        ExpectStarts("gio launch \"$HOME\"/my*/applications/ninarix.desktop");
    }
}

// Faults: an entry whose program has gone opens nothing although a package could, or is never rid of.
TEST_F(Desktop, AnEntryThatOutlivesItsProgramGivesWay) {
    fs::create_directory(host.PathOf("path"));
    const std::string program = MakeProgram("Ninarix");
    ASSERT_TRUE(association.Publish({"nx3", program, "Grille"}) && association.ToolsEnded(20s));
    fs::remove(program);
    MakeProgram("path/ninarix");
    const std::string usual = std::getenv("PATH");
    setenv("PATH", (host.PathOf("path") + ":" + usual).c_str(), 1);
    ExpectStarts("xdg-open");
    setenv("PATH", usual.c_str(), 1);
    Run("xdg-open ~/*.NX3");
    EXPECT_EQ(Run("cd \"$XDG_DATA_HOME\"; find . -name \"*ninarix*\" -type f; grep -rli nx3 ."), "");
}

// Faults: a package's entry is hidden by one that outlives its program, or a broken one is trusted.
TEST_F(Desktop, APackagesEntryThatWorksIsTheOnlyOne) {
    const FileAssociation ours{"nx3", MakeProgram("Ninarix"), "Grille"};
    const DesktopAssociation package({host.PathOf("shared"), {}}, {});
    ASSERT_TRUE(package.WriteFiles({"nx3", host.PathOf("packaged"), "Grille"}));
    DesktopAssociation withoutIcons({data, {host.PathOf("shared")}}, {});
    EXPECT_TRUE(withoutIcons.Publish(ours) && fs::exists(data + "/applications/ninarix.desktop"));
    EXPECT_TRUE(withoutIcons.ToolsEnded(20s));
    association.CompleteIcons();
    EXPECT_TRUE(fs::exists(data + "/icons/hicolor/16x16/apps/ninarix.png"));

    MakeProgram("packaged");
    EXPECT_TRUE(association.Publish(ours) && association.ToolsEnded(20s));
    association.CompleteIcons();
    EXPECT_EQ(Run("cd \"$XDG_DATA_HOME\"; find . -name \"*ninarix*\" -type f; grep -rli nx3 ."), "");
}

TEST_F(Desktop, ToolsThatAreMissingOrHangHoldNothingUp) {
    MakeProgram("update-mime-database", "read line <" + host.PathOf("calls"));
    const auto publish = [&](const std::string& path) {
        setenv("PATH", path.c_str(), 1);
        return association.Publish({"nx3", MakeProgram("Ninarix"), "Grille"});
    };
    const std::string usual = std::getenv("PATH");
    EXPECT_TRUE(publish("/none") && association.ToolsEnded(20s));
    EXPECT_TRUE(publish(host.folder.string() + ":" + usual) && !association.ToolsEnded(0s));
    setenv("PATH", usual.c_str(), 1);
    Run("echo go on >~/calls");
    EXPECT_TRUE(association.ToolsEnded(20s));
}

TEST_F(Desktop, WithoutAProgramOrAFolderNothingIsPublished) {
    const std::string program = MakeProgram("Ninarix");
    for (const auto& name : {host.PathOf("missing"), file, host.folder.string()})
        EXPECT_FALSE(association.Publish({"nx3", name, "Grille"})) << name;
    EXPECT_FALSE(fs::exists(data));
    for (const std::string& folder : {std::string(), file, file + "/data"}) {
        DesktopAssociation nowhere({folder, {}}, [this] { return icons; });
        EXPECT_FALSE(nowhere.Publish({"nx3", program, "Grille"})) << folder;
    }
    fs::create_directories(data + "/applications/ninarix.desktop");
    EXPECT_FALSE(association.Publish({"nx3", program, "Grille"}));
    EXPECT_EQ(Run("find \"$XDG_DATA_HOME\" -name \"*-new\""), "") << "half-written files are left";
}

TEST_F(Desktop, OwnerIsTheHeaviestOtherTypeOfExactlyThisExtension) {
    const std::array<std::string, 3> cases[] = {
        {"50:" + ownType + ":*.nx3\n", "50:a/b:*.nx30\n50:a/c:*.anx3\n50:a/e:*.nx\n#50:a/f:*.nx3\n", ""},
        {"60:" + ownType + ":*.nx3\n", "50:a/b:*.NX3:cs", "a/b"},
        {"40:a/c:*.nx3\n", "50:a/b:*.nx3\n45:a/d:*.nx3\n50:a/e:*.nx3\n", "a/b"},
        {"70:a/c:*.nx3\n", "50:a/b:*.nx3\n", "a/c"},
        {"", "\n:\n::\n50\n50:\n50:a/x\n:::*.nx3\nx:a/b:*.nx3\n0:a/z:*.nx3", "a/z"},
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
    const auto expect = [](const char* ownText, const char* sharedText, const std::string& own,
                           size_t shared) {
        for (const auto& [name, text] :
             {std::pair("XDG_DATA_HOME", ownText), {"XDG_DATA_DIRS", sharedText}, {"HOME", "/h"}})
            setenv(name, text, 1);
        EXPECT_EQ(DesktopFolders::OfEnvironment().own, own);
        EXPECT_EQ(DesktopFolders::OfEnvironment().shared.size(), shared);
    };
    expect("/d//", "/a:b::/c:/e", "/d", 3);
    expect("./d", "", "/h/.local/share", 2);
}
