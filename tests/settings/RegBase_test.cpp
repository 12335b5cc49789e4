// SPDX-License-Identifier: MIT
#include "settings/RegBase.h"

#include "platform/FileRegistry.h"
#include "support/ScriptedHost.h"

namespace {

using Paths = std::vector<std::string>;

// A real store that may refuse a path, or let anybody write to keys that exist.
struct TestRegistry : platform::FileRegistry {
    using FileRegistry::FileRegistry;
    int Open(std::uint32_t root, std::string_view path, std::uint32_t access,
             std::unique_ptr<platform::RegistryKey>& key) override {
        return FileRegistry::Open(root, path, permissive ? platform::RegistryAccess::All : access, key);
    }
    int Create(std::uint32_t root, std::string_view path, std::string_view className, std::uint32_t access,
               std::unique_ptr<platform::RegistryKey>& key) override {
        EXPECT_EQ(className, "KivoRegBase");
        if (path == refused) return 1234;
        created.emplace_back(path);
        return FileRegistry::Create(root, path, className, access, key);
    }
    void AssociationsChanged() override { ++publications; }

    bool permissive = false;
    std::string refused;
    Paths created;
    int publications = 0;
};

// Faults: another program's extension is taken over, a failure stops it too late or where the type would open
// all the same, a later start stores or publishes again.
TEST(FileType, IsStoredOnceUnlessTheExtensionIsAnothers) {
    const std::string type = "az", command = "az\\shell\\Open\\command", icon = "az\\DefaultIcon";
    const struct {
        std::string owner, refused;
        Paths created;
    } cases[] = {{"", "", {".nx3", command, icon, type}},
                 {"AZ", "", {".nx3", command, icon, type}},
                 {"", icon, {".nx3", command, type}},
                 {"", type, {".nx3", command, icon}},
                 {"az2", "", {".nx3"}},
                 {"Autre", "", {".nx3"}},
                 {"", command, {".nx3"}},
                 {"", ".nx3", {}}};
    const std::string values = "az|/un/Jeu\\az \"%1\"|/un/Jeu\\az, 0|Grille|";
    for (const auto& [owner, refused, created] : cases) {
        const ScriptedHost host;
        const auto registers = [] {
            return RegBase::RegisterFileType("/un/Jeu\\az", "nx3", "\"%1\"", "Grille", 0);
        };
        EXPECT_FALSE(registers()) << "there is no registry";
        TestRegistry registry(host.PathOf("registry.ini"));
        platform::Host withRegistry = platform::TheHost();
        withRegistry.registry = &registry;
        const platform::HostScope scope(withRegistry);
        if (registry.permissive = !owner.empty(); registry.permissive) {
            EXPECT_EQ(RegBase::SetRegValue(0x80000000, ".nx3", owner, {}), 0);
        }
        registry.refused = refused;
        EXPECT_EQ(registers(), created.size() > 2) << owner << refused;
        EXPECT_EQ(registry.created, created);
        EXPECT_EQ(registry.publications, created.size() > 2 ? 1 : 0);
        std::string stored;
        for (const auto& path : created) stored += RegBase::GetRegValue(0x80000000, path, {}) + "|";
        EXPECT_TRUE(created.size() < 4 || stored == values) << stored;
        registry.permissive = false;
        EXPECT_FALSE(registers());
        EXPECT_EQ(RegBase::SetRegValue(0x80000000, refused.empty() ? ".nx3" : refused, "x", {}),
                  refused.empty() ? 5 : 1234);
    }
}

// Faults: a moved folder, or a link made later, is not noticed, a second copy or a foreign type is taken
// over.
TEST(FileType, FollowsAProgramThatWasMovedAndNoOther) {
    const ScriptedHost host;
    TestRegistry registry(host.PathOf("registry.ini"));
    platform::Host withRegistry = platform::TheHost();
    withRegistry.registry = &registry;
    const platform::HostScope scope(withRegistry);
    const auto registers = [&](const std::string& folder) {
        return RegBase::RegisterFileType(host.PathOf(folder) + "/az", "nx3", "\"%1\"", "Grille", 0);
    };
    const auto command = [] { return RegBase::GetRegValue(0x80000000, "az\\shell\\Open\\command", {}); };
    EXPECT_TRUE(registers("avant"));
    EXPECT_TRUE(registers("ici"));
    EXPECT_EQ(command(), host.PathOf("ici") + "/az \"%1\"");
    EXPECT_EQ(RegBase::GetRegValue(0x80000000, "az\\DefaultIcon", {}), host.PathOf("ici") + "/az, 0");
    EXPECT_EQ(registry.publications, 2);
    std::filesystem::create_directory(host.PathOf("ici"));
    ScriptedHost::WriteFile(host.PathOf("ici") + "/az", "");
    EXPECT_FALSE(registers("copie"));
    EXPECT_EQ(command(), host.PathOf("ici") + "/az \"%1\"");
    std::filesystem::create_directory(host.PathOf("liens"));
    std::filesystem::create_symlink(host.PathOf("ici") + "/az", host.PathOf("liens") + "/az");
    EXPECT_TRUE(registers("liens")) << "the entry leads past the link";
    EXPECT_FALSE(registers("ici"));
    EXPECT_EQ(registry.publications, 3);
    std::filesystem::remove(host.PathOf("ici") + "/az");
    registry.permissive = true;
    EXPECT_EQ(RegBase::SetRegValue(0x80000000, ".nx3", "Autre", {}), 0);
    EXPECT_FALSE(registers("copie"));
    EXPECT_EQ(registry.publications, 3);
}

}  // namespace
