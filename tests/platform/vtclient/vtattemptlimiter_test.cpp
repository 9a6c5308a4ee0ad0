// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtattemptlimiter.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

class VtAttemptLimiterTest : public testing::Test {
  protected:
    void Fail(int times, const QString& address) {
        for (int i = 0; i < times; ++i)
            m_limiter.Failed(address);
    }

    std::chrono::milliseconds m_now = 1000s;
    VtAttemptLimiter m_limiter{[this] { return m_now; }};
    const QString m_here = QStringLiteral("10.0.0.1:4000");
};

TEST_F(VtAttemptLimiterTest, TypingErrorsAreFree) {
    Fail(VtAttemptLimiter::FreeFailures - 1, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms);
}

TEST_F(VtAttemptLimiterTest, TheWaitDoublesWithEveryFurtherFailure) {
    Fail(VtAttemptLimiter::FreeFailures, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 1000ms);
    Fail(1, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 2000ms);
    Fail(1, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 4000ms);
}

TEST_F(VtAttemptLimiterTest, TheWaitPasses) {
    Fail(VtAttemptLimiter::FreeFailures, m_here);
    m_now += 400ms;
    EXPECT_EQ(m_limiter.WaitOf(m_here), 600ms);
    m_now += 600ms;
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms);
}

TEST_F(VtAttemptLimiterTest, TheWaitHasABoundHoweverManyFailures) {
    Fail(200, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), VtAttemptLimiter::LongestWait);
}

TEST_F(VtAttemptLimiterTest, FailuresAreForgottenAfterQuiet) {
    Fail(20, m_here);
    m_now += VtAttemptLimiter::LongestWait + 1ms;
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms);
    Fail(VtAttemptLimiter::FreeFailures - 1, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms);
}

TEST_F(VtAttemptLimiterTest, SuccessForgetsFailures) {
    Fail(VtAttemptLimiter::FreeFailures - 1, m_here);
    m_limiter.Succeeded(m_here);
    Fail(1, m_here);
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms);
}

TEST_F(VtAttemptLimiterTest, AnotherUserDoesNotWait) {
    for (int i = 0; i < VtAttemptLimiter::FreeFailures; ++i)
        m_limiter.Failed(m_here, QStringLiteral("alice"));
    EXPECT_GT(m_limiter.WaitOf(m_here, QStringLiteral("alice")), 0ms);
    EXPECT_EQ(m_limiter.WaitOf(m_here, QStringLiteral("bob")), 0ms);
    m_limiter.Succeeded(m_here, QStringLiteral("bob"));
    EXPECT_GT(m_limiter.WaitOf(m_here, QStringLiteral("alice")), 0ms);
}

TEST_F(VtAttemptLimiterTest, AnotherPortIsTheSameHost) {
    Fail(VtAttemptLimiter::FreeFailures, m_here);
    EXPECT_GT(m_limiter.WaitOf(QStringLiteral("10.0.0.1:4001")), 0ms);
    EXPECT_EQ(m_limiter.WaitOf(QStringLiteral("10.0.0.2:4000")), 0ms);
}

TEST_F(VtAttemptLimiterTest, RemembersABoundedNumberOfAddresses) {
    Fail(20, m_here);
    for (int i = 0; i < VtAttemptLimiter::MaxRecords; ++i) {
        ++m_now;
        m_limiter.Failed(QStringLiteral("host%1:1").arg(i));
    }
    EXPECT_EQ(m_limiter.WaitOf(m_here), 0ms) << "the oldest makes room";
}

struct Host {
    const char* name;
    const char* address;
    const char* host;
};

class VtAttemptLimiterHost : public testing::TestWithParam<Host> {};

TEST_P(VtAttemptLimiterHost, IsWhomTheAddressCountsFor) {
    EXPECT_EQ(VtAttemptLimiter::HostOf(QLatin1String(GetParam().address)), QLatin1String(GetParam().host));
}

const Host Hosts[] = {
    {"IPv4", "192.168.1.9:50000", "192.168.1.9"},
    {"IPv4WrittenAsIPv6", "[::ffff:192.168.1.9]:50000", "192.168.1.9"},
    {"IPv6IsItsNetwork", "[2001:db8:1:2:3:4:5:6]:50000", "2001:db8:1:2::"},
    {"IPv6WithoutBrackets", "2001:db8:1:2:3:4:5:6:50000", "2001:db8:1:2::"},
    {"NoAddress", "console:50000", "console"},
};

INSTANTIATE_TEST_SUITE_P(, VtAttemptLimiterHost, testing::ValuesIn(Hosts),
                         [](const testing::TestParamInfo<Host>& row) { return std::string(row.param.name); });

}  // namespace
