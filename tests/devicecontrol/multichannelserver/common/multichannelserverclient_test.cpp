// SPDX-License-Identifier: Apache-2.0
// A client and the value-tree client that it uses: whether it is connected, and what it tells of that.
#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <gmock/gmock.h>

#include <memory>

namespace {

using testing::Contains;

class MultiChannelServerClientTest : public ServerClientTest {};

TEST_F(MultiChannelServerClientTest, StartsWithNothing) {
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_FALSE(m_client.IsConnectedToServer());
    EXPECT_FALSE(m_client.IsMCSControlTreeConnected());
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_EQ(m_client.GetUniqueMpxORVName(), QString());
    for (const unsigned segment : {1U, 2U, 4U, 8U, 16U, 31U})
        EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(Segments(segment))) << segment;
}

TEST_F(MultiChannelServerClientTest, TheChangeCodesAreTheDocumentedNumbers) {
    EXPECT_EQ(serverclientcode::ConnectedToServer, 5019);
    EXPECT_EQ(serverclientcode::DisconnectedFromServer, 5020);
    EXPECT_EQ(serverclientcode::ControlTreeConnected, 5021);
    EXPECT_EQ(serverclientcode::ControlTreeDisconnected, 5022);
    EXPECT_EQ(serverclientcode::MpxORVConnected, 5023);
    EXPECT_EQ(serverclientcode::MpxORVDisconnected, 5024);
    EXPECT_EQ(serverclientcode::AllTicsEstablished, 5025);
}

TEST_F(MultiChannelServerClientTest, ObservesItself) {
    const MultiChannelServerClient client;
    EXPECT_EQ(client.CountObservers(), 1);
}

TEST_F(MultiChannelServerClientTest, TheUniqueNameIsKeptAsItIs) {
    m_client.SetUniqueMpxORVName(Text(" /odd, name "));
    EXPECT_EQ(m_client.GetUniqueMpxORVName(), Text(" /odd, name "));
    m_client.SetUniqueMpxORVName(QString());
    EXPECT_EQ(m_client.GetUniqueMpxORVName(), QString());
}

TEST_F(MultiChannelServerClientTest, ARefusedAddressIsTracedAndLeavesNoClientInUse) {
    Adopt();
    const TraceRecorder recorder;
    EXPECT_FALSE(m_client.ConnectToServer(Text("ftp://x"), 81));
    EXPECT_THAT(
        recorder.Messages(),
        Contains(Text("MultiChannelServerClient::ConnectToServer: CreateVtClient(\"ftp://x\", 81) failed")));
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
}

TEST_F(MultiChannelServerClientTest, ARefusedAddressIsTracedInFullThoughItIsPassedOnAsLatin1) {
    const TraceRecorder recorder;
    EXPECT_FALSE(m_client.ConnectToServer(Text("ftp://\xc3\xa4\xe2\x82\xac"), -1));
    EXPECT_THAT(recorder.Messages(),
                Contains(Text("MultiChannelServerClient::ConnectToServer: CreateVtClient(\"ftp://"
                              "\xc3\xa4\xe2\x82\xac\", -1) failed")));
}

TEST_F(MultiChannelServerClientTest, AHostBeyondLatin1IsRefusedWithTheReasonAndTakenInItsAceForm) {
    const TraceRecorder recorder;
    EXPECT_FALSE(m_client.ConnectToServer(Text("\xcf\x80.example"), 7450));
    EXPECT_THAT(
        recorder.Messages(),
        testing::ElementsAre(
            testing::ResultOf([](const QString& text) { return text.contains(Text("ACE form")); }, true),
            Text("MultiChannelServerClient::ConnectToServer: CreateVtClient(\"\xcf\x80.example\", "
                 "7450) failed")));
    EXPECT_TRUE(m_client.ConnectToServer(Text("xn--1xa.example"), 7450));
}

TEST_F(MultiChannelServerClientTest, AHostBeyondAsciiIsPassedOnAsItIs) {
    EXPECT_TRUE(m_client.ConnectToServer(Text("t\xc3\xbcrm.example"), 7450));
    EXPECT_EQ(m_client.GetVtClientToUse()->GetServerAddress(), Text("t\xc3\xbcrm.example"));
}

