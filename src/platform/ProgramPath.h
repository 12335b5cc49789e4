// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The program's path by the name that it was started by, the first word of its command line: absolute, links
// not resolved, so that a link in a user's folder keeps that user's settings beside it. The path of what runs
// if the name leads to no program. To be called while the working folder and the environment are those of the
// start.
std::string ProgramPath(std::string_view startedAs);

}  // namespace platform
