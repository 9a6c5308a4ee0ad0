// SPDX-License-Identifier: Apache-2.0
// What a service manager that watches the program hears of it.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/apps/mcserver/servicemanager_posix.h>

#include <gmock/gmock.h>

#include <QtCore/QSocketNotifier>

#include <string>
#include <vector>

namespace {

TEST(WatchedServer, SaysThatItIsReadyThenThatItRunsAgainAndAgainAndThatItStops) {
    ServerProcess server;
    ServiceManager manager;
    ASSERT_NO_FATAL_FAILURE(manager.Listen(server.Path(QStringLiteral("notify")).toUtf8()));
    qputenv("WATCHDOG_USEC", "20000");
    ASSERT_NO_FATAL_FAILURE(server.Start());
    const QSocketNotifier wakesTheTest(manager.Descriptor(), QSocketNotifier::Read);
    std::vector<std::string> heard;
    const auto hear = [&] {
        for (std::string word = manager.Received(); !word.empty(); word = manager.Received())
            heard.push_back(word);
        return heard.size() > 4;
    };
    EXPECT_TRUE(ServerProcess::WaitFor(hear));
    EXPECT_EQ(server.Terminate(), 0);
    hear();
    ASSERT_GT(heard.size(), 5U);
    EXPECT_EQ(heard.front(), "READY=1\nSTATUS=listening on 127.0.0.1:" + std::to_string(server.Port()));
    EXPECT_EQ(heard.back(), "STOPPING=1");
    const std::vector<std::string> between(heard.begin() + 1, heard.end() - 1);
    EXPECT_THAT(between, testing::Each(std::string("WATCHDOG=1")));
}

TEST(WatchedServer, SaysNothingOfTheWatchdogWhereThereIsNone) {
    ServerProcess server;
    ServiceManager manager;
    ASSERT_NO_FATAL_FAILURE(manager.Listen(server.Path(QStringLiteral("notify")).toUtf8()));
    ASSERT_NO_FATAL_FAILURE(server.Start());
    EXPECT_EQ(server.Terminate(), 0);
    EXPECT_THAT(manager.Received(), testing::StartsWith("READY=1\n"));
    EXPECT_EQ(manager.Received(), "STOPPING=1");
    EXPECT_EQ(manager.Received(), "");
}

}  // namespace
