// SPDX-License-Identifier: MIT
#include <map>
#include <utility>

#include "Fuzz.h"
#include "platform/AsciiText.h"
#include "platform/ProfileFile.h"

// Any bytes as a file, any names and value: what is set is read back, what is not touched stays.

namespace {

using Name = std::pair<std::string, std::string>;  // section and key, lower case
using Answers = std::map<Name, std::optional<std::string>>;

std::string Trimmed(std::string text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.erase(0, 1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.pop_back();
    return text;
}

std::string Lower(std::string text) {
    for (char& c : text) c = platform::LowerCase(c);
    return text;
}

std::string Unquoted(std::string text) {
    text = Trimmed(std::move(text));
    if (text.size() < 2 || text.front() != text.back()) return text;
    return text.front() == '"' || text.front() == '\'' ? text.substr(1, text.size() - 2) : text;
}

// The first line of each key in the first section of each name, found in the plainest way.
Answers Oracle(std::string bytes) {
    Answers answers;
    std::map<std::string, int> seen;
    std::optional<std::string> section;
    if (bytes.starts_with("\xFF\xFE")) {
        bytes = platform::FromUtf16(std::string_view(bytes).substr(2), platform::ByteOrder::Little);
    } else if (bytes.starts_with("\xFE\xFF")) {
        bytes = platform::FromUtf16(std::string_view(bytes).substr(2), platform::ByteOrder::Big);
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
    while (!bytes.empty()) {
        const auto feed = bytes.find('\n');
        std::string line = bytes.substr(0, feed);
        bytes.erase(0, feed == std::string::npos ? feed : feed + 1);
        while (line.ends_with('\r')) line.pop_back();
        line = Trimmed(line);
        const auto bracket = line.find(']');
        const auto equals = line.find('=');
        if (line.starts_with('[') && bracket != std::string::npos) {
            section = Lower(Trimmed(line.substr(1, bracket - 1)));
            if (seen[*section]++ > 0) section.reset();
        } else if (section && equals != std::string::npos && line[0] != '[' && line[0] != ';') {
            const Name name{*section, Lower(Trimmed(line.substr(0, equals)))};
            answers.emplace(name, Unquoted(line.substr(equals + 1)));
        }
    }
    return answers;
}

void CheckReadsLike(const platform::ProfileFile& profile, const Answers& expected) {
    for (const auto& [name, value] : expected) {
        Check(profile.Value(name.first, name.second) == value, "Value");
        Check(profile.Values(name.first, {"k", name.second})[1] == value, "Values");
    }
}

// A name that the file may well have, or any text.
std::string AnyName(FuzzedDataProvider& input) {
    static const char* const usual[] = {"", "s", "S", "k", "1", "Options"};
    return input.ConsumeBool() ? input.PickValueInArray(usual) : input.ConsumeRandomLengthString(12);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string section = AnyName(input);
    const std::string key = AnyName(input);
    const std::string value = input.ConsumeRandomLengthString(40);
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    const Name name{Lower(section), Lower(key)};

    platform::ProfileFile profile;
    profile.Parse(bytes);
    if (!profile.IsWritable()) return 0;
    Check(profile.Bytes() == bytes, "what is not touched stays");
    Answers expected = Oracle(bytes);
    CheckReadsLike(profile, expected);
    if (!profile.Set(section, key, value)) {
        Check(profile.Bytes() == bytes, "a refused Set changes nothing");
        return 0;
    }
    const bool isNew = expected.count(name) == 0;
    expected[name] = Unquoted(value);
    CheckReadsLike(profile, expected);
    Check(Oracle(profile.Bytes()) == expected, "Set adds or changes one key only");

    platform::ProfileFile again;
    again.Parse(profile.Bytes());
    Check(again.Set(section, key, value) && again.Bytes() == profile.Bytes(), "the same Set changes nothing");
    again.RemoveKey(section, key);
    if (isNew)
        expected[name] = std::nullopt;
    else
        expected.erase(name);  // a second line with the key may have come to light
    CheckReadsLike(again, expected);

    std::erase_if(expected, [&](const auto& answer) { return answer.first.first == name.first; });
    again.RemoveSection(section);
    CheckReadsLike(again, expected);
    return 0;
}
