// SPDX-License-Identifier: MIT
#include "platform/SafeFile.h"

#include <charconv>
#include <cstdlib>

// The part that is the same on every system.
namespace platform {

bool FileStamp::IsSettled(std::int64_t now) const {
    constexpr std::int64_t second = 1'000'000'000;
    constexpr std::int64_t tick = second / 50;  // systems stamp files every 1 to 10 ms
    // Whole seconds: a file system that does not know smaller ones.
    return std::abs(now - modified) > (modified % second == 0 ? 2 * second : tick);
}

std::string FileStamp::Text() const {
    return std::to_string(device) + ':' + std::to_string(inode) + ':' + std::to_string(size) + ':' +
           std::to_string(modified);
}

std::optional<FileStamp> FileStamp::Parse(std::string_view text) {
    const char* place = text.data();
    const char* const end = place + text.size();
    const auto number = [&](auto& value, bool last) {
        const auto [stop, error] = std::from_chars(place, end, value);
        place = stop;
        if (error != std::errc() || last) return error == std::errc() && place == end;
        return place != end && *place++ == ':';
    };
    FileStamp stamp;
    const bool whole = number(stamp.device, false) && number(stamp.inode, false) &&
                       number(stamp.size, false) && number(stamp.modified, true);
    return whole ? std::optional(stamp) : std::nullopt;
}

std::filesystem::path FolderOfFile(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace platform
