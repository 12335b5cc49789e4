#include "settings/RegBase.h"

#include <map>
#include <unistd.h>

#include "platform/DesktopAssociation.h"
#include "platform/FileRegistry.h"
#include "support/ScriptedHost.h"

using namespace platform;

namespace {

// Lends the running host a registry.
class WithRegistry {
  public:
    explicit WithRegistry(Registry* registry) : scope_(Changed(registry)) {}

  private:
    static Host Changed(Registry* registry) {
        Host host = TheHost();
        host.registry = registry;
        return host;
    }
    HostScope scope_;
};

// Grants every write but those to the refused path, and records all that is asked of it.
class PermissiveRegistry : public Registry {
  public:
    struct Key : RegistryKey {
        explicit Key(std::string& value) : stored(value) {}
        int SetString(std::string_view, std::string_view bytes) override { return stored = bytes, 0; }
        int QueryString(std::string_view, std::string& bytes) const override {
            return bytes = stored + '\0', 0;
        }
        std::string& stored;
    };
    int Open(std::uint32_t, std::string_view path, std::uint32_t access,
             std::unique_ptr<RegistryKey>& key) override {
        EXPECT_EQ(access, 1U);
        const auto found = values.find(std::string(path));
        if (found == values.end()) return 2;
        key = std::make_unique<Key>(found->second);
        return 0;
    }
    int Create(std::uint32_t, std::string_view path, std::string_view className, std::uint32_t access,
               std::unique_ptr<RegistryKey>& key) override {
        EXPECT_EQ(className, "KivoRegBase");
        EXPECT_EQ(access, 0x2003FU);
        if (path == refused) return 1234;
        created.emplace_back(path);
        key = std::make_unique<Key>(values[std::string(path)]);
        return 0;
    }
    void AssociationsChanged() override { ++notifications; }

    std::map<std::string, std::string> values;
    std::vector<std::string> created;
    std::string refused;
    int notifications = 0;
};

bool RegisterGrids(const std::string& program) {
    return RegBase::RegisterFileType(program, "nx3", "\"%1\"", "Grille de Ninarix", 0);
}

}  // namespace

TEST(RegBase, FirstStartPublishesAllAndLaterOnesChangeNothing) {
    ScriptedHost host;
    const std::string program = host.PathOf("Mon jeu");
    const std::string store = host.PathOf("data/ninarix/registry.ini");
    const std::string entry = host.PathOf("data/applications/ninarix.desktop");
    ScriptedHost::WriteFile(program, "#!/bin/sh\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    DesktopAssociation desktop({host.PathOf("data"), {}}, {});
    FileRegistry registry(store, &desktop);
    const WithRegistry scope(&registry);

    EXPECT_TRUE(RegisterGrids(program));
    const std::map<std::string, std::string> values = {{".nx3", "Mon jeu"},
                                                       {"Mon jeu\\shell\\Open\\command", program + " \"%1\""},
                                                       {"Mon jeu\\DefaultIcon", program + ", 0"},
                                                       {"Mon jeu", "Grille de Ninarix"}};
    for (const auto& [path, value] : values) EXPECT_EQ(RegBase::GetRegValue(0x80000000, path, {}), value);
    EXPECT_NE(ScriptedHost::ReadFile(entry).find("\nTryExec=" + program + "\n"), std::string::npos);
    const std::string type = ScriptedHost::ReadFile(host.PathOf("data/mime/packages/ninarix.xml"));
    EXPECT_NE(type.find(">Grille de Ninarix<"), std::string::npos);

    const std::string before = ScriptedHost::ReadFile(store);
    std::filesystem::remove(entry);
    EXPECT_FALSE(RegisterGrids(program));
    EXPECT_EQ(RegBase::SetRegValue(0x80000000, ".nx3", "other", {}), 5);
    EXPECT_EQ(ScriptedHost::ReadFile(store), before);
    EXPECT_FALSE(std::filesystem::exists(entry)) << "published although nothing was stored";
    EXPECT_TRUE(desktop.ToolsEnded(std::chrono::seconds(20)));
}

TEST(RegBase, OnlyAnotherNameThanItsOwnInAnyCaseStopsIt) {
    const ScriptedHost host;
    const struct {
        std::string owner;
        bool own;
    } cases[] = {{"", true},         {"NINARIX.EXE", true},   {"ninarix.Exe", true},
                 {"Ninarix", false}, {"Ninarix.exe2", false}, {"Autre.Document", false}};
    for (const auto& [owner, own] : cases) {
        for (const auto* program : {"C:\\Jeux et\\Ninarix.exe", "/opt/jeux/Ninarix.exe"}) {
            PermissiveRegistry registry;
            registry.values[".nx3"] = owner;
            const WithRegistry scope(&registry);
            EXPECT_EQ(RegisterGrids(program), own) << owner;
            EXPECT_EQ(registry.values[".nx3"], own ? "Ninarix.exe" : owner);
            EXPECT_EQ(registry.notifications, own ? 1 : 0);
        }
    }
}

TEST(RegBase, FailureStopsItWhereTheTypeWouldNotOpenAndOnlyThere) {
    const ScriptedHost host;
    const std::string command = "N\\shell\\Open\\command";
    const std::map<std::string, std::vector<std::string>> createdWhenRefused = {
        {".nx3", {}},
        {command, {".nx3"}},
        {"N\\DefaultIcon", {".nx3", command, "N"}},
        {"N", {".nx3", command, "N\\DefaultIcon"}},
    };
    for (const auto& [refused, created] : createdWhenRefused) {
        const bool done = created.size() == 3;
        PermissiveRegistry registry;
        registry.refused = refused;
        const WithRegistry scope(&registry);
        EXPECT_EQ(RegisterGrids("/N"), done) << refused;
        EXPECT_EQ(registry.created, created);
        EXPECT_EQ(registry.notifications, done ? 1 : 0);
        EXPECT_EQ(RegBase::SetRegValue(0x80000000, refused, "x", {}), 1234);
    }
}
