// SPDX-License-Identifier: Apache-2.0
// A server that has stopped and still has its connections.
#include <tests/apps/mcconsole/consolefixture.h>

#include <gmock/gmock.h>

#include <csignal>

using namespace std::chrono_literals;

namespace {

TEST_F(ConsoleTest, SaysThatAServerDoesNotAnswerAndHowLongAlready) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
    const auto* const latency = window->findChild<QLabel*>(QStringLiteral("Latency"));
    ::kill(static_cast<pid_t>(server.ProcessId()), SIGSTOP);
    ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    EXPECT_TRUE(Banner()->text().contains(QLatin1String("has not answered for")))
        << Banner()->text().toStdString();
    EXPECT_TRUE(latency->text().startsWith(QLatin1String("no answer for"))) << latency->text().toStdString();
    EXPECT_EQ(window->GetSession().GetState(), ConsoleSession::EState::Connected);
    const QString before = latency->text();
    EXPECT_TRUE(WaitFor([&] { return latency->text() != before; })) << "it grows";
    ::kill(static_cast<pid_t>(server.ProcessId()), SIGCONT);
    EXPECT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
    EXPECT_TRUE(WaitFor([&] {
        return latency->text().endsWith(QLatin1String("ms")) &&
               !latency->text().startsWith(QLatin1String("no"));
    }));
}

}  // namespace
