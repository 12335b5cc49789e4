// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <csignal>
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
    platform::FileRegistry registry(path);
    std::unique_ptr<platform::RegistryKey> key;
    registry.Create(1, "Type", "Class", platform::RegistryAccess::All, key);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(key->SetString({}, "x"), platform::RegistryError::AccessDenied);
    for (int i = 0; i < 20; ++i) EXPECT_FALSE(FolderLock(path).MayWrite());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << "waited at every try";
    kill(other, SIGCONT);
    waitpid(other, nullptr, 0);
    EXPECT_EQ(key->SetString({}, "x"), platform::RegistryError::None);
    const auto second = std::make_unique<FolderLock>(path);
    EXPECT_TRUE(second->MayWrite());
    EXPECT_FALSE(FolderLock(path).MayWrite());
    EXPECT_FALSE(FolderLock(host.PathOf("none/a.ini")).MayWrite());
}
