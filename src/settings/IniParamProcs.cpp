#include "settings/IniParamProcs.h"

#include "platform/FolderLock.h"
#include "platform/Host.h"

namespace IniParamProcs {

namespace {

constexpr std::size_t longestValue = 1023;  // bytes

// Reads, changes and writes a file while no other running copy does. A file that cannot be read is left
// alone: writing would replace it by the one new key.
template <class Change>
void ChangeFile(const std::string& file, Change&& change) {
    const platform::FolderLock lock(file);
    platform::ProfileFile profile;
    const platform::FileState state = profile.Read(file);
    if (state != platform::FileState::Read && state != platform::FileState::Missing) return;
    const std::string before = profile.Bytes();
    change(profile);
    if (profile.Bytes() != before) profile.Write(file);
}

std::string ValueIn(const platform::ProfileFile& profile, std::string_view section, std::string_view key,
                    std::string_view byDefault) {
    const auto value = profile.Value(section, key);
    return AsProfileString(value ? std::string_view(*value) : byDefault);
}

}  // namespace

std::string AsProfileString(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    if (text.size() > longestValue) {
        std::size_t length = longestValue;
        const auto continues = [&](std::size_t i) {
            return (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        };
        // No cut inside a character; a run of such bytes that no character has is cut where it stands.
        while (length > longestValue - 3 && continues(length)) --length;
        text = text.substr(0, continues(length) ? longestValue : length);
    }
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view byDefault,
                              const std::string& file) {
    platform::ProfileFile profile;
    profile.Read(file);
    return ValueIn(profile, section, key, byDefault);
}

void WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::string& file) {
    ChangeFile(file, [&](platform::ProfileFile& profile) { profile.Set(section, key, value); });
}

void DeleteProfileKey(std::string_view section, std::string_view key, const std::string& file) {
    ChangeFile(file, [&](platform::ProfileFile& profile) { profile.RemoveKey(section, key); });
}

void DeleteProfileSection(std::string_view section, const std::string& file) {
    ChangeFile(file, [&](platform::ProfileFile& profile) { profile.RemoveSection(section); });
}

std::string IniFilePath() {
    const platform::Application& application = *platform::TheHost().application;
    return application.ProgramFolder() + "/" + application.ProgramFileName() + ".ini";
}

std::string ReadIniParam(std::string_view section, std::string_view key, std::string_view byDefault) {
    return ReadProfileString(section, key, byDefault, IniFilePath());
}

void WriteIniParam(std::string_view section, std::string_view key, std::string_view value) {
    WriteProfileString(section, key, value, IniFilePath());
}

void DeleteIniParam(std::string_view section, std::string_view key) {
    DeleteProfileKey(section, key, IniFilePath());
}

void DeleteIniSection(std::string_view section) {
    DeleteProfileSection(section, IniFilePath());
}

std::string IniSnapshot::Read(std::string_view section, std::string_view key,
                              std::string_view byDefault) const {
    return ValueIn(profile_, section, key, byDefault);
}

void ProfileChanges::Write(std::string_view section, std::string_view key, std::string_view value) {
    changes_.emplace_back(
        [section = std::string(section), key = std::string(key),
         value = std::string(value)](platform::ProfileFile& profile) { profile.Set(section, key, value); });
}

void ProfileChanges::Delete(std::string_view section, std::string_view key) {
    changes_.emplace_back([section = std::string(section), key = std::string(key)](
                              platform::ProfileFile& profile) { profile.RemoveKey(section, key); });
}

void ProfileChanges::DeleteSection(std::string_view section) {
    changes_.emplace_back(
        [section = std::string(section)](platform::ProfileFile& profile) { profile.RemoveSection(section); });
}

void ProfileChanges::Commit() const {
    ChangeFile(file_, [this](platform::ProfileFile& profile) {
        for (const auto& change : changes_) change(profile);
    });
}

}  // namespace IniParamProcs
