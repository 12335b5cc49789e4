// SPDX-License-Identifier: MIT
#include "platform/SealedCopy.h"

#include <fcntl.h>
#include <sys/mman.h>

#include "platform/posix/Descriptor.h"

namespace platform {

SealedCopy::SealedCopy(std::string_view bytes) {
    Descriptor copy(memfd_create("help", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (copy && copy.Write(bytes) &&
        fcntl(copy.Number(), F_ADD_SEALS, F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW) == 0) {
        copy_ = std::move(copy).Handle();
    }
}

std::string SealedCopy::Name() const {
    return copy_ ? copy_->Name() : std::string();
}

}  // namespace platform
