// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownsignals.h>

#include <gtest/gtest.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <csignal>

namespace {

struct Request {
    const char* name;
    int signal;
};

class ShutdownSignalsTest : public testing::TestWithParam<Request> {
  protected:
    /// Runs the event loop until the request was told, or a deadline has passed.
    bool IsTold(ShutdownSignals& shutdown) {
        QEventLoop loop;
        bool told = false;
        QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, &loop, [&] {
            told = true;
            loop.quit();
        });
        QTimer::singleShot(5000, &loop, &QEventLoop::quit);
        loop.exec();
        return told;
    }
};

TEST_P(ShutdownSignalsTest, IsToldThroughTheEventLoop) {
    ShutdownSignals shutdown;
    int told = 0;
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, [&told] { ++told; });
    std::raise(GetParam().signal);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(IsTold(shutdown));
    EXPECT_EQ(told, 1);
}

TEST_P(ShutdownSignalsTest, WorksAgainForTheNextObject) {
    {
        ShutdownSignals first;
        std::raise(GetParam().signal);
        EXPECT_TRUE(IsTold(first));
    }
    ShutdownSignals second;
    std::raise(GetParam().signal);
    EXPECT_TRUE(IsTold(second));
}

TEST_P(ShutdownSignalsTest, ASecondRequestEndsTheProcess) {
    const int signal = GetParam().signal;
    const auto raiseTwice = [signal] {
        const ShutdownSignals shutdown;
        std::raise(signal);
        std::raise(signal);
    };
    EXPECT_EXIT(raiseTwice(), testing::KilledBySignal(signal), "");
}

TEST_P(ShutdownSignalsTest, RestoresWhatHeldBefore) {
    const auto before = std::signal(GetParam().signal, SIG_IGN);
    { const ShutdownSignals shutdown; }
    EXPECT_EQ(std::signal(GetParam().signal, before), SIG_IGN);
}

INSTANTIATE_TEST_SUITE_P(, ShutdownSignalsTest,
                         testing::Values(Request{"Interrupt", SIGINT}, Request{"Terminate", SIGTERM},
                                         Request{"HangUp", SIGHUP}),
                         [](const testing::TestParamInfo<Request>& row) {
                             return std::string(row.param.name);
                         });

TEST(ShutdownSignals, HangUpsThatAreToldEndNothingHoweverMany) {
    ShutdownSignals shutdown(ShutdownSignals::EHangUp::IsTold);
    int ends = 0;
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, [&ends] { ++ends; });
    QEventLoop loop;
    bool isLate = false;
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, &loop, [&] {
        isLate = true;
        loop.quit();
    });
    QObject::connect(&shutdown, &ShutdownSignals::HungUp, &loop, &QEventLoop::quit);
    deadline.start(20000);
    for (int i = 0; i < 3; ++i) {
        std::raise(SIGHUP);
        loop.exec();
        ASSERT_FALSE(isLate) << i;
    }
    EXPECT_EQ(ends, 0);
    QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, &loop, &QEventLoop::quit);
    std::raise(SIGTERM);
    loop.exec();
    EXPECT_FALSE(isLate);
    EXPECT_EQ(ends, 1);
}

TEST(ShutdownSignals, AHangUpThatIsIgnoredStaysIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        const ShutdownSignals shutdown;
        EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
    }
    std::signal(SIGHUP, before);
}

}  // namespace
