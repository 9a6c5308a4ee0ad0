// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/messagelimiter.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

class MessageLimiterTest : public testing::Test {
  protected:
    /// What is written; "-" for nothing.
    QString Pass(const char* text) {
        return limiter.Pass(QLatin1String(text), now).value_or(QStringLiteral("-"));
    }

    MessageLimiter limiter;
    milliseconds now = hours(1);
};

TEST_F(MessageLimiterTest, WritesAMessageOnceAndAgainAfterAWhileWithHowManyThereWere) {
    EXPECT_EQ(Pass("a"), QStringLiteral("a"));
    for (int i = 0; i < 99; ++i) {
        now += milliseconds(100);
        EXPECT_EQ(Pass("a"), QStringLiteral("-"));
    }
    now += milliseconds(100);
    EXPECT_EQ(Pass("a"), QStringLiteral("a (99 times more before)"));
    now += MessageLimiter::RepeatAfter;
    EXPECT_EQ(Pass("a"), QStringLiteral("a"));
}

TEST_F(MessageLimiterTest, WritesMessagesThatComeInTurnOnceEach) {
    EXPECT_EQ(Pass("a"), QStringLiteral("a"));
    EXPECT_EQ(Pass("b"), QStringLiteral("b"));
    EXPECT_EQ(Pass("a"), QStringLiteral("-"));
    EXPECT_EQ(Pass("b"), QStringLiteral("-"));
}

TEST_F(MessageLimiterTest, ForgetsTheOldestOfVeryMany) {
    Pass("a");
    for (int i = 1; i < MessageLimiter::MaxRemembered; ++i) {
        now += milliseconds(1);
        limiter.Pass(QString::number(i), now);
    }
    EXPECT_EQ(Pass("a"), QStringLiteral("-"));
    EXPECT_EQ(Pass("one more"), QStringLiteral("one more"));
    EXPECT_EQ(Pass("a"), QStringLiteral("a"));
}

}  // namespace
