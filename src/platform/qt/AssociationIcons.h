// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "platform/DesktopAssociation.h"

namespace platform_qt {

// The program's icon for a desktop: the drawing itself and pictures of it in the usual sizes. Empty if the
// program was built without the drawing. Needs no QApplication.
std::vector<platform::IconFile> AssociationIcons();

}  // namespace platform_qt
