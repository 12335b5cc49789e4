// SPDX-License-Identifier: MIT
#include "document/LostGrids.h"

#include <filesystem>

#include "document/RecoveryFile.h"
#include "platform/SafeFile.h"

LostGrids::LostGrids(const std::string& parent) : folders_(RecoveryFolder::Abandoned(parent)) {
    for (const RecoveryFolder& folder : folders_) {
        for (const std::string& file : folder.Files()) {
            std::string text;
            platform::ReadWholeFile(file, text);
            if (auto grid = RecoveryFile::Parse(std::move(text))) {
                grids_.push_back(*std::move(grid));
                files_.push_back(file);
            } else {
                PutAside(file, parent);
            }
        }
    }
}

// Under the name of the folder that it was in, which no other has. Where that fails it stays in its place.
void LostGrids::PutAside(const std::string& file, const std::string& parent) {
    namespace fs = std::filesystem;
    const fs::path aside = fs::path(parent) / "illisibles";
    const fs::path from = file;
    const fs::path to = aside / (from.parent_path().filename().string() + "-" + from.filename().string());
    std::error_code failed;
    fs::create_directories(aside, failed);
    fs::rename(from, to, failed);
    damaged_.push_back(failed ? file : to.string());
}

void LostGrids::Remove() {
    std::error_code ignored;
    for (const std::string& file : files_) std::filesystem::remove(file, ignored);
    for (RecoveryFolder& folder : folders_) {
        if (folder.Files().empty()) folder.Remove();
    }
    folders_.clear();
}
