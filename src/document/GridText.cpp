// SPDX-License-Identifier: MIT
#include "document/GridText.h"

#include <algorithm>
#include <vector>

namespace GridText {

namespace {

using std::string_view;

constexpr std::size_t longestText = 65536;  // bytes
constexpr string_view blanks = " \t";
constexpr string_view emptyCells = ".0*_";
constexpr string_view frames = "|+-=:'!";
constexpr string_view separators = ",;";

bool IsOf(string_view set, char character) {
    return set.find(character) != string_view::npos;
}

bool IsCell(char character) {
    return (character >= '1' && character <= '9') || IsOf(emptyCells, character);
}

std::uint8_t ValueOf(char cell) {
    return cell >= '1' && cell <= '9' ? static_cast<std::uint8_t>(cell - '0') : std::uint8_t{0};
}

// Box-drawing characters become "|", fixed blanks blanks and middle dots empty cells; the byte order mark
// goes.
std::string InPlainCharacters(string_view text) {
    std::string plain;
    plain.reserve(text.size());
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    while (!text.empty()) {
        std::size_t length = 1;
        char character = text.front();
        if (text.size() >= 3 && text[0] == '\xE2' && (text[1] == '\x94' || text[1] == '\x95')) {
            length = 3;
            character = text[1] == '\x94' && (text[2] == '\x80' || text[2] == '\x81') ? '-' : '|';
        } else if (text.starts_with("\xC2\xA0") || text.starts_with("\xC2\xB7")) {
            length = 2;
            character = text[1] == '\xA0' ? ' ' : '.';
        }
        plain += character == '\r' ? '\n' : character;
        text.remove_prefix(length);
    }
    return plain;
}

std::vector<string_view> Split(string_view text, char separator) {
    std::vector<string_view> pieces;
    for (std::size_t end = 0; end != string_view::npos; text.remove_prefix(std::min(text.size(), end + 1))) {
        end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == string_view::npos) break;
    }
    return pieces;
}

string_view Trimmed(string_view text, string_view what) {
    const auto first = text.find_first_not_of(what);
    if (first == string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(what) - first + 1);
}

// Between two rows, or above and below all; its corners may look like empty cells.
bool IsFrameLine(string_view line) {
    const bool onlyFrame = std::ranges::all_of(line, [](char character) {
        return IsOf(frames, character) || IsOf(blanks, character) || character == '*' || character == '.';
    });
    return onlyFrame && (line.find("--") != string_view::npos || line.find("==") != string_view::npos ||
                         line.find_first_of(".*") == string_view::npos);
}

// The cells of a line of a table: 9 or 81 fields, one character or nothing in each.
std::optional<std::string> Fields(string_view line, char separator) {
    std::vector<string_view> fields = Split(line, separator);
    if (fields.size() % 9 == 1 && Trimmed(fields.back(), blanks).empty()) fields.pop_back();
    if (fields.size() != 9 && fields.size() != 81) return std::nullopt;
    std::string cells;
    for (const string_view field : fields) {
        const string_view cell = Trimmed(field, " \t\"");
        if (cell.size() > 1) return std::nullopt;
        cells += cell.empty() ? '.' : cell.front();
    }
    return cells;
}

// The cells of any line, one character each; what is no cell and not to be skipped stays, and fails later.
std::string Cells(string_view line, bool dashesAreCells) {
    for (const char separator : {'\t', ';', ','}) {
        if (auto cells = Fields(line, separator)) return *cells;
    }
    if (Trimmed(line, blanks).empty() || Trimmed(line, blanks).front() == '#' || IsFrameLine(line)) return {};
    std::string cells;
    for (const char character : line) {
        if (character == '-' && dashesAreCells) {
            cells += '.';
        } else if (!IsOf(frames, character) && !IsOf(blanks, character) && !IsOf(separators, character)) {
            cells += character;
        }
    }
    return cells;
}

}  // namespace

std::string Write(const Values& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        text += values[i] == 0 ? '.' : static_cast<char>('0' + values[i]);
        if (i % 9 == 8) text += '\n';
    }
    return text;
}

std::optional<Values> Read(string_view text) {
    if (text.size() > longestText) return std::nullopt;
    const std::string plain = InPlainCharacters(text);
    const std::vector<string_view> lines = Split(plain, '\n');
    const bool dashesAreCells = std::ranges::none_of(lines, [](string_view line) {
        return !IsFrameLine(line) && line.find_first_of(emptyCells) != string_view::npos;
    });
    std::string all;
    for (const string_view line : lines) {
        const std::string cells = Cells(line, dashesAreCells);
        if (cells.size() % 9 != 0 || !std::ranges::all_of(cells, IsCell)) return std::nullopt;
        all += cells;
        if (all.size() > 81) return std::nullopt;
    }
    if (all.size() != 81) return std::nullopt;
    Values values{};
    std::ranges::transform(all, values.begin(), ValueOf);
    return values;
}

}  // namespace GridText
