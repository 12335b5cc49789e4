// SPDX-License-Identifier: MIT

// write_desktop_files FOLDER PROGRAM: what a package puts into a data folder of the system so that a desktop
// shows PROGRAM and opens grid files with it.

#include <cstdio>

#include "platform/DesktopAssociation.h"
#include "platform/qt/AssociationIcons.h"
#include "shell/GridFileType.h"

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const platform::DesktopAssociation desktop({argv[1], {}}, platform_qt::AssociationIcons);
    if (desktop.WriteFiles({GridFileType::extension, argv[2], GridFileType::description})) return 0;
    std::fprintf(stderr, "write_desktop_files: %s cannot be written\n", argv[1]);
    return 1;
}
