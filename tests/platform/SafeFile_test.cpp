#include "platform/SafeFile.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

namespace fs = std::filesystem;
using platform::FileState;

namespace {

constexpr int notPermitted = 77;

// Runs the body in a process of its own, which may spoil its limits, mounts and rights; its result.
int InChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) _exit(body());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int WithoutRootRights(const std::function<int()>& body) {
    return InChild([&] {
        constexpr uid_t somebody = 65534;
        if (getuid() == 0 && (setgid(somebody) != 0 || setuid(somebody) != 0)) return notPermitted;
        return body();
    });
}

// A folder with one file in it; what it holds at the end is compared, so that no left-over escapes.
class SafeFile : public testing::Test {
  protected:
    SafeFile() { ScriptedHost::WriteFile(path, old); }
    ~SafeFile() override { chmod(host.folder.c_str(), 0700); }
    void ExpectOldFileAlone() const {
        EXPECT_EQ(ScriptedHost::ReadFile(path), old);
        EXPECT_EQ(FilesIn(host.folder), 1);
    }
    static std::ptrdiff_t FilesIn(const fs::path& folder) {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    ScriptedHost host;
    const std::string path = host.PathOf("a.nx3");
    const std::string old = "the old content";
    const std::string large = std::string(200'000, 'x');
};

}  // namespace

TEST_F(SafeFile, FullDiskLeavesTheOldFileWhole) {
    const int failed = InChild([&] {
        const rlimit limit{1000, 1000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return notPermitted;
        std::signal(SIGXFSZ, SIG_IGN);
        return platform::ReplaceFile(path, large) ? 1 : 0;
    });
    EXPECT_EQ(failed, 0);
    ExpectOldFileAlone();
}

TEST_F(SafeFile, FullFileSystemLeavesTheOldFileWhole) {
    const int result = InChild([&] {
        const fs::path disk = host.folder / "disk";
        fs::create_directory(disk);
        if (unshare(CLONE_NEWNS) != 0 || mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
            return notPermitted;
        }
        const std::string file = disk / "a.nx3";
        if (!platform::ReplaceFile(file, old)) return 1;
        if (platform::ReplaceFile(file, large)) return 2;
        return ScriptedHost::ReadFile(file) == old && FilesIn(disk) == 1 ? 0 : 3;
    });
    if (result == notPermitted) GTEST_SKIP() << "this user may not mount a small file system";
    EXPECT_EQ(result, 0);
}

TEST_F(SafeFile, FoldersAndFilesThatMayNotBeWrittenAreLeftAlone) {
    const auto replace = [&] { return platform::ReplaceFile(path, "new") ? 1 : 0; };
    chmod(host.folder.c_str(), 0777);
    chmod(path.c_str(), 0444);
    EXPECT_EQ(WithoutRootRights(replace), 0) << "a file that may not be written";
    chmod(path.c_str(), 0666);
    chmod(host.folder.c_str(), 0555);
    EXPECT_EQ(WithoutRootRights(replace), 0) << "a folder that may not be written";
    chmod(path.c_str(), 0);
    std::string bytes = "left over";
    EXPECT_EQ(WithoutRootRights([&] {
                  const bool refused = platform::ReadWholeFile(path, bytes) == FileState::Unreadable;
                  return refused && bytes.empty() ? 0 : 1;
              }),
              0);
    chmod(path.c_str(), 0600);
    ExpectOldFileAlone();
}

TEST_F(SafeFile, OnlyRegularFilesAreReadOrReplaced) {
    const std::string pipe = host.PathOf("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string loop = host.PathOf("loop");
    fs::create_symlink(loop, loop);
    // A device of the test's own: a fault would replace the machine's.
    const std::string device = host.PathOf("full");
    const bool hasDevice = mknod(device.c_str(), S_IFCHR | 0666, makedev(1, 7)) == 0;
    for (const std::string& name : {host.folder.string(), pipe, device, host.folder.string() + "/",
                                    host.PathOf("none/a.nx3"), path + "/b", loop, std::string()}) {
        if (name == device && !hasDevice) continue;  // only root may make one
        std::string bytes = "left over";
        EXPECT_NE(platform::ReadWholeFile(name, bytes), FileState::Read) << name;
        EXPECT_EQ(bytes, "") << name;
        EXPECT_FALSE(platform::IsRegularFile(name)) << name;
        EXPECT_FALSE(platform::ReplaceFile(name, "new")) << name;
    }
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(fs::is_character_file(device), hasDevice);
    EXPECT_TRUE(fs::is_symlink(loop));
    fs::remove(pipe);
    fs::remove(loop);
    fs::remove(device);
    ExpectOldFileAlone();
}

TEST_F(SafeFile, LinksAreFollowedAndStay) {
    fs::create_directory(host.folder / "links");
    const fs::path link = host.folder / "links" / "there";
    const fs::path dangling = host.folder / "links" / "later";
    fs::create_symlink("../a.nx3", link);
    fs::create_symlink("../later.nx3", dangling);
    EXPECT_TRUE(platform::ReplaceFile(link, "new"));
    EXPECT_TRUE(platform::ReplaceFile(dangling, "first"));
    EXPECT_EQ(ScriptedHost::ReadFile(path), "new");
    EXPECT_EQ(ScriptedHost::ReadFile(host.PathOf("later.nx3")), "first");
    EXPECT_TRUE(fs::is_symlink(link) && fs::is_symlink(dangling));
    EXPECT_EQ(FilesIn(host.folder / "links"), 2);
}

TEST_F(SafeFile, PermissionsAreKeptAndNewFilesGetTheUsualOnes) {
    const auto modeOf = [](const std::string& file) {
        return static_cast<int>(fs::status(file).permissions());
    };
    for (const mode_t mode : {0640u, 0600u, 0755u}) {
        chmod(path.c_str(), mode);
        EXPECT_TRUE(platform::ReplaceFile(path, "new"));
        EXPECT_EQ(modeOf(path), static_cast<int>(mode));
    }
    const mode_t before = umask(0027);
    EXPECT_TRUE(platform::ReplaceFile(host.PathOf("b.nx3"), "new"));
    EXPECT_EQ(umask(before), 0027u) << "the process's own mask was changed";
    EXPECT_EQ(modeOf(host.PathOf("b.nx3")), 0640);
}

TEST_F(SafeFile, LargerFilesThanAllowedAreNotRead) {
    std::string bytes;
    EXPECT_EQ(platform::ReadWholeFile(path, bytes, old.size() - 1), FileState::TooLarge);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(platform::ReadWholeFile(path, bytes, old.size()), FileState::Read);
    EXPECT_EQ(bytes, old);
    fs::resize_file(path, std::uintmax_t{1} << 40);
    EXPECT_EQ(platform::ReadWholeFile(path, bytes), FileState::TooLarge);
}

TEST_F(SafeFile, LockHoldsOffOtherProcessesForItsOwnLifetime) {
    const auto isFree = [&] {
        return InChild([&] {
                   const int folder = open(host.folder.c_str(), O_RDONLY | O_DIRECTORY);
                   return flock(folder, LOCK_EX | LOCK_NB) == 0 ? 1 : 0;
               }) == 1;
    };
    {
        const platform::FolderLock lock(path);
        EXPECT_FALSE(isFree());
        // A stopped copy that never lets go: the wait ends all the same.
        const platform::FolderLock second(path);
    }
    EXPECT_TRUE(isFree());
    const platform::FolderLock nowhere(host.PathOf("none/a.nx3"));
}
