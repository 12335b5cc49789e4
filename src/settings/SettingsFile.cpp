// SPDX-License-Identifier: MIT
#include "settings/SettingsFile.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/AsciiText.h"
#include "platform/FolderLock.h"
#include "platform/Host.h"

namespace IniParamProcs {

namespace {

using platform::FileStamp;
using platform::FileState;
using platform::SameName;

std::int64_t SystemTime() {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

bool ProfileChange::ApplyTo(platform::ProfileFile& profile) const {
    switch (kind) {
        case Kind::Set:
            return profile.Set(section, key, value);
        case Kind::RemoveKey:
            profile.RemoveKey(section, key);
            return true;
        case Kind::RemoveSection:
            profile.RemoveSection(section);
            return true;
    }
    return false;
}

bool ProfileChange::Replaces(const ProfileChange& earlier) const {
    if (!SameName(section, earlier.section)) return false;
    return kind == Kind::RemoveSection || (earlier.kind != Kind::RemoveSection && SameName(key, earlier.key));
}

ProfileContent::ProfileContent(const std::string& file, std::uint64_t limit,
                               const std::vector<ProfileChange>& changes)
    : state_(profile_.Read(file, limit)) {
    for (const ProfileChange& change : changes) change.ApplyTo(profile_);
    index_.emplace(profile_);
}

bool ProfileContent::WasRead() const {
    return state_ == FileState::Read || state_ == FileState::Missing;
}

std::shared_ptr<const ProfileContent> SettingsFile::Now() {
    if (current_ && watch_.Unchanged()) return content_;
    const std::int64_t now = SystemTime();
    const auto stamp = FileStamp::Of(path_);
    if (current_ && stamp_ == stamp) return content_;
    watch_ = platform::FileWatch(path_);
    content_ = std::make_shared<const ProfileContent>(path_, limit, pending_);
    if (!content_->WasRead()) {
        failure_ = content_->State() == FileState::TooLarge ? Failure::TooLarge : Failure::Unreadable;
    } else if (pending_.empty()) {
        failure_ = Failure::None;
    }
    stamp_ = stamp;
    // What could not be read may become readable without another stamp.
    const bool known = content_->WasRead() || content_->State() == FileState::TooLarge;
    const bool settled = stamp ? known && stamp->IsSettled(now) : content_->State() == FileState::Missing;
    current_ = settled && stamp == FileStamp::Of(path_);
    return content_;
}

void SettingsFile::Keep(const ProfileChange& change) {
    std::erase_if(pending_, [&](const ProfileChange& earlier) { return change.Replaces(earlier); });
    pending_.push_back(change);
}

void SettingsFile::Change(const std::vector<ProfileChange>& changes) {
    const auto now = Now();
    platform::ProfileFile wanted = now->Profile();
    std::vector<ProfileChange> accepted;
    for (const ProfileChange& change : changes) {
        if (change.ApplyTo(wanted)) accepted.push_back(change);
    }
    // Nothing new: no lock, no write, and nothing that could fail.
    if (pending_.empty() && wanted.Bytes() == now->Profile().Bytes()) return;
    for (const ProfileChange& change : accepted) Keep(change);
    failure_ = WritePending();
    if (failure_ == Failure::None) pending_.clear();
    current_ = false;
    if (telling_ && failure_ != Failure::None) Tell();
}

SettingsFile::Failure SettingsFile::WritePending() {
    const platform::FolderLock lock(path_);
    if (!lock.MayWrite()) return FailureOf(platform::ObstacleToFolder(path_));
    platform::ProfileFile profile;
    const FileState state = profile.Read(path_, limit);
    if (state == FileState::TooLarge) return Failure::TooLarge;
    const bool readable = state == FileState::Read || state == FileState::Missing;
    // Written anew, the file would lose all that could not be read.
    if (!readable || !profile.IsWritable()) return Failure::Unreadable;
    const std::string before = profile.Bytes();
    for (const ProfileChange& change : pending_) change.ApplyTo(profile);
    const std::string after = profile.Bytes();
    if (after == before) return Failure::None;
    if (after.size() > limit) return Failure::TooLarge;  // it could not be read again
    return profile.Write(path_) ? Failure::None : FailureOf(platform::ObstacleToReplacing(path_));
}

SettingsFile::Failure SettingsFile::FailureOf(platform::Obstacle obstacle) {
    using platform::Obstacle;
    switch (obstacle) {
        case Obstacle::None:
            return Failure::Busy;
        case Obstacle::NoFolder:
            return Failure::NoFolder;
        case Obstacle::FolderProtected:
            return Failure::FolderProtected;
        case Obstacle::FileProtected:
            return Failure::FileProtected;
        case Obstacle::DiskFull:
            return Failure::DiskFull;
        case Obstacle::Other:
            break;
    }
    return Failure::Other;
}

void SettingsFile::TellFailures() {
    telling_ = true;
    Now();
    if (failure_ != Failure::None) Tell();
}

void SettingsFile::Tell() {
    if (std::exchange(told_, true)) return;
    // In the order of Failure.
    static constexpr std::string_view causes[] = {"",
                                                  "dossier protégé en écriture",
                                                  "fichier protégé en écriture",
                                                  "dossier introuvable",
                                                  "disque plein",
                                                  "fichier occupé par un autre programme",
                                                  "fichier illisible",
                                                  "fichier trop grand",
                                                  "erreur d'écriture"};
    std::string text =
        "Les préférences ne sont pas conservées.\r\n"
        "Elles ne valent que jusqu'à la fermeture du programme.\r\n\r\nFichier : ";
    text.append(path_).append("\r\nCause : ").append(causes[static_cast<std::size_t>(failure_)]);
    platform::TheHost().messages->Show(text, platform::MessageStyle::Exclamation);
}

}  // namespace IniParamProcs
