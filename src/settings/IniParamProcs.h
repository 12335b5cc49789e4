// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "settings/SettingsFile.h"

// Profile files and, bound to one file, the program's settings. A value is what stands on disk at the moment
// it is asked for. No routine reports a failure: a missing or unreadable file reads as all defaults, a failed
// write is silent - but what cannot be written to the settings file is read all the same until the program
// ends, and the user is told.
namespace IniParamProcs {

// The value of a key, cut to 1023 bytes (never inside a character) and at the first NUL, without
// surrounding blanks. The default is treated alike.
std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view byDefault,
                              const std::string& file);
void WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        const std::string& file);
void DeleteProfileKey(std::string_view section, std::string_view key, const std::string& file);
void DeleteProfileSection(std::string_view section, const std::string& file);

// What ReadProfileString makes of a text found in a profile file.
std::string AsProfileString(std::string_view text);

// The settings file: the program's own path with the extension ".ini".
std::string IniFilePath();
std::string ReadIniParam(std::string_view section, std::string_view key, std::string_view byDefault);
void WriteIniParam(std::string_view section, std::string_view key, std::string_view value);
void DeleteIniParam(std::string_view section, std::string_view key);
void DeleteIniSection(std::string_view section);

// The start is over: the user is told if settings are not kept, now or as soon as it turns out. Once in a
// run.
void TellFailures();
// Forgets what the run knows of the settings file, as the next run does.
void ForgetSettings();

// The settings, or another profile file, as they are now, for a reader of many keys: it is parsed once.
class IniSnapshot {
  public:
    IniSnapshot();
    explicit IniSnapshot(const std::string& file);
    std::string Read(std::string_view section, std::string_view key, std::string_view byDefault) const;
    // False if there may be values in the file that could not be read.
    bool WasRead() const { return content_->WasRead(); }

  private:
    std::shared_ptr<const ProfileContent> content_;
};

// Several changes of one profile file, written in one step: it is read once and replaced once.
class ProfileChanges {
  public:
    explicit ProfileChanges(std::string file = IniFilePath()) : file_(std::move(file)) {}
    void Write(std::string_view section, std::string_view key, std::string_view value);
    void Delete(std::string_view section, std::string_view key);
    void DeleteSection(std::string_view section);
    // Silent, as every write of settings. Nothing is written without it.
    void Commit() const;

  private:
    std::string file_;
    std::vector<ProfileChange> changes_;
};

}  // namespace IniParamProcs
