// SPDX-License-Identifier: MIT
#include "platform/Host.h"

#include <cassert>

namespace platform {

namespace {
Host installed;
}

const Host& TheHost() {
    assert(installed.application && "no host is installed");
    return installed;
}

HostScope::HostScope(const Host& host) : previous_(installed) {
    installed = host;
}

HostScope::~HostScope() {
    installed = previous_;
}

}  // namespace platform
