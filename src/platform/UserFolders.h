// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Where the system wants what programs keep for this user. Absolute paths; empty if the environment names
// none.
namespace platform {

// What programs publish to the desktop. Without a separator at the end.
std::string DataFolder();
// The program's own, for what it remembers from run to run.
std::string StateFolder();

}  // namespace platform
