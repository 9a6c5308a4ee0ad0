// SPDX-License-Identifier: Apache-2.0
// Windows gives a thread the least stack that there is, whoever asks for less.
#include <devicecontrol/multichannelserver/common/gts/pollthread.h>

#include <platform/modbus/modbussystem.h>

#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>

#include <gtest/gtest.h>

namespace {

TEST(PollThreadResources, ThatTheSystemHasNoThreadToGiveIsSaid) {
    FakeModules modules;
    PollThread thread;
    thread.Setup(QStringLiteral("10.0.0.1"), 12, PollInterval(1));
    thread.setStackSize(1);  // less than any thread can have
    EXPECT_EQ(thread.Start(), modbussystem::CodeOf(modbussystem::EError::NoResources));
    EXPECT_FALSE(thread.isRunning());
    thread.setStackSize(0);
    EXPECT_EQ(thread.Start(), 0U);
    EXPECT_TRUE(thread.isRunning());
    thread.quit();
    thread.WaitForEnd();
}

}  // namespace
