// SPDX-License-Identifier: MIT
#include "platform/SafeFile.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

namespace fs = std::filesystem;
using platform::FileStamp;
using platform::FileState;
using platform::ReadWholeFile;
using platform::ReplaceFile;

namespace {

// In a process of its own, which may spoil its limits and rights.
void ExpectInChild(const std::function<bool()>& body) {
    EXPECT_EXIT(_exit(body() ? 0 : 1), testing::ExitedWithCode(0), "");
}

bool GiveUpRootRights() {
    return getuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
}

class SafeFile : public testing::Test {
  protected:
    SafeFile() { ScriptedHost::WriteFile(path, old); }
    // The folder holds the old file as it was, and so many files in all.
    ~SafeFile() override {
        chmod(host.folder.c_str(), 0700);
        EXPECT_EQ(ScriptedHost::ReadFile(path), old);
        EXPECT_EQ(std::distance(fs::directory_iterator(host.folder), {}), files);
    }

    ScriptedHost host;
    const std::string path = host.PathOf("a.nx3");
    const std::string large = std::string(200'000, 'x');
    std::string old = "the old content";
    std::ptrdiff_t files = 1;
};

}  // namespace

TEST_F(SafeFile, FullDisksAndMissingRightsLeaveTheOldFileWhole) {
    std::string bytes = "left over";
    ExpectInChild([&] {
        const rlimit limit{1000, 1000};
        std::signal(SIGXFSZ, SIG_IGN);
        bool refused = setrlimit(RLIMIT_FSIZE, &limit) == 0 && setrlimit(RLIMIT_NOFILE, &limit) == 0;
        // So often that a file left open would have used up all that may be.
        for (int i = 0; i < 1000; ++i) refused = refused && !ReplaceFile(path, large);
        return refused && ReadWholeFile(path, bytes) == FileState::Read;
    });
    bytes = "left over";
    const auto refused = [&] { return GiveUpRootRights() && !ReplaceFile(path, "new"); };
    chmod(host.folder.c_str(), 0777);
    chmod(path.c_str(), 0444);
    ExpectInChild(refused);
    chmod(path.c_str(), 0);
    ExpectInChild([&] {
        return GiveUpRootRights() && ReadWholeFile(path, bytes) == FileState::Unreadable && bytes.empty();
    });
    chmod(path.c_str(), 0666);
    chmod(host.folder.c_str(), 0555);
    ExpectInChild(refused);
}

TEST_F(SafeFile, OnlyRegularFilesOfBoundedSizeAreReadOrReplaced) {
    const std::string pipe = host.PathOf("pipe"), loop = host.PathOf("loop");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    fs::create_symlink(loop, loop);
    files = 3;
    std::string bytes;
    const std::pair<std::string, FileState> cases[] = {
        {host.folder.string(), FileState::NotAFile},
        {pipe, FileState::NotAFile},
        {host.PathOf("none/a.nx3"), FileState::Missing},
        {path + "/b", FileState::Missing},
        {"", FileState::Missing},
        {path + std::string("\0b", 2), FileState::Unreadable},
        {host.PathOf(std::string(256, 'n')), FileState::Unreadable},
        {host.PathOf(std::string(5000, '/')) + "a.nx3", FileState::Unreadable},
        {loop, FileState::Unreadable}};
    for (const auto& [name, state] : cases) {
        bytes = "left over";
        EXPECT_EQ(ReadWholeFile(name, bytes), state) << name;
        EXPECT_EQ(bytes, "") << name;
        EXPECT_FALSE(platform::IsRegularFile(name) || ReplaceFile(name, "new")) << name;
    }
    EXPECT_TRUE(fs::is_fifo(pipe) && fs::is_symlink(loop));
    EXPECT_EQ(ReadWholeFile(path, bytes, old.size() - 1), FileState::TooLarge);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(ReadWholeFile(path, bytes, old.size()), FileState::Read);
    EXPECT_EQ(bytes, old);
}

TEST_F(SafeFile, LinksAreFollowedAndStay) {
    const fs::path links = host.folder / "links";
    fs::create_directory(links);
    fs::create_symlink("../a.nx3", links / "there");
    fs::create_symlink("../later.nx3", links / "later");
    EXPECT_TRUE(platform::IsRegularFile(links / "there"));
    EXPECT_TRUE(ReplaceFile(links / "there", large) && ReplaceFile(links / "later", "first"));
    EXPECT_EQ(ScriptedHost::ReadFile(host.PathOf("later.nx3")), "first");
    EXPECT_TRUE(fs::is_symlink(links / "there") && fs::is_symlink(links / "later"));
    EXPECT_EQ(std::distance(fs::directory_iterator(links), {}), 2);
    // All names of a file show what was saved under one; the longest name has room for a temporary one.
    const std::string other = host.PathOf(std::string(255, 'n'));
    fs::create_hard_link(path, other);
    FileStamp stamp;
    old = "shorter";
    EXPECT_TRUE(ReplaceFile(other, old, &stamp) && fs::hard_link_count(path) == 2);
    EXPECT_EQ(stamp, FileStamp::Of(path));
    files = 4;
}

TEST_F(SafeFile, WhatBelongsToAFileIsKeptAndNewFilesGetTheUsual) {
    struct stat status {};
    const auto looks = [&](const std::string& file) {
        EXPECT_EQ(stat(file.c_str(), &status), 0);
        return std::tuple(status.st_mode & 07777, status.st_uid, status.st_gid);
    };
    // Only root can give a file away.
    EXPECT_EQ(chown(path.c_str(), 65534, 65533) == 0, getuid() == 0);
    chmod(path.c_str(), 02751);
    // User 1 may read: version 2, then tag, rights and id of each entry.
    const std::uint16_t list[] = {2, 0,      1,      7,    0xFFFF, 0xFFFF, 2,      4,    1, 0,      4,
                                  5, 0xFFFF, 0xFFFF, 0x10, 5,      0xFFFF, 0xFFFF, 0x20, 1, 0xFFFF, 0xFFFF};
    const std::string access(reinterpret_cast<const char*>(list), sizeof list);
    std::map<std::string, std::string> given{{"user.note", std::string("a\0b", 3)},
                                             {"system.posix_acl_access", access}};
    // A file system may have neither.
    std::erase_if(given, [&](const auto& attribute) {
        return setxattr(path.c_str(), attribute.first.c_str(), attribute.second.data(),
                        attribute.second.size(), 0) != 0;
    });
    const auto ofOld = looks(path);
    EXPECT_TRUE(ReplaceFile(path, old));
    EXPECT_EQ(looks(path), ofOld);
    for (const auto& [name, expected] : given) {
        std::string value(100, ' ');
        value.resize(std::max<ssize_t>(0, getxattr(path.c_str(), name.c_str(), value.data(), value.size())));
        EXPECT_EQ(value, expected) << name;
    }
    const mode_t before = umask(0027);
    EXPECT_TRUE(ReplaceFile(host.PathOf("b.nx3"), "new"));
    EXPECT_EQ(umask(before), 0027u) << "the process's own mask was changed";
    EXPECT_EQ(looks(host.PathOf("b.nx3")), std::tuple(0640u, getuid(), getgid()));
    files = 2;
}

TEST_F(SafeFile, AStampTellsAFileFromItsChangesAndSuccessors) {
    FileStamp stamp, read;
    std::string bytes;
    ASSERT_TRUE(ReplaceFile(path, old, &stamp));
    EXPECT_EQ(ReadWholeFile(path, bytes, 100, &read), FileState::Read);
    EXPECT_TRUE(stamp == read && FileStamp::Of(path) == stamp && FileStamp::Parse(stamp.Text()) == stamp);
    const auto changed = [&] {
        return std::exchange(stamp, FileStamp::Of(path).value_or(FileStamp())) != stamp;
    };
    const auto time = fs::last_write_time(path);
    fs::last_write_time(path, time + std::chrono::nanoseconds(1));
    EXPECT_TRUE(changed());
    ScriptedHost::WriteFile(path, old + "longer");
    fs::last_write_time(path, time + std::chrono::nanoseconds(1));
    EXPECT_TRUE(changed());
    fs::rename(path, path + ".old");
    fs::copy(path + ".old", path);
    fs::last_write_time(path, time + std::chrono::nanoseconds(1));
    fs::remove(path + ".old");
    EXPECT_TRUE(changed());
    EXPECT_FALSE(FileStamp::Of(host.folder) || FileStamp::Of(path + ".old"));
    for (const char* text : {"", "1:2:3", "1:2:3:4:", "1:2:3:4 ", "1:-2:3:4", "1:2:3:99999999999999999999"}) {
        EXPECT_FALSE(FileStamp::Parse(text)) << text;
    }
    old += "longer";
}

TEST_F(SafeFile, WhatAKilledSaveLeftGoesAfterAnHour) {
    const std::string locked = host.PathOf(".ninarix-Locked"), fresh = host.PathOf(".ninarix-Fresh1");
    for (const char* name : {".ninarix-Aa0zZ9", ".ninarix-Locked", ".ninarix-Fresh1", ".ninarix-A.0zZ9",
                             "ninarix-Aa0zZ90", "a.nx3.ninarix-Aa0zZ9"}) {
        ScriptedHost::WriteFile(host.PathOf(name), "");
        if (host.PathOf(name) != fresh)
            fs::last_write_time(host.PathOf(name),
                                fs::file_time_type::clock::now() - std::chrono::minutes(61));
    }
    fs::create_directory(host.PathOf(".ninarix-Folder"));
    const int held = open(locked.c_str(), O_RDONLY);
    flock(held, LOCK_EX);
    EXPECT_TRUE(ReplaceFile(path, old));
    EXPECT_FALSE(fs::exists(host.PathOf(".ninarix-Aa0zZ9")));
    close(held);
    files = 7;
}
