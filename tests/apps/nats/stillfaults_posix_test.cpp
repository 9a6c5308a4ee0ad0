// SPDX-License-Identifier: Apache-2.0
// What users notice of programs that do not run for a while, of a stream that fills, and of clocks that
// differ, while changes and occurrences go on.
#include <tests/apps/nats/faultpeer.h>
#include <tests/apps/nats/faultreport.h>
#include <tests/apps/nats/faultstage.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/platform/vtclient/faultproxy.h>
#include <tests/support/waituntil.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr int StillPatience = 40'000;  // ms: machines may be busy
constexpr auto Patience = 2s;          // of either end of a session
const QString PatienceWord = QStringLiteral("2000");

/// Counts what the server publishes on roads.
class RoadEar {
  public:
    explicit RoadEar(const NatsServer& server) : m_bus(OpenBus(server.Options())) {
        m_bus->Subscribe("mcs.tower.road.>", [this](const nats::NatsMessage&) { ++m_published; });
        m_bus->Flush();
    }
    /// Waits for so many more.
    bool WaitForMore(int count) {
        const int wanted = m_published + count;
        return WaitUntil([&] { return m_published >= wanted; }, StillPatience);
    }

  private:
    int m_published = 0;
    std::shared_ptr<nats::INatsBus> m_bus;
};

class StillFaults : public testing::Test {
  protected:
    StillFaults() { m_stage.SetPatience(Patience); }
    void Start(int clients) {
        ASSERT_TRUE(m_stage.StartServer(m_nats.Options()));
        AddClients(clients);
        ASSERT_TRUE(m_stage.WaitForRoads(*OpenBus(m_nats.Options())));
    }
    void AddClients(int count) {
        for (int client = 0; client < count; ++client)
            ASSERT_TRUE(m_stage.AddClient(m_nats.Address(QStringLiteral("tower"))));
    }
    bool StartClient(FaultPeer& peer, std::chrono::seconds wrong = 0s) const {
        return peer.Start({QStringLiteral("client"), m_nats.Address(QStringLiteral("tower")), PatienceWord},
                          wrong);
    }
    bool StartServer(FaultPeer& peer, std::chrono::seconds wrong = 0s) const {
        return peer.Start({QStringLiteral("server"), QString::number(m_nats.Port()), PatienceWord}, wrong);
    }
    static bool HasHeardAll(FaultPeer& peer, int sent, FaultPeer::Account* account) {
        return WaitUntil(
            [&] {
                *account = peer.Tell();
                return account->Of("established") == 1 && account->Of("heard") == sent;
            },
            StillPatience);
    }

    NatsServer m_nats;
    FaultStage m_stage;
};

// A client that does not run
// -------------------------------------------------------------------------------

TEST_F(StillFaults, AClientThatDoesNotRunForAMomentMissesNothing) {
    ASSERT_TRUE(m_nats.Start(WithDisk));
    ASSERT_NO_FATAL_FAILURE(Start(1));
    FaultPeer peer;
    ASSERT_TRUE(StartClient(peer));
    m_stage.Run(1s);
    peer.Freeze(true);
    m_stage.Run(600ms);
    peer.Freeze(false);
    m_stage.Run(500ms);
    FaultPeer::Account account;
    ASSERT_TRUE(HasHeardAll(peer, m_stage.CountSent(), &account));
    EXPECT_EQ(account.Of("doubled"), 0);
    // On a machine that is busy enough a moment is too long, which is told.
    EXPECT_TRUE(account.Of("missed") == 0 || account.Of("losses") > 0);
    EXPECT_TRUE(m_stage.IsInOrder(true));
}

TEST_F(StillFaults, AClientThatDoesNotRunForLongerThanAllWaitComesBackAndIsToldWhatItMissed) {
    ASSERT_TRUE(m_nats.Start(WithDisk));
    ASSERT_NO_FATAL_FAILURE(Start(2));
    FaultPeer peer;
    ASSERT_TRUE(StartClient(peer));
    m_stage.Run(1s);
    peer.Freeze(true);
    m_stage.Run(6s);
    peer.Freeze(false);
    FaultPeer::Account account;
    EXPECT_TRUE(m_stage.RunUntil([&] {
        account = peer.Tell();
        return account.Of("losses") > 0 && account.Of("established") == 1;
    }));
    m_stage.Run(500ms);
    ASSERT_TRUE(HasHeardAll(peer, m_stage.CountSent(), &account));
    EXPECT_EQ(account.Of("doubled"), 0);
    EXPECT_GT(account.Of("missed"), 0);
    EXPECT_GT(account.Of("told"), 0);
    EXPECT_TRUE(m_stage.IsInOrder(true)) << "the others notice nothing";
    EXPECT_EQ(m_stage.CountLosses(), 0);
    Report("a client stopped for 6 s, others meanwhile", m_stage, m_stage.TakePauses());
}

// A server, and NATS, that do not run
// ----------------------------------------------------------------------

TEST_F(StillFaults, AServerThatDoesNotRunForLongerThanAllWaitIsThereAgain) {
    ASSERT_TRUE(m_nats.Start(WithDisk));
    FaultPeer peer;
    ASSERT_TRUE(StartServer(peer));
    RoadEar ear(m_nats);
    ASSERT_NO_FATAL_FAILURE(AddClients(3));
    ASSERT_TRUE(ear.WaitForMore(100));
    peer.Freeze(true);
    ASSERT_TRUE(WaitUntil([this] { return m_stage.CountLosses() >= 3; }, StillPatience));
    peer.Freeze(false);
    ASSERT_TRUE(WaitUntil([this] { return m_stage.AreAllEstablished(); }, StillPatience));
    ASSERT_TRUE(ear.WaitForMore(100));
    m_stage.BelieveSent(peer.Stop().Of("sent"));
    EXPECT_TRUE(m_stage.IsInOrder(false));
    Report("the server stopped until all have noticed", m_stage, m_stage.TakePauses());
}

