// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/pollthread.h>

#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

namespace {

const QString ip = QStringLiteral("10.0.0.1");

class APollThread : public testing::Test {
  protected:
    APollThread() {
        m_thread.Setup(ip, 12, PollInterval(1));
        QObject::connect(&m_thread, &PollThread::InterfaceOpen, [this] { Note(QStringLiteral("open")); });
        QObject::connect(&m_thread, &PollThread::InterfaceClose, [this] { Note(QStringLiteral("close")); });
        QObject::connect(&m_thread, &PollThread::InterfaceError,
                         [this](int code, const QString&) { Note(QStringLiteral("error %1").arg(code)); });
        QObject::connect(&m_thread, &PollThread::InputDiscretesChanged,
                         [this](unsigned short count, unsigned long bits) {
                             Note(QStringLiteral("%1 inputs %2").arg(count).arg(bits, 0, 16));
                         });
    }
    void Note(const QString& event) {
        EXPECT_EQ(QThread::currentThread(), m_thread.thread());
        m_events.push_back(event);
    }
    bool WaitForEvents(std::size_t count) {
        return WaitUntil([this, count] { return m_events.size() >= count; });
    }
    void End() {
        m_thread.quit();
        m_thread.WaitForEnd();
    }

    FakeModules m_modules;
    std::vector<QString> m_events;
    PollThread m_thread;
};

TEST_F(APollThread, PollsTheModuleThatItWasSetUpFor) {
    m_thread.Setup(QStringLiteral("10.0.0.2"), 6, PollInterval(1));
    m_thread.start();
    ASSERT_TRUE(WaitForEvents(1));
    EXPECT_EQ(m_modules.Addresses(), std::vector<QString>{QStringLiteral("TCP:10.0.0.2:502")});
    EXPECT_EQ(m_modules.CountsAsked()[0], 6);
}

TEST_F(APollThread, TellsItsOwnThread) {
    m_modules.Read(ip, 5);
    m_thread.start();
    ASSERT_TRUE(WaitForEvents(2));
    m_modules.Fail(ip, 110);
    ASSERT_TRUE(WaitForEvents(4));
    m_events.resize(4);
    EXPECT_EQ(m_events, (std::vector<QString>{QStringLiteral("12 inputs 5"), QStringLiteral("open"),
                                              QStringLiteral("error 110"), QStringLiteral("close")}));
}

TEST_F(APollThread, TellsOfAnAddressThatCannotBeRight) {
    m_modules.Refuse(ip);
    m_thread.start();
    ASSERT_TRUE(WaitForEvents(1));
    EXPECT_EQ(m_events[0], QStringLiteral("error 22"));
}

TEST_F(APollThread, EndsAtOnceWhileARequestHangs) {
    m_modules.Hang(ip);
    m_thread.start();
    ASSERT_TRUE(m_modules.WaitUntilHanging());
    End();
    EXPECT_TRUE(m_thread.isFinished());
    EXPECT_EQ(m_modules.Hanging(), 0);
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(APollThread, EndsWhenItIsDestroyedWhileARequestHangs) {
    {
        PollThread thread;
        thread.Setup(ip, 12, PollInterval(1));
        m_modules.Hang(ip);
        thread.start();
        ASSERT_TRUE(m_modules.WaitUntilHanging());
    }
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(APollThread, EndsWheneverItIsAskedTo) {
    for (int i = 0; i < 200; ++i) {
        m_thread.start();
        const int requests = m_modules.Requests(ip);
        if (i % 2 == 1) {
            ASSERT_TRUE(WaitUntil([&] { return m_modules.Requests(ip) > requests || !m_events.empty(); }));
        }
        End();
        ASSERT_TRUE(m_thread.isFinished());
        ASSERT_EQ(m_modules.Interfaces(), 0);
        m_events.clear();
    }
}

TEST_F(APollThread, IsNotHeardAnyMoreOnceItHasEnded) {
    m_thread.start();
    // Without a turn of this thread's loop: all that is told waits.
    while (m_modules.Requests(ip) < 2)
        QThread::yieldCurrentThread();
    End();
    RunTurns(3);
    EXPECT_EQ(m_events, std::vector<QString>{});
}

TEST_F(APollThread, LetsNoErrorsPileUpThatNobodyHears) {
    m_modules.Fail(ip, 110);
    m_thread.start();
    // Without a turn of this thread's loop: all that is told waits.
    while (m_modules.Requests(ip) < 20)
        QThread::yieldCurrentThread();
    RunTurns(1);
    EXPECT_LT(m_events.size(), 5U);
    EXPECT_TRUE(WaitForEvents(5));
    m_modules.Fail(ip, 111);
    EXPECT_TRUE(WaitUntil([this] { return m_events.back() == QStringLiteral("error 111"); }));
}

TEST_F(APollThread, TellsOfAnErrorAgainAfterItEndedBeforeTheLastWasHeard) {
    m_modules.Fail(ip, 110);
    m_thread.start();
    while (m_modules.Requests(ip) < 2)
        QThread::yieldCurrentThread();
    End();
    m_thread.start();
    EXPECT_TRUE(WaitForEvents(1));
}

TEST_F(APollThread, StartsAgainWithWhatItWasSetUpForMeanwhile) {
    m_thread.start();
    ASSERT_TRUE(WaitForEvents(2));
    End();
    m_events.clear();
    m_thread.Setup(QStringLiteral("10.0.0.2"), 6, PollInterval(1));
    m_thread.start();
    ASSERT_TRUE(WaitForEvents(2));
    EXPECT_EQ(m_events, (std::vector<QString>{QStringLiteral("6 inputs fff"), QStringLiteral("open")}));
    EXPECT_EQ(m_modules.Addresses().size(), 2U);
}

TEST_F(APollThread, MayBeToldToEndWithoutHavingStarted) {
    End();
    EXPECT_FALSE(m_thread.isRunning());
    m_thread.start();
    EXPECT_TRUE(WaitForEvents(1));
}

}  // namespace
