// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/loglimiter.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>

namespace {

class LogLimiterTest : public testing::Test {
  protected:
    /// How many of \a count different lines of \a source pass.
    int CountPassing(const char* source, int count) {
        int passing = 0;
        for (int i = 0; i < count; ++i)
            if (Pass(source, QStringLiteral("line %1").arg(++m_line))) ++passing;
        return passing;
    }
    std::optional<QString> Pass(const char* source, const QString& text) {
        return m_limiter.Pass(QLatin1String(source), text);
    }

    ManualClock m_clock;
    QStringList m_told;
    LogLimiter m_limiter{m_clock, [this](const LogLimiter::LeftOut& leftOut, const QString& whose) {
                             m_told << LogLimiter::LeftOutText(leftOut.lines, whose);
                         }};
    int m_line = 0;
};

TEST_F(LogLimiterTest, ASourceHasABurstAndThenOneLineAtATime) {
    EXPECT_EQ(CountPassing("a", 1000), LogLimiter::LogRates.burst);
    m_clock.Advance(LogLimiter::LogRates.lineInterval);
    EXPECT_EQ(CountPassing("a", 1000), 1);
    m_clock.Advance(LogLimiter::LogRates.lineInterval * LogLimiter::LogRates.burst * 2);
    EXPECT_EQ(CountPassing("a", 1000), LogLimiter::LogRates.burst);
}

TEST_F(LogLimiterTest, OneSourceDoesNotSilenceAnother) {
    CountPassing("a", 1000);
    EXPECT_EQ(CountPassing("b", 10), 10);
}

TEST_F(LogLimiterTest, AllSourcesTogetherAreLimitedToo) {
    int passing = 0;
    for (int i = 0; i < 1000; ++i)
        passing += CountPassing(QByteArray::number(i).constData(), 1);
    EXPECT_EQ(passing, LogLimiter::LogRates.totalBurst);
}

TEST_F(LogLimiterTest, TheSameLineIsNotRepeatedAtOnce) {
    const QString line = QStringLiteral("denied");
    EXPECT_EQ(Pass("a", line), line);
    EXPECT_FALSE(Pass("a", line).has_value());
    EXPECT_EQ(Pass("b", line), line);
    m_clock.Advance(LogLimiter::RepeatAfter);
    EXPECT_EQ(Pass("a", line), QStringLiteral("denied (1 line left out before)"));
}

TEST_F(LogLimiterTest, TakesAPercentSignInALineAsItIs) {
    const QString line = QStringLiteral("50 %2 of %1");
    EXPECT_EQ(Pass("a", line), line);
    EXPECT_FALSE(Pass("a", line).has_value());
    m_clock.Advance(LogLimiter::RepeatAfter);
    EXPECT_EQ(Pass("a", line), QStringLiteral("50 %2 of %1 (1 line left out before)"));
}

TEST_F(LogLimiterTest, TellsOfWhatWasLeftOutWhenNothingFollows) {
    CountPassing("a", LogLimiter::LogRates.burst + 7);
    CountPassing("b", LogLimiter::LogRates.burst + 3);
    EXPECT_EQ(m_told, QStringList());
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_EQ(m_told, QStringList{QStringLiteral("10 lines left out, most of them of a")});
    m_clock.Advance(LogLimiter::TellAfter * 10);
    EXPECT_EQ(m_told.size(), 1);
    EXPECT_EQ(Pass("a", QStringLiteral("next")), QStringLiteral("next"));
}

TEST_F(LogLimiterTest, DoesNotTellTwiceWhatALineToldOf) {
    CountPassing("a", LogLimiter::LogRates.burst + 7);
    m_clock.Advance(LogLimiter::LogRates.lineInterval);
    EXPECT_EQ(Pass("a", QStringLiteral("next")), QStringLiteral("next (7 lines left out before)"));
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_EQ(m_told, QStringList());
}

TEST_F(LogLimiterTest, ForgetsTheQuietestFirst) {
    const QString line = QStringLiteral("denied");
    for (int i = 0; i < LogLimiter::MaxSources; ++i) {
        ASSERT_EQ(Pass(QByteArray::number(i).constData(), line), line);
        m_clock.Advance(LogLimiter::Time(1));
    }
    EXPECT_FALSE(Pass("0", line).has_value()) << "all are known";
    EXPECT_EQ(Pass("new", line), line);
    EXPECT_FALSE(Pass("1", line).has_value()) << "no more than needed are forgotten";
    EXPECT_EQ(Pass("0", line), line) << "this was the quietest";
}

TEST_F(LogLimiterTest, ForgetsOnesOfWhomNothingPassedBeforeOthers) {
    const QString line = QStringLiteral("denied");
    ASSERT_EQ(Pass("a", line), line);
    for (const char* source : {"b", "c", "d", "e"})
        CountPassing(source, LogLimiter::LogRates.burst);
    for (int i = 0; i < 2 * LogLimiter::MaxSources; ++i)
        ASSERT_EQ(CountPassing(QByteArray::number(i).constData(), 1), 0);
    m_clock.Advance(LogLimiter::RepeatAfter - LogLimiter::Time(1));
    EXPECT_FALSE(Pass("a", line).has_value()) << "it is still known";
    EXPECT_EQ(Pass("f", line), line) << "there is room again";
}

TEST_F(LogLimiterTest, CountsForSourcesThatItForgetsAsWell) {
    int passing = 0;
    for (int i = 0; i < 3 * LogLimiter::MaxSources; ++i)
        passing += CountPassing(QByteArray::number(i).constData(), 5);
    const int leftOut = 3 * LogLimiter::MaxSources * 5 - passing;
    m_clock.Advance(LogLimiter::TellAfter);
    ASSERT_EQ(m_told.size(), 1);
    EXPECT_TRUE(m_told[0].startsWith(QStringLiteral("%1 lines left out").arg(leftOut)))
        << m_told[0].toStdString();
}

}  // namespace
