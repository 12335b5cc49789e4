// SPDX-License-Identifier: MIT
#include "platform/FileRegistry.h"

#include <gtest/gtest.h>

#include "platform/DesktopAssociation.h"
#include "support/ScriptedHost.h"

using namespace platform;

namespace {

constexpr auto classes = RegistryRoot::Classes;

class RegistryInAFile : public testing::Test {
  protected:
    using Key = std::unique_ptr<RegistryKey>;
    Key Created(std::string_view path, std::uint32_t root = classes) {
        EXPECT_EQ(registry.Create(root, path, "Class", RegistryAccess::All, key), 0) << path;
        return std::move(key);
    }
    // What a copy of the program that starts now reads, or the error.
    std::string Read(std::string_view path, std::string_view name = {}, std::uint32_t root = classes) {
        std::string bytes;
        int error = FileRegistry(file).Open(root, path, RegistryAccess::QueryValue, key);
        EXPECT_EQ(key == nullptr, error != 0) << path;
        if (error != 0) return "open " + std::to_string(error);
        error = key->QueryString(name, bytes);
        return error == 0 ? bytes : "query " + std::to_string(error);
    }
    static std::string Z(const std::string& text) { return text + '\0'; }

    ScriptedHost host;
    const std::string file = host.PathOf("data/ninarix/registry.ini");
    FileRegistry registry{file};
    Key key;
};

}  // namespace

TEST_F(RegistryInAFile, DeeperKeysDoNotMakeTheirParentsExist) {
    Created("Type\\shell\\Open\\command");
    EXPECT_EQ(Read("Type\\shell\\Open\\command"), "query 2");
    for (const auto* path : {"Type", "Type\\shell", "shell", "command", "Typ"})
        EXPECT_EQ(Read(path), "open 2") << path;
    for (const auto* path : {"", "\\", "\\Type", "Type\\", "Type\\\\shell"}) {
        EXPECT_EQ(Read(path), "open 161") << path;
        EXPECT_EQ(registry.Create(classes, path, "Class", RegistryAccess::All, key), RegistryError::BadPath);
    }
}

TEST_F(RegistryInAFile, HandlesGrantOnlyTheRightsTheyWereOpenedWith) {
    Created("Type")->SetString({}, "old");
    std::string bytes;
    EXPECT_EQ(registry.Open(classes, "Type", RegistryAccess::QueryValue, key), 0);
    EXPECT_EQ(key->SetString({}, "new"), RegistryError::AccessDenied);
    EXPECT_EQ(registry.Create(classes, "TYPE", "Other", RegistryAccess::QueryValue, key), 0);
    EXPECT_EQ(key->SetString({}, "new"), RegistryError::AccessDenied);
    EXPECT_EQ(Read("Type"), Z("old"));
    EXPECT_EQ(registry.Open(classes, "Type", RegistryAccess::SetValue, key), 0);
    EXPECT_EQ(key->QueryString({}, bytes), RegistryError::AccessDenied);
    EXPECT_EQ(key->SetString({}, "new"), 0);
    EXPECT_EQ(Read("Type"), Z("new"));
}

TEST_F(RegistryInAFile, StartThatIsCutOffLeavesNoKeyWithoutItsValue) {
    const auto inTime = Created(".nx3");
    EXPECT_EQ(Read(".nx3"), "open 2");
    registry.Create(classes, ".nx3", "Faster", RegistryAccess::All, key);
    key->SetString("#", "of a faster copy");
    EXPECT_EQ(inTime->SetString({}, "value"), 0);
    EXPECT_EQ(ScriptedHost::ReadFile(file),
              "[80000000\\.nx3]\r\n#=Faster\r\n%23=of%20a%20faster%20copy\r\n@=value\r\n");
}

TEST_F(RegistryInAFile, RootsKeysValuesAndBytesAreNotMixedUp) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const std::string texts[] = {"",      "@", "#", "; a = [b]", " a b ", "\"C:\\x\" \"%1\"", "%41%G0%0G%4",
                                 "a\r\n", all};
    for (const auto& text : texts) Created("A [key]=;%1")->SetString(text, text);
    for (const auto& text : texts) EXPECT_EQ(Read("a [KEY]=;%1", text), Z(text));
    EXPECT_EQ(Read("A [key]=;%1", "; A = [B]"), Z("; a = [b]")) << "names without regard to case";
    Created("A [key]=;%1", 0x80000001)->SetString({}, Z("other root, ended"));
    EXPECT_EQ(Read("A [key]=;%1", {}, 0x80000001), Z("other root, ended"));
    EXPECT_EQ(Read("A [key]=;%1"), Z(""));
    EXPECT_EQ(Read("A [key]=;%1", "none"), "query 2");
    const std::string stored = ScriptedHost::ReadFile(file);
    ScriptedHost::WriteFile(file, stored + "[80000000\\Hand]\r\n#=\r\n@=%41%G0%0G%4\r\n");
    EXPECT_EQ(Read("Hand"), Z("A%G0%0G%4")) << "typed by hand";
}

TEST_F(RegistryInAFile, StoreThatCannotBeReadRefusesEverything) {
    std::filesystem::create_directories(file);
    ScriptedHost::WriteFile(host.PathOf("plain"), "text");
    for (const std::string& bad : {file, host.PathOf("plain/r.ini"), std::string()}) {
        FileRegistry blocked(bad);
        EXPECT_NE(blocked.Open(classes, "Type", RegistryAccess::QueryValue, key), 0) << bad;
        EXPECT_EQ(blocked.Create(classes, "Type", "Class", RegistryAccess::All, key), 5) << bad;
    }
}

TEST_F(RegistryInAFile, ExtensionOfAnotherTypeReadsAsOwnedAndIsReadOnly) {
    std::filesystem::create_directories(host.PathOf("shared/mime"));
    ScriptedHost::WriteFile(host.PathOf("shared/mime/globs2"), "50:application/other:*.n\n");
    DesktopAssociation desktop({host.PathOf("data"), {host.PathOf("shared")}}, {});
    FileRegistry withDesktop(file, &desktop);
    std::string bytes;
    ASSERT_EQ(withDesktop.Open(classes, ".n", RegistryAccess::All, key), 0);
    EXPECT_EQ(key->QueryString("name", bytes), RegistryError::NotFound);
    EXPECT_EQ(key->QueryString({}, bytes), 0);
    EXPECT_EQ(bytes, Z("application/other"));
    EXPECT_EQ(key->SetString({}, "mine"), RegistryError::AccessDenied);
    for (const auto* path : {"n", ".", ".n\\shell"})
        EXPECT_EQ(withDesktop.Open(classes, path, RegistryAccess::All, key), RegistryError::NotFound);
    EXPECT_FALSE(std::filesystem::exists(file)) << "reading must not make the store";
}
