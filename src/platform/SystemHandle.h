// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace platform {

// A file, folder or lock that is open. Only the system's own sources see inside.
class Descriptor;
struct CloseDescriptor {
    void operator()(Descriptor* descriptor) const;
};
// Closed on every way out; empty when nothing could be opened.
using SystemHandle = std::unique_ptr<Descriptor, CloseDescriptor>;

}  // namespace platform
