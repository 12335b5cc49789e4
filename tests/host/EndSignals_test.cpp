// SPDX-License-Identifier: MIT
#include "platform/qt/EndSignals.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "support/QtSupport.h"

namespace {

TEST(EndSignals, AreHeardInTheEventLoopOnce) {
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
        int asked = 0;
        {
            const platform_qt::EndSignals watch;
            QObject::connect(&watch, &platform_qt::EndSignals::Asked, qApp, [&] { ++asked; });
            EXPECT_EQ(raise(number), 0);
            EXPECT_EQ(asked, 0) << "nothing happens in the signal's handler";
            EXPECT_TRUE(Eventually([&] { return asked == 1; })) << number;
            EXPECT_EXIT(raise(number), testing::KilledBySignal(number), "") << "the second one ends it";
        }
        EXPECT_EXIT(raise(number), testing::KilledBySignal(number), "");
    }
}

TEST(EndSignals, OneThatIsIgnoredStaysSo) {
    signal(SIGHUP, SIG_IGN);
    const platform_qt::EndSignals watch;
    EXPECT_EQ(signal(SIGHUP, SIG_DFL), SIG_IGN);
}

int WriteBeyondTheLimit() {
    const rlimit limit{1, 1};
    setrlimit(RLIMIT_FSIZE, &limit);
    FILE* file = tmpfile();
    return write(fileno(file), "ab", 2) == 1 && write(fileno(file), "c", 1) == -1 ? 0 : 1;
}

TEST(EndSignals, AWriteBeyondTheLimitFailsAndNoMore) {
    const platform_qt::EndSignals watch;
    EXPECT_EXIT(_exit(WriteBeyondTheLimit()), testing::ExitedWithCode(0), "");
}

}  // namespace