TEST_F(MultiChannelServerClientTest, ARefusedAddressIsNotTracedUnlessFailuresAre) {
    const TraceRecorder recorder(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_FALSE(m_client.ConnectToServer(Text("ftp://x"), 81));
    EXPECT_THAT(recorder.Messages(),
                testing::Not(Contains(testing::ResultOf(
                    [](const QString& message) { return message.contains(QLatin1String("ConnectToServer")); },
                    true))));
}

TEST_F(MultiChannelServerClientTest, IsConnectedAsTheAdoptedClientSays) {
    Adopt();
    EXPECT_EQ(m_client.GetVtClientToUse(), &m_vtClient);
    EXPECT_FALSE(m_client.IsConnectedToServer());
    m_vtClient.SetConnected(true);
    EXPECT_TRUE(m_client.IsConnectedToServer());
    m_client.DisconnectFromServer();
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_FALSE(m_client.IsConnectedToServer());
}

TEST_F(MultiChannelServerClientTest, ObservesTheAdoptedClientUntilItUsesAnother) {
    FakeVtClient other;
    Adopt();
    EXPECT_EQ(m_vtClient.CountObservers(), 1);
    m_client.UseVtClient(&other);
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
    EXPECT_EQ(other.CountObservers(), 1);
    m_client.UseVtClient(nullptr);
    EXPECT_EQ(other.CountObservers(), 0);
}

TEST_F(MultiChannelServerClientTest, AdoptingTheSameClientAgainKeepsObservingItOnce) {
    Adopt();
    Adopt();
    EXPECT_EQ(m_vtClient.CountObservers(), 1);
    EXPECT_EQ(m_client.GetVtClientToUse(), &m_vtClient);
}

TEST_F(MultiChannelServerClientTest, AdoptingTellsNothingBeforeTheAdoptedClientDoes) {
    m_vtClient.SetConnected(true);
    Adopt();
    EXPECT_EQ(m_observer.Codes(), Codes{});
    m_vtClient.Tell(connectioncode::Connected);
    EXPECT_EQ(m_observer.Codes(), Codes{5019});
}

struct ServerChange {
    const char* name;
    bool wasTold;  ///< that the client is connected
    bool isConnected;
    TChangeCode told;
    std::vector<TChangeCode> expected;
};

class ServerConnection : public MultiChannelServerClientTest,
                         public testing::WithParamInterface<ServerChange> {};

TEST_P(ServerConnection, IsToldOnAChangeOnly) {
    Adopt();
    m_vtClient.SetConnected(GetParam().wasTold);
    m_vtClient.Tell(connectioncode::Connected);
    m_observer.Clear();
    m_vtClient.SetConnected(GetParam().isConnected);
    m_vtClient.Tell(GetParam().told);
    EXPECT_EQ(m_observer.Codes(), GetParam().expected);
    m_vtClient.Tell(GetParam().told);
    m_vtClient.Tell(GetParam().told);
    const bool isAllEstablished = GetParam().told == 15 && GetParam().isConnected;
    EXPECT_EQ(m_observer.Events().size(), GetParam().expected.size() + (isAllEstablished ? 2 : 0));
}

INSTANTIATE_TEST_SUITE_P(Changes, ServerConnection,
                         testing::Values(ServerChange{"ConnectedWith16", false, true, 16, {5019}},
                                         ServerChange{"ConnectedWith17", false, true, 17, {5019}},
                                         ServerChange{
                                             "ConnectedWith15AfterAllTics", false, true, 15, {5025, 5019}},
                                         ServerChange{"DisconnectedWith17", true, false, 17, {5020}},
                                         ServerChange{"DisconnectedWith16", true, false, 16, {5020}},
                                         ServerChange{"DisconnectedWith15", true, false, 15, {5020}},
                                         ServerChange{"StillConnectedWith16", true, true, 16, {}},
                                         ServerChange{"StillDisconnectedWith17", false, false, 17, {}},
                                         ServerChange{"StillDisconnectedWith15", false, false, 15, {}},
                                         ServerChange{"NothingWithAStateChange", false, true, 2, {}},
                                         ServerChange{"NothingWithAContentChange", false, true, 3, {}}),
                         [](const auto& row) { return row.param.name; });

TEST_F(MultiChannelServerClientTest, AllTicsEstablishedIsToldEveryTime) {
    AdoptWithSegments(StatusSegment);
    m_vtClient.SetConnected(true);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), Codes{5019});
    m_vtClient.Tics().front()->SetEstablished(true);
    m_observer.Clear();
    m_vtClient.Tell(connectioncode::TicsChanged);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), (Codes{5025, 5021, 5025}));
}

