// SPDX-License-Identifier: Apache-2.0
// A client and its server with a bad network between them.
#include <tests/platform/vtclient/network.h>
#include <tests/support/recordingobserver.h>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using testing::HasSubstr;
using values::ValueNumeric;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

TEST_F(Network, WithoutFaultsTheProxySwallowsNothing) {
    ListenBehindTheNetwork();
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    for (int i = 0; i < 500; ++i) {
        m_device.Step();
        m_operator.Step();
        RunTurns(1);
    }
    EXPECT_TRUE(ComeToRest(client));
    EXPECT_EQ(m_proxy->CountAccepted(), 1);
}

/// How bytes are torn apart.
struct Tearing {
    const char* name;
    int toServer;
    int toClient;
};

class Tearings : public Network, public testing::WithParamInterface<Tearing> {};

TEST_P(Tearings, AreMended) {
    ListenBehindTheNetwork();
    Faults faults;
    faults.chunk = GetParam().toServer;
    m_proxy->SetFaults(EDirection::ToServer, faults);
    faults.chunk = GetParam().toClient;
    m_proxy->SetFaults(EDirection::ToClient, faults);
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    for (int i = 0; i < 200; ++i) {
        m_device.Step();
        m_operator.Step();
        RunTurns(1);
    }
    EXPECT_TRUE(ComeToRest(client));
    EXPECT_EQ(m_proxy->CountAccepted(), 1) << "nothing was lost";
}

INSTANTIATE_TEST_SUITE_P(Bytes, Tearings,
                         testing::Values(Tearing{"EachByteAloneToTheServer", 1, 0},
                                         Tearing{"EachByteAloneToTheClient", 0, 1},
                                         Tearing{"EachByteAloneBothWays", 1, 1},
                                         Tearing{"ThreeAndSevenAtATime", 3, 7}),
                         [](const auto& row) { return std::string(row.param.name); });

class Stalls : public Network, public testing::WithParamInterface<EDirection> {};

TEST_P(Stalls, AreSatOutAndMadeUpFor) {
    ListenBehindTheNetwork();
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    Faults stalled;
    stalled.isStalled = true;
    m_proxy->SetFaults(GetParam(), stalled);
    for (int i = 0; i < 5000; ++i) {
        m_device.Step();
        m_operator.Step();
        if (i % 10 == 0) RunTurns(1);
    }
    EXPECT_TRUE(client->IsConnected());
    EXPECT_FALSE(AreAlike());
    m_proxy->SetFaults(GetParam(), Faults());
    EXPECT_TRUE(ComeToRest(client));
    EXPECT_EQ(m_proxy->CountAccepted(), 1);
}

INSTANTIATE_TEST_SUITE_P(Network, Stalls, testing::Values(EDirection::ToServer, EDirection::ToClient),
                         [](const auto& row) {
                             return row.param == EDirection::ToServer ? "ToTheServer" : "ToTheClient";
                         });

TEST_F(Network, ALongWayIsMeasured) {
    ListenBehindTheNetwork();
    Faults delayed;
    delayed.delay = 20;
    m_proxy->SetFaults(delayed);
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    for (int i = 0; i < 20; ++i) {
        m_device.Step();
        m_operator.Step();
        RunTurns(1);
    }
    EXPECT_TRUE(ComeToRest(client));
    EXPECT_TRUE(WaitUntil([client] { return client->GetLatency() >= 40ms; }));
}

class Cuts : public Network, public testing::WithParamInterface<EDirection> {};

// Once uncut to see how many bytes there are, then cut at each of them in turn (at some, once there are
// many).
TEST_P(Cuts, AtAnyByteOfAConversationAreMended) {
    ListenBehindTheNetwork();
    const auto converse = [this](IVtClient* client) {
        const bool isUp = WaitUntil([client] { return client->AreAllTicsEstablished(); });
        for (int i = 0; i < 5 && isUp; ++i) {
            m_device.Step();
            m_operator.Step();
            RunTurns(1);
        }
        return ComeToRest(client);
    };
    IVtClient* client = ConnectThroughTheNetwork();
    ASSERT_TRUE(converse(client));
    const qint64 size = m_proxy->CountBytes(GetParam());
    ASSERT_GT(size, 100);
    int step = 1;
    for (qint64 position = 0; position < size; position += step) {
        if (position > 300) step = 13;
        Destroy(client);
        m_proxy->CutNext(GetParam(), position);
        client = ConnectThroughTheNetwork();
        ASSERT_TRUE(converse(client)) << "cut after byte " << position;
    }
}

INSTANTIATE_TEST_SUITE_P(Network, Cuts, testing::Values(EDirection::ToServer, EDirection::ToClient),
                         [](const auto& row) {
                             return row.param == EDirection::ToServer ? "ToTheServer" : "ToTheClient";
                         });

TEST_F(Network, AConnectionThatIsOnlyHalfThereIsNoticedByBothEndsAndReplaced) {
    m_serverOptions.pingInterval = m_clientOptions.pingInterval = 30ms;
    m_serverOptions.deadAfter = m_clientOptions.deadAfter = 150ms;
    ListenBehindTheNetwork();
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    RecordingObserver observer;
    client->AddObserver(&observer);
    auto* const mirrored = Find<ValueNumeric<int>>("/L/n0");
    Faults lost;
    lost.isLost = true;
    m_proxy->SetFaults(lost);
    EXPECT_TRUE(WaitUntil([client] { return !client->IsConnected(); }));
    EXPECT_THAT(client->GetLastError().toStdString(), HasSubstr("nothing heard for 1"));
    EXPECT_EQ(mirrored->GetState(), values::Stale);
    EXPECT_EQ(observer.Codes(), (std::vector<TChangeCode>{17, 15}));
    EXPECT_TRUE(WaitUntil([this] { return m_server.GetPeers().empty(); }));
    EXPECT_THAT(ServerLines().front().toStdString(), HasSubstr("nothing heard for "));
    m_proxy->SetFaults(Faults());
    m_proxy->Cut();
    EXPECT_TRUE(ComeToRest(client));
    EXPECT_EQ(Find<ValueNumeric<int>>("/L/n0"), mirrored);
    client->DeleteObserver(&observer);
}

TEST_F(Network, PingsKeepAnIdleConnectionUp) {
    m_serverOptions.pingInterval = m_clientOptions.pingInterval = 10ms;
    m_serverOptions.deadAfter = m_clientOptions.deadAfter = 1000ms;
    ListenBehindTheNetwork();
    IVtClient* const client = ConnectThroughTheNetwork();
    ASSERT_TRUE(ComeToRest(client));
    const qint64 before = m_proxy->CountBytes(EDirection::ToClient);
    EXPECT_TRUE(
        WaitUntil([this, before] { return m_proxy->CountBytes(EDirection::ToClient) > before + 200; }));
    EXPECT_EQ(m_proxy->CountAccepted(), 1);
    EXPECT_GT(client->GetLatency(), 0us);
}

TEST_F(Network, AServerThatAcceptsAndNeverAnswersIsGivenUp) {
    m_clientOptions.connectTimeout = 50ms;
    ListenBehindTheNetwork();
    Faults lost;
    lost.isLost = true;
    m_proxy->SetFaults(EDirection::ToClient, lost);
    IVtClient* const client = ConnectThroughTheNetwork();
    EXPECT_TRUE(WaitUntil([client] { return !client->GetLastError().isEmpty(); }));
    EXPECT_EQ(client->GetLastError(), S("no welcome within 50 ms"));
    m_proxy->SetFaults(Faults());
    EXPECT_TRUE(ComeToRest(client));
}

}  // namespace
