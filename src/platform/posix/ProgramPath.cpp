// SPDX-License-Identifier: MIT
#include "platform/ProgramPath.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileRights.h"

namespace fs = std::filesystem;

namespace platform {

namespace {

fs::path FoundInPath(const fs::path& name) {
    const char* variable = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe): nothing else runs yet
    std::string_view folders = variable ? variable : "";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folders.size(), folder.size() + 1));
        if (fs::path found = fs::path(folder) / name; IsProgram(found.string())) return found;
    }
    return {};
}

// "./" and "//" change nothing; ".." would, behind a link.
fs::path WithoutEmptySteps(const fs::path& path) {
    fs::path clean;
    for (const fs::path& step : path) {
        if (step != ".") clean /= step;
    }
    return clean;
}

}  // namespace

std::string ProgramPath(std::string_view startedAs) {
    const fs::path name(startedAs);
    std::error_code failed;
    const fs::path found = name.has_parent_path() ? name : FoundInPath(name);
    if (!name.empty() && IsProgram(found.string())) {
        const fs::path whole = fs::absolute(found, failed);
        if (!failed) return WithoutEmptySteps(whole).string();
    }
    return fs::read_symlink("/proc/self/exe", failed).string();
}

}  // namespace platform
