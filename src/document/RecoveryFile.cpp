// SPDX-License-Identifier: MIT
#include "document/RecoveryFile.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "diagnostics/ErrorHandling.h"
#include "platform/ProfileFile.h"
#include "settings/Conversions.h"

namespace RecoveryFile {

namespace {

constexpr std::string_view version = "1";
constexpr std::string_view endHeader = "[End]\r\n";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

std::string Hex(std::uint64_t number, int digits) {
    std::string text;
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += hexDigits[number >> shift & 15];
    return text;
}

std::string Sum(std::string_view text) {
    std::uint64_t sum = 14695981039346656037U;
    for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return Hex(sum, 16);
}

// Without what a profile file would drop or break at: control characters, blanks and quotes.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= ' ' || c == '%' || c == '"' || c == '\'' || byte == 0x7F) {
            escaped.append("%").append(Hex(byte, 2));
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto high = text[i] == '%' && i + 2 < text.size() ? hexDigits.find(text[i + 1]) : 16;
        const auto low = high < 16 ? hexDigits.find(text[i + 2]) : 16;
        if (low < 16) i += 2;
        plain += low < 16 ? static_cast<char>(high << 4 | low) : text[i];
    }
    return plain;
}

void AppendLine(std::string& text, std::string_view key, std::string_view value) {
    text.append(key).append("=").append(value).append("\r\n");
}

std::string StepText(HistoryStep step) {
    std::string text;
    for (const CellChange& change : step) text.append(text.empty() ? "" : ";").append(ChangeText(change));
    return text;
}

void CheckDigit(const CellState& state) {
    if (state.value > 9) throw RuntimeError(ErrorNumber::Overflow);
}

std::vector<CellChange> ParseStep(std::string_view text) {
    std::vector<CellChange> step;
    while (true) {
        const auto separator = text.find(';');
        step.push_back(ParseChange(text.substr(0, separator)));
        CheckDigit(step.back().before);
        CheckDigit(step.back().after);
        if (separator == std::string_view::npos) return step;
        text.remove_prefix(separator + 1);
    }
}

// A number within 0..last; error 6 outside.
std::size_t Number(const std::string& text, std::size_t last) {
    const auto number = static_cast<std::size_t>(Conversions::ToLong(text));
    if (number > last) throw RuntimeError(ErrorNumber::Overflow);
    return number;
}

// Error 6, 9 or 13: what is no grid.
GridSnapshot SnapshotIn(const platform::ProfileFile& file) {
    GridSnapshot snapshot;
    snapshot.states = StatesIn(file);
    for (const CellState& state : snapshot.states) CheckDigit(state);
    const auto field = [&](std::string_view key) { return file.Value("Recovery", key).value_or(""); };
    snapshot.caption = Unescaped(field("Caption"));
    snapshot.path = Unescaped(field("Path"));
    snapshot.stamp = platform::FileStamp::Parse(field("Stamp"));
    // No line of a step is shorter than 16 bytes.
    const std::size_t count = Number(field("Steps"), file.Bytes().size() / 16);
    for (const auto& step : file.Values("History", NumberedKeys(count))) {
        snapshot.history.Register(ParseStep(step.value_or("")));
    }
    const std::string saved = field("Saved");
    snapshot.history.Resume(Number(field("Position"), count),
                            saved.empty() ? std::nullopt : std::optional(Number(saved, count)));
    return snapshot;
}

}  // namespace

std::string Text(const GridSnapshot& snapshot) {
    const UndoHistory& history = snapshot.history;
    std::string text = GridFileText(snapshot.states);
    text.reserve(text.size() + 1024 + history.Size() * 32);
    text.append("[Recovery]\r\n");
    AppendLine(text, "Version", version);
    AppendLine(text, "Caption", Escaped(snapshot.caption));
    AppendLine(text, "Path", Escaped(snapshot.path));
    if (snapshot.stamp) AppendLine(text, "Stamp", snapshot.stamp->Text());
    AppendLine(text, "Steps", std::to_string(history.Size()));
    AppendLine(text, "Position", std::to_string(history.Position()));
    if (history.Saved()) AppendLine(text, "Saved", std::to_string(*history.Saved()));
    text.append("[History]\r\n");
    for (std::size_t i = 0; i < history.Size(); ++i) {
        AppendLine(text, std::to_string(i + 1), StepText(history.Step(i)));
    }
    const std::string sum = Sum(text);
    text.append(endHeader);
    AppendLine(text, "Sum", sum);
    return text;
}

std::optional<GridSnapshot> Parse(std::string text) {
    const auto end = text.rfind(endHeader);
    if (end == std::string::npos) return std::nullopt;
    const std::string sum = Sum(std::string_view(text).substr(0, end));
    platform::ProfileFile file;
    file.Parse(std::move(text));
    if (file.Value("End", "Sum") != sum || file.Value("Recovery", "Version") != version) return std::nullopt;
    try {
        return SnapshotIn(file);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace RecoveryFile
