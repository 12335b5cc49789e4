#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "support/ScriptedHost.h"

TEST(FolderLock, HoldsOffOtherProcessesForItsOwnLifetime) {
    const ScriptedHost host;
    const std::string path = host.PathOf("a.nx3");
    const int folder = open(host.folder.c_str(), O_RDONLY | O_DIRECTORY);
    {
        const platform::FolderLock lock(path);
        EXPECT_NE(flock(folder, LOCK_EX | LOCK_NB), 0);
        // A stopped copy that never lets go: the wait ends all the same.
        const platform::FolderLock second(path);
    }
    EXPECT_EQ(flock(folder, LOCK_EX | LOCK_NB), 0);
    close(folder);
    const platform::FolderLock nowhere(host.PathOf("none/a.nx3"));
}