TEST_F(MultiChannelServerClientTest, AllThreeCodesComeInTheirOrder) {
    AdoptWithSegments(StatusSegment);
    m_vtClient.SetConnected(true);
    m_vtClient.Tics().front()->SetEstablished(true);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), (Codes{5025, 5019, 5021}));
}

TEST_F(MultiChannelServerClientTest, TheCodesComeFromTheClientAndLeaveNobodyOut) {
    Adopt();
    m_vtClient.SetConnected(true);
    m_vtClient.Tell(connectioncode::Connected);
    ASSERT_EQ(m_observer.Events().size(), 1U);
    EXPECT_EQ(m_observer.Events().front().first, static_cast<Observable*>(&m_client));
}

TEST_F(MultiChannelServerClientTest, OnlyTheClientInUseCounts) {
    FakeVtClient stranger;
    stranger.SetConnected(true);
    Adopt();
    m_vtClient.SetConnected(true);
    for (Observable* source : {static_cast<Observable*>(&stranger), static_cast<Observable*>(&m_client),
                               static_cast<Observable*>(nullptr)})
        for (const TChangeCode code : {15, 16, 17, 18})
            m_client.Update(source, code);
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_EQ(m_client.GetVtClientToUse(), &m_vtClient);
}

TEST_F(MultiChannelServerClientTest, WithoutAClientInUseNothingCounts) {
    for (const TChangeCode code : {15, 16, 17, 18})
        m_client.Update(nullptr, code);
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(MultiChannelServerClientTest, TheTicsOfSegmentsThemselvesCountForNothing) {
    AdoptWithSegments(StatusSegment);
    FakeVtTic* const tic = m_vtClient.Tics().front();
    EXPECT_EQ(tic->CountObservers(), 1);
    m_vtClient.SetConnected(true);
    tic->Establish();
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(MultiChannelServerClientTest, AClientThatGoesIsForgottenWithAllItHad) {
    auto vtClient = std::make_unique<FakeVtClient>();
    m_client.UseVtClient(vtClient.get());
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local/MCS"), StatusSegment));
    ASSERT_NE(m_client.ConnectStaticMpxORV(Text("/Local/One"), Text("One")), nullptr);
    vtClient->EstablishAll();
    m_observer.Clear();
    vtClient.reset();
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
    EXPECT_EQ(m_observer.Codes(), Codes{5022});
    EXPECT_EQ(NodeAt("/Local/One"), nullptr);  // the handle is gone
}

TEST_F(MultiChannelServerClientTest, TellsNothingOfTheServerWhenItLetsGoOfTheClientInUse) {
    // Deliberate: the code stored last stays, and is compared with what the next client says.
    FakeVtClient next;
    Adopt();
    m_vtClient.SetConnected(true);
    m_vtClient.Tell(connectioncode::Connected);
    m_observer.Clear();
    m_client.DisconnectFromServer();
    EXPECT_EQ(m_observer.Codes(), Codes{});
    next.SetConnected(true);
    m_client.UseVtClient(&next);
    next.Tell(connectioncode::Connected);
    EXPECT_EQ(m_observer.Codes(), Codes{});
    next.SetConnected(false);
    next.Tell(connectioncode::Disconnected);
    EXPECT_EQ(m_observer.Codes(), Codes{5020});
}

TEST_F(MultiChannelServerClientTest, IsNoObserverAnyMoreOnceItIsGone) {
    auto client = std::make_unique<MultiChannelServerClient>();
    client->UseVtClient(&m_vtClient);
    ASSERT_TRUE(client->ConnectToMCSControlTree(Text("/Local/MCS"), AllSegments));
    client.reset();
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
    ASSERT_EQ(m_vtClient.Tics().size(), 5U);  // they stay with the adopted client, which is not asked
    for (FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_EQ(tic->CountObservers(), 0);
    m_vtClient.EstablishAll();
}

TEST_F(MultiChannelServerClientTest, ItsObserversHearOfTheControlTreeWhenItGoes) {
    auto client = std::make_unique<MultiChannelServerClient>();
    client->UseVtClient(&m_vtClient);
    ASSERT_TRUE(client->ConnectToMCSControlTree(Text("/Local/MCS"), StatusSegment));
    m_vtClient.EstablishAll();
    RecordingObserver observer;
    client->AddObserver(&observer);
    client.reset();
    EXPECT_EQ(observer.Codes(), Codes{5022});
}

}  // namespace
