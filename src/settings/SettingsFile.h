// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileRights.h"
#include "platform/ProfileFile.h"

namespace IniParamProcs {

struct ProfileChange {
    enum class Kind { Set, RemoveKey, RemoveSection };

    // False, and no change, for what cannot stand in a profile file.
    bool ApplyTo(platform::ProfileFile& profile) const;
    // True when this change leaves nothing of what an earlier one did.
    bool Replaces(const ProfileChange& earlier) const;

    Kind kind{};
    std::string section, key, value;
};

// A profile file as it was read, with its index. Stays where it is made.
class ProfileContent {
  public:
    ProfileContent(const std::string& file, std::uint64_t limit,
                   const std::vector<ProfileChange>& changes = {});
    ProfileContent(const ProfileContent&) = delete;
    ProfileContent& operator=(const ProfileContent&) = delete;

    platform::FileState State() const { return state_; }
    // False if there may be values in the file that could not be read.
    bool WasRead() const;
    const platform::ProfileFile& Profile() const { return profile_; }
    std::optional<std::string_view> Value(std::string_view section, std::string_view key) const {
        return index_->Value(section, key);
    }

  private:
    platform::ProfileFile profile_;
    platform::FileState state_;
    std::optional<platform::ProfileIndex> index_;
};

// The settings file of this run. A read costs one look at the file while that has not changed. What cannot be
// written lives on for the run: it is read as if it stood in the file, and goes there with the next write
// that succeeds.
class SettingsFile {
  public:
    // Bytes. A larger file is neither read nor written, so that no click waits for it; a full one has 12,000.
    static constexpr std::uint64_t limit = 1U << 18U;

    explicit SettingsFile(std::string path) : path_(std::move(path)) {}
    const std::string& Path() const { return path_; }

    std::shared_ptr<const ProfileContent> Now();
    void Change(const std::vector<ProfileChange>& changes);

    // Tells the user, once in a run, that settings are not kept and why. Before the first call nothing is
    // told; later failures to write are told at once.
    void TellFailures();

  private:
    enum class Failure {
        None,
        FolderProtected,
        FileProtected,
        NoFolder,
        DiskFull,
        Busy,
        Unreadable,
        TooLarge,
        Other
    };

    void Keep(const ProfileChange& change);
    Failure WritePending();
    // None: it is only that another copy is at work there.
    static Failure FailureOf(platform::Obstacle obstacle);
    void Tell();

    std::string path_;
    std::vector<ProfileChange> pending_;  // what the file does not hold yet
    std::shared_ptr<const ProfileContent> content_;
    platform::FileWatch watch_;                 // of the file in content_
    std::optional<platform::FileStamp> stamp_;  // of that file; nothing for a missing one
    bool current_ = false;                      // content_ is the file's as long as that has this stamp
    Failure failure_ = Failure::None;
    bool telling_ = false;
    bool told_ = false;
};

}  // namespace IniParamProcs
