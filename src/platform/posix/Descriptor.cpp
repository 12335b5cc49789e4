// SPDX-License-Identifier: MIT
#include "platform/posix/Descriptor.h"

#include <cerrno>

namespace platform {

void CloseDescriptor::operator()(Descriptor* descriptor) const {
    delete descriptor;
}

bool Descriptor::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = write(number_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

SystemHandle Descriptor::Handle() && {
    return SystemHandle(*this ? new Descriptor(std::move(*this)) : nullptr);
}

}  // namespace platform
