// SPDX-License-Identifier: Apache-2.0
// The value-tree client that a client of the server makes itself. Nothing is connected: no event loop runs.
#include <platform/vtclient/vtclientcenter.h>

#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <memory>

namespace {

using treeaccess::Text;

class OwnVtClient : public ServerClientTest {
  protected:
    bool Connect() { return m_client.ConnectToServer(Text("127.0.0.1"), 7450); }
};

TEST_F(OwnVtClient, IsMadeAndUsed) {
    EXPECT_TRUE(Connect());
    IVtClient* const own = m_client.GetVtClientToUse();
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->GetServerAddress(), Text("127.0.0.1"));
    EXPECT_EQ(own->GetServerPort(), 7450);
    EXPECT_EQ(own->CountObservers(), 1);
    EXPECT_FALSE(m_client.IsConnectedToServer());
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(OwnVtClient, GoesOnceDisconnected) {
    ASSERT_TRUE(Connect());
    RecordingObserver observer;
    m_client.GetVtClientToUse()->AddObserver(&observer);
    m_client.DisconnectFromServer();
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    m_client.DisconnectFromServer();
}

TEST_F(OwnVtClient, GoesWhenAnotherServerIsConnected) {
    ASSERT_TRUE(Connect());
    RecordingObserver observer;
    m_client.GetVtClientToUse()->AddObserver(&observer);
    EXPECT_TRUE(m_client.ConnectToServer(Text("mcs://localhost"), 7451));
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_client.GetVtClientToUse()->GetServerPort(), 7451);
}

TEST_F(OwnVtClient, GoesWhenTheNextAddressIsRefused) {
    ASSERT_TRUE(Connect());
    RecordingObserver observer;
    m_client.GetVtClientToUse()->AddObserver(&observer);
    const TraceRecorder recorder;
    EXPECT_FALSE(m_client.ConnectToServer(Text("ftp://x"), 81));
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
}

TEST_F(OwnVtClient, StaysWhileAnAdoptedOneIsUsed) {
    ASSERT_TRUE(Connect());
    IVtClient* const own = m_client.GetVtClientToUse();
    RecordingObserver observer;
    own->AddObserver(&observer);
    Adopt();
    EXPECT_EQ(observer.Codes(), Codes{});
    EXPECT_EQ(own->CountObservers(), 1);
    m_client.DisconnectFromServer();
    EXPECT_EQ(observer.Codes(), Codes{18});
}

TEST_F(OwnVtClient, GoesWithTheClient) {
    RecordingObserver observer;
    {
        MultiChannelServerClient client;
        ASSERT_TRUE(client.ConnectToServer(Text("127.0.0.1"), 7450));
        client.GetVtClientToUse()->AddObserver(&observer);
    }
    EXPECT_EQ(observer.Codes(), Codes{18});
}

TEST_F(OwnVtClient, IsForgottenWhenSomebodyElseDestroysIt) {
    ASSERT_TRUE(Connect());
    VtClientCenter::Instance().DestroyVtClient(m_client.GetVtClientToUse());
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    m_client.DisconnectFromServer();
}

TEST_F(OwnVtClient, GoesForItsSourceTooWhenACopyIsDeleted) {
    ASSERT_TRUE(Connect());
    RecordingObserver observer;
    m_client.GetVtClientToUse()->AddObserver(&observer);
    std::make_unique<MultiChannelServerClient>(m_client).reset();
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
}

TEST_F(OwnVtClient, GoesWhenItsOwnerIsAssignedTo) {
    ASSERT_TRUE(Connect());
    RecordingObserver observer;
    m_client.GetVtClientToUse()->AddObserver(&observer);
    const MultiChannelServerClient other;
    static_cast<MultiChannelServerClient&>(m_client) = other;
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
}

/// Connects \a client again when what it made goes, and notes the end of what it makes then.
class Reconnecting {
  public:
    explicit Reconnecting(MultiChannelServerClient& client) {
        m_observer.React([this, &client](Observable* /*source*/, TChangeCode /*code*/) {
            ASSERT_TRUE(client.ConnectToServer(Text("127.0.0.1"), 7452));
            client.GetVtClientToUse()->AddObserver(&m_next);
        });
        client.GetVtClientToUse()->AddObserver(&m_observer);
    }
    std::vector<TChangeCode> ToldByTheNext() const { return m_next.Codes(); }

  private:
    RecordingObserver m_observer;
    RecordingObserver m_next;
};

TEST_F(OwnVtClient, OneMadeWhenItGoesDoesNotHoldWhereTheOuterCallMakesAnother) {
    ASSERT_TRUE(Connect());
    const Reconnecting reconnecting(m_client);
    EXPECT_TRUE(m_client.ConnectToServer(Text("127.0.0.1"), 7451));
    EXPECT_EQ(m_client.GetVtClientToUse()->GetServerPort(), 7451);
    EXPECT_EQ(reconnecting.ToldByTheNext(), Codes{18});
}

TEST_F(OwnVtClient, OneMadeWhenItGoesWithTheClientGoesToo) {
    auto client = std::make_unique<MultiChannelServerClient>();
    ASSERT_TRUE(client->ConnectToServer(Text("127.0.0.1"), 7450));
    const Reconnecting reconnecting(*client);
    client.reset();
    EXPECT_EQ(reconnecting.ToldByTheNext(), Codes{18});
}

TEST_F(OwnVtClient, OneMadeWhenItGoesDoesNotHoldWhereItsOwnerIsAssignedTo) {
    ASSERT_TRUE(Connect());
    const Reconnecting reconnecting(m_client);
    const MultiChannelServerClient other;
    static_cast<MultiChannelServerClient&>(m_client) = other;
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(reconnecting.ToldByTheNext(), Codes{18});
}

TEST_F(OwnVtClient, AReplacementForItGivenToAClientThatIsGoingIsLetGoOf) {
    auto client = std::make_unique<MultiChannelServerClient>();
    ASSERT_TRUE(client->ConnectToServer(Text("127.0.0.1"), 7450));
    MultiChannelServerClient* const going = client.get();
    RecordingObserver observer(
        [this, going](Observable* /*source*/, TChangeCode /*code*/) { going->UseVtClient(&m_vtClient); });
    client->GetVtClientToUse()->AddObserver(&observer);
    client.reset();
    EXPECT_EQ(observer.Codes(), Codes{18});
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
}

}  // namespace
