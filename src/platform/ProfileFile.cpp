// SPDX-License-Identifier: MIT
#include "platform/ProfileFile.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <unordered_map>

#include "platform/AsciiText.h"

namespace platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};  // by ByteOrder
constexpr std::string_view lineEnd = "\r\n";

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

struct NameHash {
    std::size_t operator()(std::string_view name) const {
        std::uint32_t hash = 0;
        for (const char c : name) hash = hash * 31 + static_cast<unsigned char>(LowerCase(c));
        return hash;
    }
};

struct NameEqual {
    bool operator()(std::string_view a, std::string_view b) const { return SameName(a, b); }
};

struct NameLess {
    bool operator()(std::string_view a, std::string_view b) const {
        return std::ranges::lexicographical_compare(a, b, {}, LowerCase, LowerCase);
    }
};

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

std::string_view ValueOf(std::string_view line) {
    std::string_view value = TrimBlanks(line.substr(line.find('=') + 1));
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
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

FileState ProfileFile::Read(const std::string& path, std::uint64_t limit) {
    std::string bytes;
    const FileState state = ReadWholeFile(path, bytes, limit);
    Parse(std::move(bytes));
    return state;
}

void ProfileFile::Parse(std::string bytes) {
    writable_ = true;
    utf16_.reset();
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
        if (bytes.starts_with(utf16Marks[static_cast<std::size_t>(order)])) utf16_ = order;
    }
    if (!utf16_) {
        bytes_ = std::move(bytes);
        return;
    }
    bytes_ = FromUtf16(std::string_view(bytes).substr(2), *utf16_);
    writable_ = Bytes() == bytes;
}

std::string ProfileFile::Bytes() const {
    if (!utf16_) return bytes_;
    return std::string(utf16Marks[static_cast<std::size_t>(*utf16_)]) + ToUtf16(bytes_, *utf16_);
}

ProfileFile::Line ProfileFile::LineAt(std::size_t start) const {
    const auto feed = bytes_.find('\n', start);
    const std::size_t next = feed == std::string::npos ? bytes_.size() : feed + 1;
    std::size_t end = feed == std::string::npos ? bytes_.size() : feed;
    while (end > start && bytes_[end - 1] == '\r') --end;
    return {start, end, next};
}

