// SPDX-License-Identifier: MIT
#include "settings/FilesPaths.h"

#include <filesystem>
#include <system_error>

#include "platform/Host.h"
#include "settings/HelpContexts.h"

namespace FilesPaths {

namespace {

std::string AskFile(bool save, const std::string& folder, const std::string& proposedName) {
    return platform::TheHost().files->Ask(
        {save, std::string(GridFilter), folder, proposedName, HelpContext::Fichiers});
}

}  // namespace

std::string FolderOf(std::string_view path) {
    const auto separator = path.find_last_of("/\\");
    if (separator == std::string_view::npos) return {};
    return std::string(path.substr(0, separator == 0 ? 1 : separator));
}

std::string NameOf(std::string_view path) {
    const auto separator = path.find_last_of("/\\");
    if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
    return std::string(path.substr(0, path.rfind('.')));
}

std::string Absolute(const std::string& path) {
    std::string_view name = path;
    while (name.starts_with("./")) {
        name.remove_prefix(2);
        while (name.starts_with('/')) name.remove_prefix(1);
    }
    std::error_code failed;
    const std::filesystem::path whole = std::filesystem::absolute(name, failed);
    return path.empty() || failed ? path : whole.string();
}

std::string AskOpenFile(const std::string& folder) {
    return AskFile(false, folder, {});
}

std::string AskSaveFile(const std::string& folder, const std::string& proposedName) {
    return AskFile(true, folder, proposedName);
}

}  // namespace FilesPaths
