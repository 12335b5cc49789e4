#include "platform/ProfileFile.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view lineEnd = "\r\n";

std::string_view TrimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToLowerAscii(x) == ToLowerAscii(y); });
}

// The name in a section's header line; nothing for any other line.
std::optional<std::string_view> HeaderName(std::string_view line) {
    line = TrimBlanks(line);
    if (line.empty() || line.front() != '[') return std::nullopt;
    const auto bracket = line.find(']');
    if (bracket == std::string_view::npos) return std::nullopt;
    return TrimBlanks(line.substr(1, bracket - 1));
}

// The key of a line; nothing for comments, headers and lines without "=".
std::optional<std::string_view> KeyOf(std::string_view line) {
    const std::string_view trimmed = TrimBlanks(line);
    if (trimmed.empty() || trimmed.front() == ';' || trimmed.front() == '[') return std::nullopt;
    const auto equals = trimmed.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    return TrimBlanks(trimmed.substr(0, equals));
}

std::string ValueOf(std::string_view line) {
    std::string_view value = TrimBlanks(line.substr(line.find('=') + 1));
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    if (quoted) value = value.substr(1, value.size() - 2);
    return std::string(value);
}

// What ends the last of these lines, if nothing does. Of a cut CR LF only the LF is missing.
std::string_view MissingLineEnd(std::string_view bytes) {
    if (bytes.empty() || bytes == byteOrderMark || bytes.back() == '\n') return {};
    return bytes.back() == '\r' ? std::string_view("\n") : lineEnd;
}

bool HasBreak(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

bool IsWritableSection(std::string_view name) {
    return !HasBreak(name) && name.find(']') == std::string_view::npos && TrimBlanks(name) == name;
}

bool IsWritableKey(std::string_view name) {
    return !HasBreak(name) && !name.empty() && KeyOf(std::string(name) + "=") == name;
}

}  // namespace

FileState ProfileFile::Read(const std::string& path) {
    std::string bytes;
    const FileState state = ReadWholeFile(path, bytes);
    Parse(std::move(bytes));
    return state;
}

void ProfileFile::Parse(std::string bytes) {
    bytes_ = std::move(bytes);
}

ProfileFile::Line ProfileFile::LineAt(std::size_t start) const {
    const auto feed = bytes_.find('\n', start);
    const std::size_t next = feed == std::string::npos ? bytes_.size() : feed + 1;
    std::size_t end = feed == std::string::npos ? bytes_.size() : feed;
    if (end > start && bytes_[end - 1] == '\r') --end;
    return {start, end, next};
}

std::string_view ProfileFile::Text(const Line& line) const {
    std::string_view text(bytes_.data() + line.start, line.end - line.start);
    if (line.start == 0 && text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    return text;
}

std::optional<ProfileFile::Section> ProfileFile::Find(std::string_view section) const {
    std::optional<Section> found;
    for (std::size_t start = 0; start < bytes_.size();) {
        const Line line = LineAt(start);
        start = line.next;
        const auto name = HeaderName(Text(line));
        if (found && name) return found;
        if (name && SameName(*name, section)) found = Section{line, line.next};
        if (found) found->end = line.next;
    }
    return found;
}

std::optional<ProfileFile::Line> ProfileFile::FindKey(const Section& section, std::string_view key) const {
    for (std::size_t start = section.header.next; start < section.end;) {
        const Line line = LineAt(start);
        const auto name = KeyOf(Text(line));
        if (name && SameName(*name, key)) return line;
        start = line.next;
    }
    return std::nullopt;
}

std::optional<std::string> ProfileFile::Value(std::string_view section, std::string_view key) const {
    const auto place = Find(TrimBlanks(section));
    if (!place) return std::nullopt;
    const auto line = FindKey(*place, TrimBlanks(key));
    if (!line) return std::nullopt;
    return ValueOf(Text(*line));
}

std::vector<std::optional<std::string>> ProfileFile::Values(std::string_view section,
                                                            const std::vector<std::string>& keys) const {
    std::vector<std::optional<std::string>> values(keys.size());
    const auto place = Find(TrimBlanks(section));
    if (!place) return values;
    std::vector<std::string_view> wanted;
    for (const std::string& key : keys) wanted.push_back(TrimBlanks(key));
    std::size_t missing = keys.size();
    for (std::size_t start = place->header.next; start < place->end && missing > 0;) {
        const Line line = LineAt(start);
        start = line.next;
        const auto name = KeyOf(Text(line));
        if (!name) continue;
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            // Of several lines with one key the first counts.
            if (values[i] || !SameName(wanted[i], *name)) continue;
            values[i] = ValueOf(Text(line));
            --missing;
        }
    }
    return values;
}

void ProfileFile::Append(std::string_view line) {
    bytes_.append(line).append(lineEnd);
}

bool ProfileFile::Set(std::string_view section, std::string_view key, std::string_view value) {
    if (!IsWritableSection(section) || !IsWritableKey(key) || HasBreak(value)) return false;
    const std::string newLine = std::string(key).append("=").append(value);
    const auto place = Find(section);
    if (!place) {
        bytes_.append(MissingLineEnd(bytes_));
        Append(std::string("[").append(section).append("]"));
        Append(newLine);
        return true;
    }
    if (const auto line = FindKey(*place, key)) {
        const auto equals = bytes_.find('=', line->start);
        bytes_.replace(equals + 1, line->end - equals - 1, value);
        return true;
    }
    // Blank lines that set the next section off stay behind the new key.
    Line last = place->header;
    for (std::size_t start = place->header.next; start < place->end;) {
        const Line line = LineAt(start);
        if (!TrimBlanks(Text(line)).empty()) last = line;
        start = line.next;
    }
    const std::string_view before = std::string_view(bytes_).substr(0, last.next);
    bytes_.insert(last.next, std::string(MissingLineEnd(before)).append(newLine).append(lineEnd));
    return true;
}

void ProfileFile::RemoveKey(std::string_view section, std::string_view key) {
    const auto place = Find(TrimBlanks(section));
    if (!place) return;
    if (const auto line = FindKey(*place, TrimBlanks(key)))
        bytes_.erase(line->start, line->next - line->start);
}

void ProfileFile::RemoveSection(std::string_view section) {
    const auto place = Find(TrimBlanks(section));
    if (!place) return;
    // A byte order mark before the header belongs to the file.
    const auto start = static_cast<std::size_t>(Text(place->header).data() - bytes_.data());
    bytes_.erase(start, place->end - start);
}

bool ProfileFile::Write(const std::string& path) const {
    return ReplaceFile(path, bytes_);
}

}  // namespace platform