TEST_F(StillFaults, WhereNatsDoesNotRunForLongerThanAllWaitAllComeBack) {
    ASSERT_TRUE(m_nats.Start(WithDisk));
    ASSERT_NO_FATAL_FAILURE(Start(3));
    m_nats.Freeze(true);
    EXPECT_TRUE(m_stage.RunUntil([this] { return m_stage.CountLosses() >= 3 && !m_stage.IsOffering(); }));
    m_nats.Freeze(false);
    ASSERT_TRUE(m_stage.RunUntil([this] { return m_stage.IsOffering() && m_stage.AreAllEstablished(); }));
    m_stage.Run(500ms);
    EXPECT_TRUE(m_stage.IsInOrder(false));
    Report("NATS stopped until all have noticed", m_stage, m_stage.TakePauses());
}

// A stream that fills
// ----------------------------------------------------------------------------------------

TEST_F(StillFaults, AStreamThatFillsMeanwhileCostsNothing) {
    ASSERT_TRUE(m_nats.Start(WithDisk));
    ASSERT_NO_FATAL_FAILURE(Start(2));
    FaultProxy proxy(m_nats.Port());
    ASSERT_TRUE(m_stage.AddClient(QStringLiteral("nats://127.0.0.1:%1/tower").arg(proxy.Port())));
    m_stage.Run(500ms);
    // From now on it takes nothing, as where there is no more room.
    QByteArray answer;
    const auto stranger = OpenBus(m_nats.Options());
    stranger->Request("$JS.API.STREAM.UPDATE.mcs-roads-tower",
                      R"({"name":"mcs-roads-tower","subjects":["mcs.tower.road.>"],"storage":"file",)"
                      R"("discard":"new","max_msgs":1,"max_consumers":-1,"max_msgs_per_subject":1,)"
                      R"("num_replicas":1,"allow_direct":true})",
                      5s, [&](const nats::NatsAnswer& said) { answer = said.problem.toUtf8() + said.data; });
    ASSERT_TRUE(m_stage.RunUntil([&] { return !answer.isEmpty(); }));
    ASSERT_FALSE(answer.contains("\"error\"")) << answer.toStdString();
    m_stage.Run(300ms);
    proxy.SetFaults(EDirection::ToClient, {false, true, 0, 0, 0});
    m_stage.Run(300ms);
    proxy.Heal();
    m_stage.Run(1500ms);
    EXPECT_TRUE(m_stage.IsInOrder(true)) << "what one has missed the server has";
    EXPECT_EQ(m_stage.CountLosses(), 0);
    Report("JetStream's stream fills meanwhile", m_stage, m_stage.TakePauses());
}

// Clocks
// -----------------------------------------------------------------------------------------------------

/// What the clocks of a server and of a client are off, and what later, while they are connected.
struct Clocks {
    const char* name;
    std::chrono::seconds server;
    std::chrono::seconds client;
    std::chrono::seconds serverLater;
    std::chrono::seconds clientLater;
};

class ClocksApart : public StillFaults, public testing::WithParamInterface<Clocks> {};

TEST_P(ClocksApart, ChangeNothing) {
    const Clocks& clocks = GetParam();
    ASSERT_TRUE(m_nats.Start(WithDisk));
    FaultPeer server;
    ASSERT_TRUE(StartServer(server, clocks.server));
    FaultPeer client;
    ASSERT_TRUE(StartClient(client, clocks.client));
    RoadEar ear(m_nats);
    ASSERT_NO_FATAL_FAILURE(AddClients(1));
    ASSERT_TRUE(ear.WaitForMore(100));
    server.SetClock(clocks.serverLater);
    client.SetClock(clocks.clientLater);
    ASSERT_TRUE(ear.WaitForMore(IsLong() ? 2000 : 400));
    const FaultPeer::Account sent = server.Stop();
    const auto now = QDateTime::currentSecsSinceEpoch();
    EXPECT_NEAR(sent.Of("time"), static_cast<double>(now + clocks.serverLater.count()), 60)
        << "it is in fact wrong";
    FaultPeer::Account heard;
    ASSERT_TRUE(HasHeardAll(client, sent.Of("sent"), &heard));
    for (const char* const fault : {"doubled", "missed", "losses", "told"})
        EXPECT_EQ(heard.Of(fault), 0) << fault;
    m_stage.BelieveSent(sent.Of("sent"));
    EXPECT_TRUE(m_stage.IsInOrder(true));
    EXPECT_EQ(m_stage.CountLosses(), 0);
    Report(clocks.name, m_stage, m_stage.TakePauses());
}

INSTANTIATE_TEST_SUITE_P(All, ClocksApart,
                         testing::Values(Clocks{"TheServerIsDaysAhead", 72h, 0h, 72h, 0h},
                                         Clocks{"TheServerIsHoursBehindAClientAhead", -5h, 48h, -5h, 48h},
                                         Clocks{"BothJumpForward", 0h, 0h, 24h, 2h},
                                         Clocks{"BothJumpBack", 0h, 0h, -720h, -1h}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
