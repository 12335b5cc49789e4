// SPDX-License-Identifier: MIT
#include "settings/RegBase.h"

#include <filesystem>
#include <system_error>

#include "platform/AsciiText.h"
#include "platform/Host.h"
#include "platform/Registry.h"

namespace RegBase {

namespace {

using platform::Registry;
using platform::RegistryKey;
namespace RegistryAccess = platform::RegistryAccess;
namespace RegistryError = platform::RegistryError;
namespace RegistryRoot = platform::RegistryRoot;

std::string TypeNameOf(const std::string& exePath) {
    return exePath.substr(exePath.find_last_of("/\\") + 1);
}

constexpr const char* className = "KivoRegBase";

bool Write(const std::string& path, const std::string& value) {
    return SetRegValue(RegistryRoot::Classes, path, value, {}) == RegistryError::None;
}

// Also into a key that exists.
bool Overwrite(const std::string& path, const std::string& value) {
    Registry* registry = platform::TheHost().registry;
    std::unique_ptr<RegistryKey> key;
    return registry->Create(RegistryRoot::Classes, path, className, RegistryAccess::All, key) ==
               RegistryError::None &&
           key->SetString({}, value) == RegistryError::None;
}

// The command that an earlier start stored leads to a program that is not there any more, since its folder
// was moved or deleted, or past the link to it that it was started by now, beside which the settings stand.
// What cannot be looked at counts as being there.
bool IsOutdated(const std::string& command, const std::string& commandArguments, const std::string& exePath) {
    const std::string arguments = " " + commandArguments;
    if (!command.ends_with(arguments)) return false;
    std::error_code failed;
    const std::string program = command.substr(0, command.size() - arguments.size());
    if (std::filesystem::status(program, failed).type() == std::filesystem::file_type::not_found) return true;
    return std::filesystem::is_symlink(exePath, failed) && !std::filesystem::is_symlink(program, failed) &&
           std::filesystem::equivalent(program, exePath, failed);
}

}  // namespace

bool RegisterFileType(const std::string& exePath, const std::string& extension,
                      const std::string& commandArguments, const std::string& description, int iconIndex) {
    const std::string typeName = TypeNameOf(exePath);
    const std::string extensionKey = "." + extension;
    const std::string owner = GetRegValue(RegistryRoot::Classes, extensionKey, {});
    if (!owner.empty() && !platform::SameName(owner, typeName)) return false;

    const std::string command = exePath + " " + commandArguments;
    const std::string commandKey = typeName + "\\shell\\Open\\command";
    const std::string stored = GetRegValue(RegistryRoot::Classes, commandKey, {});
    const bool moved = !owner.empty() && stored != command && IsOutdated(stored, commandArguments, exePath);
    const auto write = moved ? Overwrite : Write;
    if (!write(extensionKey, typeName) || !write(commandKey, command)) return false;
    // Without these files still open; they only have no icon and no description.
    write(typeName + "\\DefaultIcon", exePath + ", " + std::to_string(iconIndex));
    write(typeName, description);
    platform::TheHost().registry->AssociationsChanged();
    return true;
}

int SetRegValue(std::uint32_t root, const std::string& path, std::string_view value, std::string_view name) {
    Registry* registry = platform::TheHost().registry;
    if (!registry) return RegistryError::AccessDenied;
    std::unique_ptr<RegistryKey> key;
    // Opened for queries only, an existing key refuses the value: that is what protects it.
    if (registry->Open(root, path, RegistryAccess::QueryValue, key) != RegistryError::None) {
        const int error = registry->Create(root, path, className, RegistryAccess::All, key);
        if (error != RegistryError::None) return error;
    }
    return key->SetString(name, value);
}

std::string GetRegValue(std::uint32_t root, const std::string& path, std::string_view name) {
    Registry* registry = platform::TheHost().registry;
    if (!registry) return {};
    std::unique_ptr<RegistryKey> key;
    if (registry->Open(root, path, RegistryAccess::QueryValue, key) != RegistryError::None) return {};
    std::string value;
    if (key->QueryString(name, value) != RegistryError::None || value.empty()) return {};
    value.pop_back();  // the terminating NUL
    return value;
}

}  // namespace RegBase
