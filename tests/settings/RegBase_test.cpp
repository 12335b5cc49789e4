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
        int SetString(std::string_view name, std::string_view bytes) override {
            EXPECT_EQ(name, "");
            stored = bytes;
            return 0;
        }
        int QueryString(std::string_view, std::string& bytes) const override {
            bytes = stored + '\0';
            return 0;
        }
        std::string& stored;
    };
    int Open(std::uint32_t root, std::string_view path, std::uint32_t access,
             std::unique_ptr<RegistryKey>& key) override {
        EXPECT_EQ(root, 0x80000000U);
        EXPECT_EQ(access, 1U);
        const auto found = values.find(std::string(path));
        if (found == values.end()) return 2;
        key = std::make_unique<Key>(found->second);
        return 0;
    }
    int Create(std::uint32_t root, std::string_view path, std::string_view className, std::uint32_t access,
               std::unique_ptr<RegistryKey>& key) override {
        EXPECT_EQ(root, 0x80000000U);
        EXPECT_EQ(className, "KivoRegBase");
        EXPECT_EQ(access, 0x2003FU);
        if (path == refused) return refusal;
        created.emplace_back(path);
        key = std::make_unique<Key>(values[std::string(path)]);
        return 0;
    }
    void AssociationsChanged() override { ++notifications; }

    std::map<std::string, std::string> values;
    std::vector<std::string> created;
    std::string refused;
    int refusal = 1234;
    int notifications = 0;
};

bool RegisterGrids(const std::string& program) {
    return RegBase::RegisterFileType(program, "nx3", "\"%1\"", "Grille de Ninarix", 0);
}

std::string ClassValue(const std::string& path) {
    return RegBase::GetRegValue(0x80000000, path, {});
}

// A start of the program with stores of its own.
class Association : public testing::Test {
  protected:
    Association() {
        ScriptedHost::WriteFile(program, "#!/bin/sh\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    bool Start() {
        DesktopAssociation desktop({data, {}}, {});
        FileRegistry registry(store, &desktop);
        const WithRegistry scope(&registry);
        const bool registered = RegisterGrids(program);
        EXPECT_TRUE(desktop.ToolsEnded(std::chrono::seconds(20)));
        return registered;
    }
    void Store(const std::string& path, const std::string& value) {
        FileRegistry registry(store);
        const WithRegistry scope(&registry);
        ASSERT_EQ(RegBase::SetRegValue(0x80000000, path, value, {}), 0);
    }

    ScriptedHost host;
    const std::string program = host.PathOf("Mon jeu");
    const std::string data = host.PathOf("data");
    const std::string store = data + "/ninarix/registry.ini";
    const std::string entry = data + "/applications/ninarix.desktop";
};

}  // namespace

TEST_F(Association, FirstStartStoresAllFourKeysAndPublishesThem) {
    EXPECT_TRUE(Start());
    FileRegistry registry(store);
    const WithRegistry scope(&registry);
    EXPECT_EQ(ClassValue(".nx3"), "Mon jeu");
    EXPECT_EQ(ClassValue("Mon jeu\\shell\\Open\\command"), program + " \"%1\"");
    EXPECT_EQ(ClassValue("Mon jeu\\DefaultIcon"), program + ", 0");
    EXPECT_EQ(ClassValue("Mon jeu"), "Grille de Ninarix");
    const std::string launcher = data + "/ninarix/Ninarix";
    EXPECT_NE(ScriptedHost::ReadFile(entry).find("\nExec=" + launcher + " %f\n"), std::string::npos);
    EXPECT_NE(ScriptedHost::ReadFile(launcher).find("'" + program + "'"), std::string::npos);
    const std::string type = ScriptedHost::ReadFile(data + "/mime/packages/ninarix.xml");
    EXPECT_NE(type.find(">Grille de Ninarix<"), std::string::npos);
    EXPECT_NE(type.find("\"*.nx3\""), std::string::npos);
}

