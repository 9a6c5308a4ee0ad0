// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownrequests_windows.h>
#include <apps/common/shutdownsignals.h>

#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

/// The window that nobody sees, by which others ask a process to end.
HWND FindHiddenWindow() {
    return FindWindowW(L"MultiChannelServerShutdown", nullptr);
}

/// What a ShutdownSignals tells.
struct Listener {
    explicit Listener(ShutdownSignals::EHangUp hangUp = ShutdownSignals::EHangUp::Ends) : shutdown(hangUp) {
        QObject::connect(&shutdown, &ShutdownSignals::ShutdownRequested, [this] { ++ends; });
        QObject::connect(&shutdown, &ShutdownSignals::HungUp, [this] { ++hangUps; });
    }
    bool IsTold() {
        return WaitUntil([this] { return ends > 0; });
    }

    ShutdownSignals shutdown;
    int ends = 0;
    int hangUps = 0;
};

TEST(ShutdownSignalsByWindow, ACloseIsToldThroughTheEventLoop) {
    Listener listener;
    ASSERT_NE(FindHiddenWindow(), nullptr);
    SendMessageW(FindHiddenWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(listener.ends, 0);
    EXPECT_TRUE(listener.IsTold());
}

TEST(ShutdownSignalsByWindow, NobodySeesIt) {
    const Listener listener;
    EXPECT_FALSE(IsWindowVisible(FindHiddenWindow()));
}

TEST(ShutdownSignalsByWindow, WorksAgainForTheNextObject) {
    for (int i = 0; i < 2; ++i) {
        Listener listener;
        PostMessageW(FindHiddenWindow(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(listener.IsTold()) << i;
    }
}

TEST(ShutdownSignalsByWindow, TheEndOfTheSessionIsAllowedAndEndsNothingUntilItComes) {
    Listener listener;
    EXPECT_EQ(SendMessageW(FindHiddenWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(FindHiddenWindow(), WM_ENDSESSION, FALSE, 0);
    RunTurns(3);
    EXPECT_EQ(listener.ends, 0);
}

TEST(ShutdownSignalsByWindow, TheEndOfTheSessionWaitsForTheEndOfTheProcess) {
    const auto endSession = [] {
        int code = 1;
        Listener listener;
        // The answer is awaited on this thread, which is not to be held up for ever by a process that ends in
        // order.
        SendNotifyMessageW(FindHiddenWindow(), WM_ENDSESSION, TRUE, 0);
        if (listener.IsTold()) code = 7;
        DWORD_PTR answer = 0;
        const bool isAnswered =
            SendMessageTimeoutW(FindHiddenWindow(), WM_NULL, 0, 0, SMTO_BLOCK, 1, &answer) != 0;
        std::exit(isAnswered ? 2 : code);
    };
    EXPECT_EXIT(endSession(), testing::ExitedWithCode(7), "");
}

TEST(ShutdownRequests, WhatIsAskedForBeforeAnybodyListensIsToldToWhoDoes) {
    shutdownrequests::End();
    Listener listener;
    EXPECT_TRUE(listener.IsTold());
}

TEST(ShutdownRequests, AreForgottenWithWhomTheyWereToldTo) {
    {
        Listener first;
        shutdownrequests::End();
        EXPECT_TRUE(first.IsTold());
    }
    Listener second;
    RunTurns(3);
    EXPECT_EQ(second.ends, 0);
}

TEST(ShutdownRequests, HangUpsAreToldWhereTheyAreWanted) {
    {
        Listener listener(ShutdownSignals::EHangUp::IsTold);
        shutdownrequests::HangUp();
        EXPECT_TRUE(WaitUntil([&] { return listener.hangUps == 1; }));
        EXPECT_EQ(listener.ends, 0);
    }
    Listener other;
    shutdownrequests::HangUp();
    RunTurns(3);
    EXPECT_EQ(other.hangUps + other.ends, 0);
}

}  // namespace
