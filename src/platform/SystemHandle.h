// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace platform {

// What a file, folder or lock that is open is for the system: known to the system's own sources alone.
class Descriptor;
struct CloseDescriptor {
    void operator()(Descriptor* descriptor) const;
};
// Closed on every way out; empty when nothing could be opened.
using SystemHandle = std::unique_ptr<Descriptor, CloseDescriptor>;

}  // namespace platform
