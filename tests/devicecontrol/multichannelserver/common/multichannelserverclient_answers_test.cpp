// SPDX-License-Identifier: Apache-2.0
// What observers of a client, of its tics and of the tree may do in answer to what they are told.
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace {

using treeaccess::Text;

class Answers : public ServerClientTest {
  protected:
    /// Does \a answer once, when the client tells \a code.
    void Answer(TChangeCode code, std::function<void()> answer) {
        m_observer.React([this, code, answer = std::move(answer)](Observable* /*source*/, TChangeCode told) {
            if (told == code && m_observer.Count(code) == 1) answer();
        });
    }
    void ExpectLetGo(const FakeVtClient& vtClient) {
        EXPECT_EQ(vtClient.CountObservers(), 0);
        for (const FakeVtTic* tic : vtClient.Tics())
            EXPECT_EQ(tic->CountObservers(), 0);
    }
};

TEST_F(Answers, AnObserverMayDisconnectWhenItHearsOfTheServer) {
    AdoptWithSegments(StatusSegment);
    Answer(5025, [this] { m_client.DisconnectFromServer(); });
    m_vtClient.SetConnected(true);
    m_vtClient.Tics().front()->SetEstablished(true);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), Codes{5025});
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    ExpectLetGo(m_vtClient);
}

TEST_F(Answers, AnObserverMayDropTheControlTreeWhenItIsConnected) {
    AdoptWithSegments(AllSegments);
    Answer(5021, [this] { m_client.DisconnectFromMCSControlTree(true); });
    m_vtClient.EstablishAll();
    EXPECT_EQ(m_observer.Codes(), (Codes{5019, 5025, 5021, 5022}));
    EXPECT_TRUE(m_vtClient.Tics().empty());
}

TEST_F(Answers, TheEndOfTheControlTreeIsToldWhenAllOfItIsUndone) {
    // Also by a value-tree client that tells at once what it was asked for.
    AdoptWithSegments(StatusSegment | ConfigSegment);
    PutNode("/Local/MCS/Config");
    m_vtClient.EstablishAll();
    m_vtClient.OnReleaseNode([this] {
        m_vtClient.Tics().front()->Establish(false);
        m_vtClient.Tell(connectioncode::TicsChanged);
    });
    Answer(5022, [this] {
        EXPECT_TRUE(m_vtClient.Tics().empty());
        EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
        EXPECT_EQ(NodeAt("/Local/MCS"), nullptr);
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/New"), StatusSegment));
    });
    m_client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(m_observer.Codes(), (Codes{5019, 5025, 5021, 5022}));
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/New"));
    m_vtClient.EstablishAll();
    EXPECT_TRUE(m_client.IsMCSControlTreeConnected());
    EXPECT_EQ(m_observer.Count(5021), 2);
}