std::string_view ProfileFile::Text(const Line& line) const {
    std::string_view text(bytes_.data() + line.start, line.end - line.start);
    if (line.start == 0 && text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    return text;
}

std::optional<ProfileFile::Line> ProfileFile::FindHeader(std::string_view section) const {
    for (std::size_t start = 0; start < bytes_.size();) {
        const Line line = LineAt(start);
        const auto name = HeaderName(Text(line));
        if (name && SameName(*name, section)) return line;
        start = line.next;
    }
    return std::nullopt;
}

bool ProfileFile::NextInSection(Line& line) const {
    if (line.next >= bytes_.size()) return false;
    line = LineAt(line.next);
    return !HeaderName(Text(line));
}

std::optional<ProfileFile::Line> ProfileFile::FindKey(const Line& header, std::string_view key) const {
    for (Line line = header; NextInSection(line);) {
        const auto name = KeyOf(Text(line));
        if (name && SameName(*name, key)) return line;
    }
    return std::nullopt;
}

std::optional<std::string> ProfileFile::Value(std::string_view section, std::string_view key) const {
    const auto header = FindHeader(TrimBlanks(section));
    if (!header) return std::nullopt;
    const auto line = FindKey(*header, TrimBlanks(key));
    if (!line) return std::nullopt;
    return std::string(ValueOf(Text(*line)));
}

std::vector<std::optional<std::string>> ProfileFile::Values(std::string_view section,
                                                            const std::vector<std::string>& keys) const {
    std::vector<std::optional<std::string>> values(keys.size());
    const auto header = FindHeader(TrimBlanks(section));
    if (!header) return values;
    // The keys not found yet, and their places in the result: of several lines with one key the first counts.
    std::unordered_multimap<std::string_view, std::size_t, NameHash, NameEqual> wanted;
    for (std::size_t i = 0; i < keys.size(); ++i) wanted.emplace(TrimBlanks(keys[i]), i);
    for (Line line = *header; !wanted.empty() && NextInSection(line);) {
        const auto name = KeyOf(Text(line));
        if (!name) continue;
        const auto [first, last] = wanted.equal_range(*name);
        for (auto found = first; found != last; ++found)
            values[found->second] = std::string(ValueOf(Text(line)));
        wanted.erase(first, last);
    }
    return values;
}

void ProfileFile::Append(std::string_view line) {
    bytes_.append(line).append(lineEnd);
}

bool ProfileFile::Set(std::string_view section, std::string_view key, std::string_view value) {
    if (!IsWritableSection(section) || !IsWritableKey(key) || HasBreak(value)) return false;
    const std::string newLine = std::string(key).append("=").append(value);
    const auto header = FindHeader(section);
    if (!header) {
        bytes_.append(MissingLineEnd(bytes_));
        Append(std::string("[").append(section).append("]"));
        Append(newLine);
        return true;
    }
    if (const auto line = FindKey(*header, key)) {
        const auto equals = bytes_.find('=', line->start);
        bytes_.replace(equals + 1, line->end - equals - 1, value);
        return true;
    }
    // Blank lines that set the next section off stay behind the new key.
    Line last = *header;
    for (Line line = *header; NextInSection(line);) {
        if (!TrimBlanks(Text(line)).empty()) last = line;
    }
    const std::string_view before = std::string_view(bytes_).substr(0, last.next);
    bytes_.insert(last.next, std::string(MissingLineEnd(before)).append(newLine).append(lineEnd));
    return true;
}

void ProfileFile::RemoveKey(std::string_view section, std::string_view key) {
    const auto header = FindHeader(TrimBlanks(section));
    if (!header) return;
    if (const auto line = FindKey(*header, TrimBlanks(key)))
        bytes_.erase(line->start, line->next - line->start);
}

void ProfileFile::RemoveSection(std::string_view section) {
    const auto header = FindHeader(TrimBlanks(section));
    if (!header) return;
    // A byte order mark before the header belongs to the file.
    const auto start = static_cast<std::size_t>(Text(*header).data() - bytes_.data());
    std::size_t end = header->next;
    for (Line line = *header; NextInSection(line);) end = line.next;
    bytes_.erase(start, end - start);
}

// Settings are nobody's work: with every command that remembers something the player would wait for the disk
// twice. The usual file systems put a file's content on disk before a name that replaces another one's.
bool ProfileFile::Write(const std::string& path) const {
    const auto write = [&](std::string_view bytes) {
        return ReplaceFile(path, bytes, nullptr, Durability::Later);
    };
    return writable_ && (utf16_ ? write(Bytes()) : write(bytes_));
}

ProfileIndex::ProfileIndex(const ProfileFile& profile) {
    std::set<std::string_view, NameLess> sections;
    for (ProfileFile::Line line; line.next < profile.bytes_.size();) {
        line = profile.LineAt(line.next);
        const auto section = HeaderName(profile.Text(line));
        if (!section || !sections.insert(*section).second) continue;
        for (ProfileFile::Line next = line; profile.NextInSection(next); line = next) {
            const std::string_view text = profile.Text(next);
            if (const auto key = KeyOf(text)) values_.try_emplace({*section, *key}, ValueOf(text));
        }
    }
}

std::optional<std::string_view> ProfileIndex::Value(std::string_view section, std::string_view key) const {
    const auto found = values_.find({TrimBlanks(section), TrimBlanks(key)});
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

bool ProfileIndex::Less::operator()(const Names& a, const Names& b) const {
    // Keys differ sooner than sections.
    if (!SameName(a.second, b.second)) return NameLess()(a.second, b.second);
    return NameLess()(a.first, b.first);
}

}  // namespace platform
