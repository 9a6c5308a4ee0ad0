// SPDX-License-Identifier: Apache-2.0
// What users notice of whatever happens on the ways to NATS, a client's or the server's.
#include <tests/apps/nats/faultreport.h>
#include <tests/apps/nats/faultstage.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/platform/vtclient/faultproxy.h>

using namespace std::chrono_literals;

namespace {

using Time = FaultStage::Time;

/// What happens to the way of one client, or of the server, and for how long.
struct WayFault {
    const char* name;
    const char* what;
    Faults toNats;
    Faults fromNats;
    bool isOfServer;
    Time time;
    bool mayLose;  ///< sessions, and with them occurrences
};

class WayFaults : public testing::TestWithParam<WayFault> {};

TEST_P(WayFaults, AreOverWhenTheWayIsHealed) {
    const WayFault& fault = GetParam();
    NatsServer natsServer;
    ASSERT_TRUE(natsServer.Start(WithDisk));
    FaultProxy proxy(natsServer.Port());
    nats::NatsOptions throughProxy = natsServer.Options();
    throughProxy.servers[0].port = proxy.Port();
    throughProxy.deadAfter = 3s;
    FaultStage stage;
    ASSERT_TRUE(stage.StartServer(fault.isOfServer ? throughProxy : natsServer.Options()));
    const QString direct = natsServer.Address(QStringLiteral("tower"));
    const QString faulty = QStringLiteral("nats://127.0.0.1:%1/tower").arg(proxy.Port());
    ASSERT_TRUE(stage.AddClient(direct));
    ASSERT_TRUE(stage.AddClient(fault.isOfServer ? direct : faulty));
    ASSERT_TRUE(stage.WaitForRoads(*OpenBus(natsServer.Options())));
    proxy.SetFaults(EDirection::ToServer, fault.toNats);
    proxy.SetFaults(EDirection::ToClient, fault.fromNats);
    stage.Run(fault.time);
    proxy.Heal();
    ASSERT_TRUE(stage.RunUntil([&] { return stage.IsOffering() && stage.AreAllEstablished(); }));
    stage.Run(1s);
    EXPECT_TRUE(stage.IsInOrder(!fault.mayLose));
    Report(fault.what, stage, stage.TakePauses());
}

constexpr Faults Fine{};
constexpr Faults Swallowed{false, true, 0, 0, 0};
constexpr Faults Stalled{true, false, 0, 0, 0};
constexpr Faults Slow{false, false, 0, 0, 20'000};

const std::vector<WayFault> Quick = {
    {"AClientsUp", "a client's way to NATS swallows for 2 s", Swallowed, Fine, false, 2s, true},
    {"TheServersStalled", "the server's way stalls for 2 s", Stalled, Stalled, true, 2s, false}};

const std::vector<WayFault> Others = {
    {"AClientsHalfOpen", "a client's way swallows all for 4 s", Swallowed, Swallowed, false, 4s, true},
    {"AClientsDown", "a client's way from NATS swallows for 2 s", Fine, Swallowed, false, 2s, true},
    {"AClientsStalled", "a client's way stalls for 2 s", Stalled, Stalled, false, 2s, false},
    {"AClientsSlow", "a client's way has 20 KB/s for 4 s", Slow, Slow, false, 4s, false},
    {"TheServersHalfOpen", "the server's way swallows all for 4 s", Swallowed, Swallowed, true, 4s, true},
    {"TheServersSlow", "the server's way has 20 KB/s for 3 s", Slow, Slow, true, 3s, true}};

std::vector<WayFault> AllWanted() {
    std::vector<WayFault> faults = Quick;
    if (IsLong()) faults.insert(faults.end(), Others.begin(), Others.end());
    return faults;
}

INSTANTIATE_TEST_SUITE_P(All, WayFaults, testing::ValuesIn(AllWanted()),
                         [](const auto& row) { return std::string(row.param.name); });

// A way that loses 5 % of its packets is, above TCP, one that stalls now and then until they are sent anew.
TEST(Ways, AWayThatStallsNowAndThenIsNoMoreThanSlow) {
    NatsServer natsServer;
    ASSERT_TRUE(natsServer.Start(WithDisk));
    FaultProxy proxy(natsServer.Port());
    FaultStage stage;
    ASSERT_TRUE(stage.StartServer(natsServer.Options()));
    ASSERT_TRUE(stage.AddClient(QStringLiteral("nats://127.0.0.1:%1/tower").arg(proxy.Port())));
    ASSERT_TRUE(stage.WaitForRoads(*OpenBus(natsServer.Options())));
    for (int i = 0; i < 6; ++i) {
        proxy.SetFaults(i % 2 == 0 ? Stalled : Fine);
        stage.Run(i % 2 == 0 ? 250ms : 100ms);
    }
    proxy.Heal();
    stage.Run(500ms);
    EXPECT_TRUE(stage.IsInOrder(true));
    EXPECT_EQ(stage.CountLosses(), 0);
    Report("a way that stalls for 250 ms again and again", stage, stage.TakePauses());
}

// Who does not read is let go by NATS, comes again, and has what it has missed.
TEST(Ways, ASlowConsumerComesBackAndHasWhatItHasMissed) {
    NatsServer natsServer;
    ASSERT_TRUE(natsServer.Start(QByteArray(WithDisk) + "write_deadline: \"300ms\"\nmax_pending: 1MB\n"));
    FaultProxy proxy(natsServer.Port());
    FaultStage stage;
    ASSERT_TRUE(stage.StartServer(natsServer.Options()));
    ASSERT_TRUE(stage.AddClient(natsServer.Address(QStringLiteral("tower"))));
    ASSERT_TRUE(stage.AddClient(QStringLiteral("nats://127.0.0.1:%1/tower").arg(proxy.Port())));
    ASSERT_TRUE(stage.WaitForRoads(*OpenBus(natsServer.Options())));
    proxy.SetFaults(EDirection::ToClient, Stalled);
    const auto isLetGo = [&] { return natsServer.Output().contains("Slow Consumer"); };
    const auto stranger = OpenBus(natsServer.Options());
    EXPECT_TRUE(stage.RunUntil([&] {
        stranger->Publish("mcs.tower.here", std::string(30'000, ' '));  // to everybody
        return isLetGo();
    }));
    proxy.Heal();
    stage.Run(2s);
    EXPECT_TRUE(stage.IsInOrder(stage.CountLosses() == 0));
    Report("a consumer too slow for NATS", stage, stage.TakePauses());
}

}  // namespace
