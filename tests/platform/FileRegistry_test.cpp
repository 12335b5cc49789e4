#include "platform/FileRegistry.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/DesktopAssociation.h"
#include "support/ScriptedHost.h"

using namespace platform;

namespace {

constexpr auto classes = RegistryRoot::Classes;

class RegistryInAFile : public testing::Test {
  protected:
    std::unique_ptr<RegistryKey> Created(std::string_view path, std::uint32_t root = classes) {
        std::unique_ptr<RegistryKey> key;
        EXPECT_EQ(registry.Create(root, path, "Class", RegistryAccess::All, key), 0) << path;
        return key;
    }
    int OpenError(std::string_view path) {
        std::unique_ptr<RegistryKey> key;
        const int error = registry.Open(classes, path, RegistryAccess::QueryValue, key);
        EXPECT_EQ(key == nullptr, error != 0) << path;
        return error;
    }
    // What a copy of the program that starts now reads; the number of the error if it cannot.
    std::string Read(std::string_view path, std::string_view name = {}, std::uint32_t root = classes) const {
        FileRegistry later(file);
        std::unique_ptr<RegistryKey> key;
        std::string bytes;
        int error = later.Open(root, path, RegistryAccess::QueryValue, key);
        if (error == 0) error = key->QueryString(name, bytes);
        return error == 0 ? bytes : "error " + std::to_string(error);
    }
    static std::string Z(std::string text) { return text + '\0'; }

    ScriptedHost host;
    const std::string file = host.PathOf("data/ninarix/registry.ini");
    FileRegistry registry{file};
};

}  // namespace

TEST_F(RegistryInAFile, DeeperKeysDoNotMakeTheirParentsExist) {
    Created("Type\\shell\\Open\\command");
    EXPECT_EQ(OpenError("Type\\shell\\Open\\command"), RegistryError::None);
    for (const auto* path : {"Type", "Type\\shell", "Type\\shell\\Open", "shell", "command", "Typ"}) {
        EXPECT_EQ(OpenError(path), RegistryError::NotFound) << path;
    }
    for (const auto* path : {"", "\\", "\\Type", "Type\\", "Type\\\\shell"}) {
        EXPECT_EQ(OpenError(path), RegistryError::BadPath) << path;
    }
}

TEST_F(RegistryInAFile, HandlesGrantOnlyTheRightsTheyWereOpenedWith) {
    Created("Type")->SetString({}, "old");
    const std::string before = ScriptedHost::ReadFile(file);
    std::unique_ptr<RegistryKey> key;
    ASSERT_EQ(registry.Open(classes, "Type", RegistryAccess::QueryValue, key), 0);
    EXPECT_EQ(key->SetString({}, "new"), RegistryError::AccessDenied);
    ASSERT_EQ(registry.Create(classes, "TYPE", "Other", RegistryAccess::QueryValue, key), 0);
    EXPECT_EQ(key->SetString({}, "new"), RegistryError::AccessDenied);
    ASSERT_EQ(registry.Open(classes, "Type", RegistryAccess::SetValue, key), 0);
    std::string bytes;
    EXPECT_EQ(key->QueryString({}, bytes), RegistryError::AccessDenied);
    EXPECT_EQ(ScriptedHost::ReadFile(file), before);
    EXPECT_EQ(key->SetString({}, "new"), 0);
    EXPECT_EQ(Read("Type"), Z("new"));
}

TEST_F(RegistryInAFile, StartThatIsCutOffLeavesNoKeyWithoutItsValue) {
    const pid_t child = fork();
    if (child == 0) {
        std::unique_ptr<RegistryKey> key;
        _exit(registry.Create(classes, ".nx3", "Class", RegistryAccess::All, key));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(OpenError(".nx3"), RegistryError::NotFound);
}

TEST_F(RegistryInAFile, RootsKeysAndValuesAreNotMixedUp) {
    for (const auto* name : {"", "@", "#", "; a = [b]"}) Created(".nx3")->SetString(name, name);
    Created(".nx3", 0x80000001)->SetString({}, "other root");
    for (const auto* name : {"", "@", "#", "; A = [B]"}) {
        EXPECT_STRCASEEQ(Read(".NX3", name).c_str(), name);
    }
    EXPECT_EQ(Read(".nx3", {}, 0x80000001), Z("other root"));
    EXPECT_EQ(Read(".nx3", "none"), "error 2");
}

TEST_F(RegistryInAFile, ValuesKeepEveryByteAndEndWithOneTerminator) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const std::string texts[] = {"", " a b ", "\"C:\\x\" \"%1\"", "'", "%41%", "a\r\n[x]\r\n@=y", all};
    for (const std::string& text : texts) {
        ASSERT_EQ(Created("A [key]=;%1")->SetString("Value", text), 0);
        EXPECT_EQ(Read("A [key]=;%1", "Value"), Z(text));
    }
    Created("Type")->SetString({}, Z("ended"));
    EXPECT_EQ(Read("Type"), Z("ended"));
}

TEST_F(RegistryInAFile, StoreThatCannotBeReadRefusesEverything) {
    std::filesystem::create_directories(file);
    ScriptedHost::WriteFile(host.PathOf("plain"), "text");
    for (const std::string& bad : {file, host.PathOf("plain/r.ini"), std::string()}) {
        FileRegistry blocked(bad);
        std::unique_ptr<RegistryKey> key;
        EXPECT_NE(blocked.Open(classes, "Type", RegistryAccess::QueryValue, key), 0) << bad;
        EXPECT_EQ(blocked.Create(classes, "Type", "Class", RegistryAccess::All, key), 5) << bad;
    }
}

TEST_F(RegistryInAFile, CopiesThatStartTogetherLoseNoKeys) {
    std::vector<pid_t> copies;
    for (const auto* name : {"A", "B", "C"}) {
        copies.push_back(fork());
        if (copies.back() != 0) continue;
        for (int i = 0; i < 10; ++i) Created(name + std::to_string(i))->SetString({}, name);
        _exit(HasFailure());
    }
    for (const pid_t copy : copies) {
        int status = 0;
        waitpid(copy, &status, 0);
        EXPECT_EQ(status, 0);
    }
    for (int i = 0; i < 10; ++i) {
        for (const auto* name : {"A", "B", "C"}) EXPECT_EQ(Read(name + std::to_string(i)), Z(name));
    }
}

TEST_F(RegistryInAFile, ExtensionOfAnotherTypeReadsAsOwnedAndIsReadOnly) {
    std::filesystem::create_directories(host.PathOf("shared/mime"));
    ScriptedHost::WriteFile(host.PathOf("shared/mime/globs2"), "50:application/other:*.nx3\n");
    DesktopAssociation desktop({host.PathOf("data"), {host.PathOf("shared")}}, {});
    FileRegistry withDesktop(file, &desktop);
    std::unique_ptr<RegistryKey> key;
    std::string bytes;
    ASSERT_EQ(withDesktop.Open(classes, ".nx3", RegistryAccess::All, key), 0);
    EXPECT_EQ(key->QueryString({}, bytes), 0);
    EXPECT_EQ(bytes, Z("application/other"));
    EXPECT_EQ(key->SetString({}, "mine"), RegistryError::AccessDenied);
    EXPECT_EQ(withDesktop.Open(classes, "nx3", RegistryAccess::All, key), RegistryError::NotFound);
    EXPECT_FALSE(std::filesystem::exists(file)) << "reading must not make the store";
}