TEST_F(Association, LaterStartsChangeNothing) {
    ASSERT_TRUE(Start());
    const std::string before = ScriptedHost::ReadFile(store);
    std::filesystem::remove(entry);
    EXPECT_FALSE(Start());
    EXPECT_EQ(ScriptedHost::ReadFile(store), before);
    EXPECT_FALSE(std::filesystem::exists(entry)) << "published although nothing was stored";
}

TEST_F(Association, ExtensionOfAnotherProgramIsLeftAlone) {
    Store(".nx3", "Autre.Document");
    const std::string before = ScriptedHost::ReadFile(store);
    EXPECT_FALSE(Start());
    EXPECT_EQ(ScriptedHost::ReadFile(store), before);
    EXPECT_FALSE(std::filesystem::exists(entry));
}

TEST_F(Association, ExtensionThatTheDesktopGaveAwayIsLeftAlone) {
    std::filesystem::create_directories(data + "/mime");
    ScriptedHost::WriteFile(data + "/mime/globs2", "50:application/x-autre:*.nx3\n");
    EXPECT_FALSE(Start());
    EXPECT_FALSE(std::filesystem::exists(store));
    EXPECT_FALSE(std::filesystem::exists(entry));
}

TEST_F(Association, StoreThatCannotBeWrittenEndsTheStartSilently) {
    ScriptedHost::WriteFile(data, "a file in the folder's place");
    EXPECT_FALSE(Start());
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
            EXPECT_EQ(registry.created.size(), own ? 3u : 0u);
            EXPECT_EQ(registry.notifications, own ? 1 : 0);
        }
    }
}

TEST(RegBase, FailureStopsItWhereTheTypeWouldNotOpenAndOnlyThere) {
    const ScriptedHost host;
    const struct {
        std::string refused;
        bool done;
        std::vector<std::string> created;
    } cases[] = {
        {".nx3", false, {}},
        {"N\\shell\\Open\\command", false, {".nx3"}},
        {"N\\DefaultIcon", true, {".nx3", "N\\shell\\Open\\command", "N"}},
        {"N", true, {".nx3", "N\\shell\\Open\\command", "N\\DefaultIcon"}},
    };
    for (const auto& [refused, done, created] : cases) {
        PermissiveRegistry registry;
        registry.refused = refused;
        const WithRegistry scope(&registry);
        EXPECT_EQ(RegisterGrids("/N"), done) << refused;
        EXPECT_EQ(registry.created, created);
        EXPECT_EQ(registry.notifications, done ? 1 : 0);
        EXPECT_EQ(RegBase::SetRegValue(0x80000000, refused, "x", {}), registry.refusal);
    }
}

TEST_F(Association, StoredTextsReadBackWholeAndAreNeverReplaced) {
    FileRegistry registry(store);
    const WithRegistry scope(&registry);
    int i = 0;
    for (const std::string text : {"", "x", "Ninarix", "C:\\Jeux\\N.exe \"%1\"", "\xC3\xA9t\xC3\xA9"}) {
        const std::string path = "Type" + std::to_string(++i);
        EXPECT_EQ(RegBase::SetRegValue(0x80000001, path, text, "Name"), 0);
        EXPECT_EQ(RegBase::SetRegValue(0x80000001, path, "other", "Name"), 5);
        EXPECT_EQ(RegBase::SetRegValue(0x80000001, path, "other", "New"), 5);
        EXPECT_EQ(RegBase::GetRegValue(0x80000001, path, "Name"), text);
        EXPECT_EQ(RegBase::GetRegValue(0x80000001, path, "New"), "");
        EXPECT_EQ(RegBase::GetRegValue(0x80000000, path, "Name"), "");
    }
}

TEST(RegBase, HostWithoutARegistryAssociatesNothing) {
    const ScriptedHost host;
    EXPECT_FALSE(RegisterGrids("/opt/Ninarix"));
    EXPECT_EQ(RegBase::SetRegValue(0x80000000, ".nx3", "N", {}), 5);
    EXPECT_EQ(ClassValue(".nx3"), "");
}
