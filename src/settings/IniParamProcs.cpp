// SPDX-License-Identifier: MIT
#include "settings/IniParamProcs.h"

#include <optional>

#include "platform/FolderLock.h"
#include "platform/Host.h"

namespace IniParamProcs {

namespace {

constexpr std::size_t longestValue = 1023;  // bytes

constexpr std::string_view extension = ".ini";

std::optional<SettingsFile>& KnownSettings() {
    static std::optional<SettingsFile> settings;
    return settings;
}

// Without a path that is built only to be compared.
bool IsIniFilePath(std::string_view path) {
    const platform::Application& application = *platform::TheHost().application;
    for (const std::string_view piece : {std::string_view(application.ProgramFolder()), std::string_view("/"),
                                         std::string_view(application.ProgramFileName())}) {
        if (!path.starts_with(piece)) return false;
        path.remove_prefix(piece.size());
    }
    return path == extension;
}

SettingsFile& TheSettings() {
    auto& settings = KnownSettings();
    if (!settings || !IsIniFilePath(settings->Path())) settings.emplace(IniFilePath());
    return *settings;
}

std::shared_ptr<const ProfileContent> ContentOf(const std::string& file) {
    if (IsIniFilePath(file)) return TheSettings().Now();
    return std::make_shared<const ProfileContent>(file, platform::ProfileFile::usualLimit);
}

// Reads, changes and writes a file while no other running copy does. A file that cannot be read is left
// alone: writing would replace it by the one new key.
void ChangeFile(const std::string& file, const std::vector<ProfileChange>& changes) {
    if (IsIniFilePath(file)) return TheSettings().Change(changes);
    const platform::FolderLock lock(file);
    platform::ProfileFile profile;
    const platform::FileState state = profile.Read(file);
    const bool readable = state == platform::FileState::Read || state == platform::FileState::Missing;
    if (!lock.MayWrite() || !readable) return;
    const std::string before = profile.Bytes();
    for (const ProfileChange& change : changes) change.ApplyTo(profile);
    if (profile.Bytes() != before) profile.Write(file);
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
    return IniSnapshot(file).Read(section, key, byDefault);
}

void WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::string& file) {
    ProfileChanges changes(file);
    changes.Write(section, key, value);
    changes.Commit();
}

void DeleteProfileKey(std::string_view section, std::string_view key, const std::string& file) {
    ProfileChanges changes(file);
    changes.Delete(section, key);
    changes.Commit();
}

void DeleteProfileSection(std::string_view section, const std::string& file) {
    ProfileChanges changes(file);
    changes.DeleteSection(section);
    changes.Commit();
}

std::string IniFilePath() {
    const platform::Application& application = *platform::TheHost().application;
    return application.ProgramFolder() + "/" + application.ProgramFileName() + std::string(extension);
}

std::string ReadIniParam(std::string_view section, std::string_view key, std::string_view byDefault) {
    return IniSnapshot().Read(section, key, byDefault);
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

void TellFailures() {
    TheSettings().TellFailures();
}

void ForgetSettings() {
    KnownSettings().reset();
}

IniSnapshot::IniSnapshot() : content_(TheSettings().Now()) {}

IniSnapshot::IniSnapshot(const std::string& file) : content_(ContentOf(file)) {}

std::string IniSnapshot::Read(std::string_view section, std::string_view key,
                              std::string_view byDefault) const {
    return AsProfileString(content_->Value(section, key).value_or(byDefault));
}

void ProfileChanges::Write(std::string_view section, std::string_view key, std::string_view value) {
    changes_.push_back(
        {ProfileChange::Kind::Set, std::string(section), std::string(key), std::string(value)});
}

void ProfileChanges::Delete(std::string_view section, std::string_view key) {
    changes_.push_back({ProfileChange::Kind::RemoveKey, std::string(section), std::string(key), {}});
}

void ProfileChanges::DeleteSection(std::string_view section) {
    changes_.push_back({ProfileChange::Kind::RemoveSection, std::string(section), {}, {}});
}

void ProfileChanges::Commit() const {
    ChangeFile(file_, changes_);
}

}  // namespace IniParamProcs
