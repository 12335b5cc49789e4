// SPDX-License-Identifier: MIT
#include "settings/FilesPaths.h"

#include "support/ScriptedHost.h"

TEST(FilesPaths, SplitsJoinsAndAsks) {
    const char* cases[][3] = {{"/home/a b/x.nx3", "/home/a b", "x"},
                              {"C:\\Jeux\\x.y.nx3", "C:\\Jeux", "x.y"},
                              {"/x.nx3", "/", "x"},
                              {"x", "", "x"},
                              {"", "", ""},
                              {"/dossier.d/", "/dossier.d", ""},
                              {"C:\\Jeux/v1.2\\sans", "C:\\Jeux/v1.2", "sans"}};
    for (const auto& [path, folder, name] : cases) {
        EXPECT_EQ(FilesPaths::FolderOf(path), folder) << path;
        EXPECT_EQ(FilesPaths::NameOf(path), name) << path;
    }
    ScriptedHost host;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(host.folder);
    const std::pair<std::string, std::string> paths[] = {{"a.nx3", host.PathOf("a.nx3")},
                                                         {".//./a b", host.PathOf("a b")},
                                                         {"../.a", host.PathOf("../.a")},
                                                         {"/x", "/x"},
                                                         {"", ""}};
    for (const auto& [path, whole] : paths) EXPECT_EQ(FilesPaths::Absolute(path), whole);
    std::filesystem::current_path(before);
    host.fileAnswers = {"/o", "/s"};
    EXPECT_EQ(FilesPaths::AskOpenFile("/a"), "/o");
    EXPECT_EQ(FilesPaths::AskSaveFile("/b", "c"), "/s");
    EXPECT_EQ(host.questions[0].folder + host.questions[1].folder + host.questions[1].proposedName, "/a/bc");
    EXPECT_TRUE(!host.questions[0].save && host.questions[1].save);
}
