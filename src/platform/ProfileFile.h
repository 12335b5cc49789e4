// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SafeFile.h"
#include "platform/Utf16.h"

namespace platform {

// A profile file (sections in square brackets, key=value lines) held in memory: parsed once, asked and
// changed any number of times, written back in one step.
//
// Section and key names are compared without regard to the case of ASCII letters and to surrounding
// blanks; the first matching section and in it the first matching key win. Lines that start with ";" are
// comments. The section named "" has the header "[]" and is not the keys before any header. A matching
// pair of quotes (' or ") around a value is dropped on reading. Both line ends and a byte order mark
// are read, any number of CRs before an LF included; new lines end with CR LF; lines that are not touched
// keep every byte. UTF-16 with its byte order mark is read and written back as such; texts are UTF-8 here
// then.
class ProfileFile {
  public:
    static constexpr std::uint64_t usualLimit = 256U << 20U;  // bytes

    // Starts empty. After a state other than Read the file is empty too.
    FileState Read(const std::string& path, std::uint64_t limit = usualLimit);
    void Parse(std::string bytes);

    bool HasSection(std::string_view section) const { return FindHeader(section).has_value(); }
    // The value without surrounding blanks; nothing if the section or the key is missing.
    std::optional<std::string> Value(std::string_view section, std::string_view key) const;
    // The values of many keys of one section, in one pass over the file, whatever its size.
    std::vector<std::optional<std::string>> Values(std::string_view section,
                                                   const std::vector<std::string>& keys) const;

    // False, and no change, when a name or the value holds a line break or NUL, or a name could not be
    // found again under what would be written ("]" in a section, "=" in a key, a comment's ";").
    bool Set(std::string_view section, std::string_view key, std::string_view value);
    void RemoveKey(std::string_view section, std::string_view key);
    void RemoveSection(std::string_view section);

    // The file as Write() would write it.
    std::string Bytes() const;
    // False as well for a file that was read and could not be written back as it was: broken UTF-16.
    bool IsWritable() const { return writable_; }
    // See ReplaceFile.
    bool Write(const std::string& path) const;

  private:
    friend class ProfileIndex;

    // Offsets into the bytes: a line without its end, and where the next one starts.
    struct Line {
        std::size_t start = 0;
        std::size_t end = 0;
        std::size_t next = 0;
    };

    Line LineAt(std::size_t start) const;
    std::string_view Text(const Line& line) const;
    std::optional<Line> FindHeader(std::string_view section) const;
    // Goes on to the line that follows; false at the file's end and at another section's header.
    bool NextInSection(Line& line) const;
    std::optional<Line> FindKey(const Line& header, std::string_view key) const;
    void Append(std::string_view line);

    std::string bytes_;  // of a file in UTF-16: the text as UTF-8, without byte order mark
    std::optional<ByteOrder> utf16_;
    bool writable_ = true;
};

// All values of a profile file by their names, for whoever asks often. Borrows the file, which must not
// change.
class ProfileIndex {
  public:
    explicit ProfileIndex(const ProfileFile& profile);
    // As ProfileFile::Value.
    std::optional<std::string_view> Value(std::string_view section, std::string_view key) const;

  private:
    using Names = std::pair<std::string_view, std::string_view>;  // section and key
    struct Less {
        bool operator()(const Names& a, const Names& b) const;
    };
    // Ordered, not hashed: no file can make it slow.
    std::map<Names, std::string_view, Less> values_;
};

}  // namespace platform