TEST_F(Answers, AnObserverMayDeleteAHandleWhoseConnectionItHearsOf) {
    Adopt();
    m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    Answer(5023, [this] { m_client.DisconnectAllMpxORVs(); });
    m_vtClient.Tics().front()->Establish();
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

TEST_F(Answers, AHandleDeletedWhileItConnectsIsNotReturned) {
    AdoptWithSegments(StaticMpxORVsSegment);
    Answer(5023, [this] { m_client.DisconnectAllMpxORVs(); });
    EXPECT_EQ(m_client.ConnectStaticMpxORV(QString(), Text("One")), nullptr);
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
}

TEST_F(Answers, AHandleDeletedWhenItsNodeComesIsNotReturned) {
    Adopt();
    values::Node* const parent = PutNode("/L");
    RecordingObserver treeObserver([this](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ChildrenAdded) m_client.DisconnectAllMpxORVs();
    });
    parent->AddObserver(&treeObserver);
    EXPECT_EQ(m_client.ConnectStaticMpxORV(Text("/L/One"), Text("One")), nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(m_observer.Codes(), Codes{});
    parent->DeleteObserver(&treeObserver);
}

TEST_F(Answers, AHandleDeletedWhenItsTicComesTakesTheTicAlong) {
    Adopt();
    m_vtClient.OnAddTic([this] { m_client.DisconnectAllMpxORVs(); });
    EXPECT_EQ(m_client.ConnectStaticMpxORV(Text("/L/One"), Text("One")), nullptr);
    EXPECT_TRUE(m_vtClient.Tics().empty());
}

TEST_F(Answers, AHandleWhoseTicComesFromAClientThatIsUsedNoMoreGoesWithout) {
    const TraceRecorder recorder;
    FakeVtClient other;
    Adopt();
    m_vtClient.OnAddTic([&] { m_client.UseVtClient(&other); });
    ASSERT_NE(m_client.ConnectStaticMpxORV(Text("/L/One"), Text("One")), nullptr);
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(recorder.Messages(), Calls{Text("m_pControlTic")});
    m_client.UseVtClient(nullptr);
}

TEST_F(Answers, TheValueTreeClientMayGoWhenAHandleReleasesItsNode) {
    auto vtClient = std::make_unique<FakeVtClient>();
    FakeVtClient other;
    m_client.UseVtClient(vtClient.get());
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    vtClient->OnReleaseNode([&] {
        m_client.UseVtClient(&other);
        vtClient.reset();
    });
    delete handle;
    EXPECT_EQ(vtClient, nullptr);
    EXPECT_EQ(other.Calls(), Calls{});
    EXPECT_EQ(NodeAt("/A"), nullptr);
    m_client.UseVtClient(nullptr);
}

TEST_F(Answers, NobodyHearsOfTheEndOfAHandleThatIsDeleted) {
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_vtClient.EstablishAll();
    m_observer.Clear();
    m_vtClient.OnReleaseNode([this] { m_vtClient.Tics().front()->Establish(false); });
    delete handle;
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_TRUE(m_vtClient.Tics().empty());
}

TEST_F(Answers, TheClientMayGoWhenAHandleReleasesItsNode) {
    auto client = std::make_unique<MultiChannelServerClient>();
    client->UseVtClient(&m_vtClient);
    MpxORVHandle* const handle = client->ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_vtClient.OnReleaseNode([&] { client.reset(); });
    delete handle;
    EXPECT_EQ(client, nullptr);
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

TEST_F(Answers, AHandleMayGoWhenItsTicIsRemovedByItsCopy) {
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    auto copy = std::make_unique<MpxORVHandle>(*handle);
    m_vtClient.OnReleaseNode([&copy] { copy.reset(); });
    delete handle;
    EXPECT_EQ(copy, nullptr);
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

TEST_F(Answers, AHandleDeletedWhenItIsDisconnectedIsNotTouchedAnyMore) {
    Adopt();
    auto* const handle = new OpenedHandle(m_client, true);
    handle->ConnectMpxORVControlTreeRemote(Text("/A"), Text("/R"), Text("One"), true);
    m_vtClient.OnReleaseNode([handle] { delete handle; });
    handle->DisconnectMpxORVControlTree();
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

TEST_F(Answers, AHandleDeletedWhenItsSwitchesComeHasNoPolicies) {
    Adopt();
    MpxORVHandle* handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    values::Node* const node = NodeAt("/A");
    RecordingObserver treeObserver([&](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ChildrenAdded) delete std::exchange(handle, nullptr);
    });
    node->AddObserver(&treeObserver);
    MCSPolicySet& policies = handle->GetPolicySet();
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(policies.begin(), policies.end());
    EXPECT_EQ(policies.GetParentNodeInTree(), nullptr);
}

TEST_F(Answers, DisconnectingWhenATicComesEndsTheRequest) {
    Adopt();
    m_vtClient.OnAddTic([this] {
        if (m_vtClient.Tics().size() == 2) m_client.DisconnectFromMCSControlTree(false);
    });
    EXPECT_FALSE(m_client.ConnectToMCSControlTree(Text("/L"), AllSegments));
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
}

TEST_F(Answers, ConnectingOtherSegmentsWhenATicComesHolds) {
    Adopt();
    m_vtClient.OnAddTic([this] {
        m_vtClient.OnAddTic(nullptr);
        m_client.DisconnectFromMCSControlTree(false);
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/New"), AllSegments));
    });
    EXPECT_FALSE(m_client.ConnectToMCSControlTree(Text("/L"), AllSegments));
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/New"));
    EXPECT_EQ(m_vtClient.Tics().size(), 5U);
    for (const FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_TRUE(tic->GetLocalPath().startsWith(Text("/New/")));
}

TEST_F(Answers, DisconnectingTwiceAtOnceRemovesEveryTicOnce) {
    AdoptWithSegments(AllSegments);
    PutNode("/Local/MCS/Command");
    PutNode("/Local/MCS/Config");
    m_vtClient.ClearCalls();
    m_vtClient.OnReleaseNode([this] { m_client.DisconnectFromMCSControlTree(false); });
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(
        std::count(m_vtClient.Calls().begin(), m_vtClient.Calls().end(), Text("RemoveTic of a stranger")), 0);
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
}

TEST_F(Answers, LettingGoOfTheClientInTheMiddleOfADisconnectionHolds) {
    AdoptWithSegments(AllSegments);
    PutNode("/Local/MCS/Command");
    m_vtClient.OnReleaseNode([this] { m_client.UseVtClient(nullptr); });
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(m_vtClient.Tics().size(), 5U);
    ExpectLetGo(m_vtClient);
}

TEST_F(Answers, ConnectingAnewWhenTheLocalTreeGoesHolds) {
    AdoptWithSegments(StatusSegment);
    PutNode("/Local/MCS");
    RecordingObserver treeObserver([this](Observable* /*source*/, TChangeCode code) {
        if (code != changecode::GoingAway) return;
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/New"), ConfigSegment));
    });
    NodeAt("/Local/MCS")->AddObserver(&treeObserver);
    m_client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/New"));
    EXPECT_TRUE(m_client.AreMCSControlTreeSegmentsRequested(ConfigSegment));
}

TEST_F(Answers, OfTwoClientsAskedForAtOnceTheOuterCallHolds) {
    FakeVtClient outer;
    FakeVtClient inner;
    AdoptWithSegments(StatusSegment);
    m_vtClient.EstablishAll();
    Answer(5022, [&] {
        m_client.UseVtClient(&inner);
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/Inner"), StatusSegment));
    });
    m_client.UseVtClient(&outer);
    EXPECT_EQ(m_client.GetVtClientToUse(), &outer);
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    ExpectLetGo(inner);
    ExpectLetGo(m_vtClient);
    m_client.UseVtClient(nullptr);
}

TEST_F(Answers, AClientThatGoesWhileItIsAdoptedIsNotUsed) {
    auto next = std::make_unique<FakeVtClient>();
    AdoptWithSegments(StatusSegment);
    ASSERT_NE(m_client.ConnectStaticMpxORV(Text("/A"), Text("One")), nullptr);
    m_vtClient.EstablishAll();
    Answer(5022, [&] { next.reset(); });
    m_client.UseVtClient(next.get());
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(NodeAt("/A"), nullptr) << "handles do not outlive the last client";
    ExpectLetGo(m_vtClient);
}

TEST_F(Answers, AClientAskedForWhenTheHandlesGoDoesNotHold) {
    FakeVtClient inner;
    Adopt();
    ASSERT_NE(m_client.ConnectStaticMpxORV(Text("/A"), Text("One")), nullptr);
    RecordingObserver treeObserver([&](Observable* /*source*/, TChangeCode code) {
        if (code != changecode::GoingAway) return;
        m_client.UseVtClient(&inner);
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/Inner"), StatusSegment));
        EXPECT_NE(m_client.ConnectStaticMpxORV(Text("/B"), Text("Two")), nullptr);
    });
    NodeAt("/A")->AddObserver(&treeObserver);
    m_client.UseVtClient(nullptr);
    EXPECT_EQ(treeObserver.Count(changecode::GoingAway), 1);
    EXPECT_EQ(m_client.GetVtClientToUse(), nullptr);
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_EQ(NodeAt("/B"), nullptr);
    ExpectLetGo(inner);
}

TEST_F(Answers, AHandleDeletedWhenItsNodeGoesIsNotToldAnyMore) {
    // The observer is told before the handle, which comes after it.
    values::Node* const node = PutNode("/R/One");
    OpenedHandle* handle = new OpenedHandle(m_client, false);
    RecordingObserver treeObserver([&](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::GoingAway) delete std::exchange(handle, nullptr);
    });
    node->AddObserver(&treeObserver);
    handle->ConnectMpxORVControlTreeLocal(QString(), Text("/R"), Text("One"), false);
    treeaccess::DeleteAt(Text("/R/One"));
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(treeObserver.Count(changecode::GoingAway), 1);
    EXPECT_EQ(NodeAt("/R/One"), nullptr);
}

TEST_F(Answers, AReplacementGivenToAClientThatIsGoingIsLetGoOf) {
    FakeVtClient replacement;
    auto client = std::make_unique<MultiChannelServerClient>();
    client->UseVtClient(&m_vtClient);
    ASSERT_TRUE(client->ConnectToMCSControlTree(Text("/L"), StatusSegment));
    m_vtClient.EstablishAll();
    RecordingObserver observer([&](Observable* source, TChangeCode code) {
        if (code == 5022) static_cast<MultiChannelServerClient*>(source)->UseVtClient(&replacement);
    });
    client->AddObserver(&observer);
    client.reset();
    EXPECT_EQ(observer.Count(5022), 1);
    ExpectLetGo(replacement);
    ExpectLetGo(m_vtClient);
}

/// The codes in answer to which an observer deletes the client itself.
class DeletingTheClient : public ServerClientTest, public testing::WithParamInterface<TChangeCode> {};

TEST_P(DeletingTheClient, IsAllowed) {
    auto client = std::make_unique<MultiChannelServerClient>();
    RecordingObserver observer([&](Observable* /*source*/, TChangeCode code) {
        if (code == GetParam()) client.reset();
    });
    client->AddObserver(&observer);
    client->UseVtClient(&m_vtClient);
    ASSERT_TRUE(client->ConnectToMCSControlTree(Text("/L"), StatusSegment));
    ASSERT_NE(client->ConnectStaticMpxORV(Text("/A"), Text("One")), nullptr);
    m_vtClient.EstablishAll();
    if (client) {
        m_vtClient.Tics().back()->Establish(false);  // the handle's
        m_vtClient.SetConnected(false);
        m_vtClient.Tell(connectioncode::Disconnected);
    }
    if (client) client->UseVtClient(nullptr);
    EXPECT_EQ(client, nullptr);
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
    for (const FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_EQ(tic->CountObservers(), 0);
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Codes, DeletingTheClient, testing::Values(5019, 5020, 5021, 5022, 5023, 5024, 5025),
                         [](const auto& row) { return "On" + std::to_string(row.param); });

}  // namespace
