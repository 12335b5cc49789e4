// SPDX-License-Identifier: MIT
#include "shell/WindowPlace.h"

#include <QByteArray>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/Host.h"
#include "platform/SafeFile.h"

namespace WindowPlace {

namespace {

constexpr QSize frame(12, 36);           // no window manager tells before the window is shown
constexpr std::uint64_t longest = 4096;  // bytes of a place that the toolkit has written

// Empty when there is no such folder.
std::string File() {
    const std::string folder = platform::TheHost().application->StateFolder();
    return folder.empty() ? folder : folder + "/window";
}

}  // namespace

QSize Room(const QWidget& window) {
    return window.screen()->availableSize() - frame;
}

bool Restore(QWidget& window) {
    std::string bytes;
    if (platform::ReadWholeFile(File(), bytes, longest) != platform::FileState::Read) return false;
    if (!window.restoreGeometry(QByteArray::fromStdString(bytes))) return false;
    // The toolkit brings it back from screens that are gone, but makes it no smaller.
    const QRect screen = window.screen()->availableGeometry();
    QRect place = window.geometry();
    place.setSize(place.size().boundedTo(Room(window)));
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    if (!window.isMaximized()) window.setGeometry(place);
    return true;
}

void Keep(const QWidget& window) {
    const std::string file = File();
    if (file.empty()) return;
    std::error_code failed;  // then there is no last place, that is all
    std::filesystem::create_directories(platform::FolderOfFile(file), failed);
    platform::ReplaceFile(file, window.saveGeometry().toStdString(), nullptr, platform::Durability::Later);
}

}  // namespace WindowPlace
