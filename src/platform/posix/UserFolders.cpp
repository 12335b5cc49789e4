// SPDX-License-Identifier: MIT
#include "platform/UserFolders.h"

#include <cstdlib>

namespace platform {

namespace {

// Only absolute folders count in the environment.
std::string FromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);  // NOLINT(concurrency-mt-unsafe): the program never sets one
    std::string folder = value ? value : "";
    return folder.starts_with('/') ? folder : std::string();
}

std::string WithoutEndingSeparators(std::string folder) {
    while (folder.ends_with('/')) folder.pop_back();
    return folder;
}

}  // namespace

std::string DataFolder() {
    const std::string data = WithoutEndingSeparators(FromEnvironment("XDG_DATA_HOME"));
    const std::string home = WithoutEndingSeparators(FromEnvironment("HOME"));
    return data.empty() && !home.empty() ? home + "/.local/share" : data;
}

std::string StateFolder() {
    const std::string state = FromEnvironment("XDG_STATE_HOME");
    const std::string home = FromEnvironment("HOME");
    if (!state.empty()) return state + "/ninarix";
    return home.empty() ? home : home + "/.local/state/ninarix";
}

}  // namespace platform
