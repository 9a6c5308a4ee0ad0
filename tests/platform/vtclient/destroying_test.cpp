// SPDX-License-Identifier: Apache-2.0
// Clients that are destroyed by those whom they tell something.
#include <tests/platform/vtclient/socketends.h>
#include <tests/support/recordingobserver.h>

#include <string>
#include <utility>

namespace {

class DestroyingOn : public SocketEnds, public testing::WithParamInterface<TChangeCode> {};

TEST_P(DestroyingOn, WhatItTellsInADialogLetsTheCallUnderWayEndFirst) {
    Add<values::Value<int>>("/S", "n");
    Listen();
    IVtClient* client = Connect();
    client->AddTic(QStringLiteral("/L,/S"), "");
    bool isAliveAfterwards = false;
    RecordingObserver observer([&](Observable* /*source*/, TChangeCode code) {
        if (code != GetParam() || client == nullptr) return;
        const ObservableGuard guard(*client);
        Destroy(std::exchange(client, nullptr));
        RunTurns(20);  // as in a dialog
        isAliveAfterwards = guard.IsAlive();
    });
    client->AddObserver(&observer);
    ASSERT_TRUE(WaitUntil([this] { return !m_access.started.empty(); }));
    if (GetParam() == connectioncode::Disconnected) m_server.Close(QStringLiteral("back soon"));
    ASSERT_TRUE(WaitUntil([&observer] { return observer.Count(GetParam()) != 0; }));
    EXPECT_TRUE(isAliveAfterwards) << "its call still is under way";
    EXPECT_EQ(observer.Count(connectioncode::GoingAway), 1);
    EXPECT_TRUE(WaitUntil([this] { return m_access.ended.size() == 1; }));
    RunTurns(20);
}

INSTANTIATE_TEST_SUITE_P(, DestroyingOn,
                         testing::Values(connectioncode::Connected, connectioncode::TicsChanged,
                                         connectioncode::Disconnected),
                         [](const auto& row) { return "Code" + std::to_string(row.param); });

}  // namespace
