#include "settings/FilesPaths.h"

#include "support/ScriptedHost.h"

TEST(FilesPaths, SplitsAtBothSeparators) {
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
}
