// SPDX-License-Identifier: MIT
#include "platform/FolderAlias.h"

#include <fcntl.h>

#include "platform/posix/Descriptor.h"

namespace platform {

FolderAlias::FolderAlias(const std::string& folder)
    : folder_(Descriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)).Handle()) {}

std::string FolderAlias::Name() const {
    return folder_ ? folder_->Name() : std::string();
}

}  // namespace platform
