// SPDX-License-Identifier: MIT
#include <QString>

#include "Fuzz.h"
#include "settings/FilesPaths.h"
#include "settings/dialogs/MostRecentFilesClass.h"

// Any path: its parts are parts of it, and a caption keeps its beginning and its end.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string separator = input.ConsumeRandomLengthString(3);
    const std::string path = input.ConsumeRemainingBytesAsString();
    const std::string folder = FilesPaths::FolderOf(path);
    const std::string name = FilesPaths::NameOf(path);
    Check(path.starts_with(folder) && path.find(name, folder.size()) != path.npos, "the parts of a path");
    Check(name.find_first_of("/\\") == name.npos, "a name");

    const std::string whole = MostRecentFilesClass::ShortCaption(path, "");
    const QString text = QString::fromStdString(path);
    const QString caption = QString::fromStdString(whole);
    Check(caption.left(4) == text.left(4) && caption.right(21) == text.right(21), "a short caption");
    const std::string part = MostRecentFilesClass::ShortCaption(path, separator);
    Check(whole.find(part) != whole.npos && (part == whole || part.find(separator) == part.npos), "a part");
    return 0;
}
