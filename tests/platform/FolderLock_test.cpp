#include "platform/FolderLock.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/FileRegistry.h"
#include "support/ScriptedHost.h"

using platform::FolderLock;

// Faults: the lock ends early or late; a wait without end, or one at every try; a write without the lock.
TEST(FolderLock, StoppedCopyIsWaitedForOnceAndNothingIsWrittenMeanwhile) {
    const ScriptedHost host;
    const std::string path = host.PathOf("a.ini");
    const pid_t other = fork();
    if (other == 0) {
        const FolderLock lock(path);
        raise(SIGSTOP);
        _exit(0);
    }
    ASSERT_EQ(waitpid(other, nullptr, WUNTRACED), other);
    const auto start = std::chrono::steady_clock::now();
    const auto passed = [&] { return std::chrono::steady_clock::now() - start; };
    EXPECT_FALSE(FolderLock(path).MayWrite());
    const auto firstWait = passed();
    EXPECT_GE(firstWait, std::chrono::seconds(2));
    platform::FileRegistry registry(path);
    std::unique_ptr<platform::RegistryKey> key;
    registry.Create(1, "Type", "Class", platform::RegistryAccess::All, key);
    EXPECT_EQ(key->SetString({}, "x"), platform::RegistryError::AccessDenied);
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(FolderLock(path).MayWrite());
    EXPECT_LT(passed(), firstWait + std::chrono::seconds(20)) << "waited at every try";
    kill(other, SIGCONT);
    waitpid(other, nullptr, 0);
    EXPECT_EQ(key->SetString({}, "x"), platform::RegistryError::None);
    const int folder = open(host.folder.c_str(), O_RDONLY | O_DIRECTORY);
    {
        const FolderLock lock(path);
        EXPECT_TRUE(lock.MayWrite());
        EXPECT_NE(flock(folder, LOCK_EX | LOCK_NB), 0);
    }
    EXPECT_EQ(flock(folder, LOCK_EX | LOCK_NB), 0);
    close(folder);
    EXPECT_FALSE(FolderLock(host.PathOf("none/a.ini")).MayWrite());
}
