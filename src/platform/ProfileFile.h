#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SafeFile.h"

namespace platform {

// A profile file (sections in square brackets, key=value lines) held in memory: parsed once, asked and
// changed any number of times, written back in one step.
//
// Section and key names are compared without regard to the case of ASCII letters and to surrounding
// blanks; the first matching section and in it the first matching key win. Lines that start with ";" are
// comments. The section named "" has the header "[]" and is not the keys before any header. A matching
// pair of quotes (' or ") around a value is dropped on reading. Both line ends and a byte order mark
// are read; new lines end with CR LF; lines that are not touched keep every byte.
class ProfileFile {
  public:
    // Starts empty. After a state other than Read the file is empty too.
    FileState Read(const std::string& path);
    void Parse(std::string bytes);

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

    const std::string& Bytes() const { return bytes_; }
    // See ReplaceFile.
    bool Write(const std::string& path) const;

  private:
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

    std::string bytes_;
};

}  // namespace platform
