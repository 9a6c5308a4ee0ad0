// SPDX-License-Identifier: Apache-2.0
// A server that has stopped and still has its connections.
#include <apps/pages/agetext.h>

#include <tests/apps/mcconsole/consolefixture.h>

#include <gmock/gmock.h>

#include <csignal>

using namespace std::chrono_literals;
using testing::HasSubstr;

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

// Its connection is given up much later than it was heard last.
TEST_F(ConsoleTest, TellsOneMomentOfALossThatBeganWithSilence) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    VtClientOptions options;
    options.deadAfter = 3s;
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, options);
    ASSERT_TRUE(WaitFor([this] { return !window->GetSession().GetMpxOrvPath().isEmpty(); }));
    const QDateTime frozen = QDateTime::currentDateTime();
    ::kill(static_cast<pid_t>(server.ProcessId()), SIGSTOP);
    ASSERT_TRUE(WaitFor([this] { return window->GetSession().GetState() == ConsoleSession::EState::Lost; }));
    const Situation& situation = window->GetSituation();
    ASSERT_TRUE(WaitFor([this] { return Banner()->text().contains(QLatin1String("Lost at ")); }));
    EXPECT_LT(frozen.msecsTo(situation.GetLostSince()), 1500) << "not when it was given up";
    const QString since = situation.GetLostSince().toLocalTime().toString(QStringLiteral("HH:mm:ss"));
    EXPECT_THAT(Banner()->text().toStdString(), HasSubstr("Lost at " + since.toStdString()));
    const QString age = agetext::Of(situation.GetAge());
    EXPECT_EQ(situation.Get(Situation::EItem::Server).word, QStringLiteral("lost for %1").arg(age));
    EXPECT_THAT(Banner()->text().toStdString(), HasSubstr("is " + age.toStdString() + " old"));
    ::kill(static_cast<pid_t>(server.ProcessId()), SIGCONT);
}

}  // namespace
