// SPDX-License-Identifier: Apache-2.0
// Copies of a client, which are shallow on purpose.
#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <memory>
#include <optional>

namespace {

using treeaccess::Text;
using Client = OpenedClient<MultiChannelServerClient>;

enum class Way { Constructed, Assigned };

class Copies : public ServerClientTest, public testing::WithParamInterface<Way> {
  protected:
    std::unique_ptr<Client> Copy() {
        if (GetParam() == Way::Constructed) return std::make_unique<Client>(m_client);
        auto copy = std::make_unique<Client>();
        *copy = m_client;
        return copy;
    }
};

TEST_P(Copies, HoldWhatTheirSourceHolds) {
    AdoptWithSegments(StatusSegment | ConfigSegment);
    m_client.SetUniqueMpxORVName(Text("Mine"));
    m_vtClient.EstablishAll();
    const auto copy = Copy();
    EXPECT_EQ(copy->GetVtClientToUse(), &m_vtClient);
    EXPECT_TRUE(copy->IsConnectedToServer());
    EXPECT_EQ(copy->GetLocalMCSBasePath(), Text("/Local/MCS"));
    EXPECT_TRUE(copy->AreMCSControlTreeSegmentsRequested(StatusSegment));
    EXPECT_FALSE(copy->AreMCSControlTreeSegmentsRequested(CommandSegment));
    EXPECT_TRUE(copy->IsMCSControlTreeConnected());
    EXPECT_EQ(copy->GetUniqueMpxORVName(), Text("Mine"));
}

TEST_P(Copies, ObserveNothingAndHaveNoObservers) {
    AdoptWithSegments(StatusSegment);
    const auto copy = Copy();
    EXPECT_EQ(copy->CountObservers(), 0);
    EXPECT_EQ(m_vtClient.CountObservers(), 1);
    EXPECT_EQ(m_vtClient.Tics().front()->CountObservers(), 1);
    RecordingObserver observer;
    copy->AddObserver(&observer);
    m_vtClient.EstablishAll();
    EXPECT_EQ(observer.Codes(), Codes{});
    EXPECT_NE(m_observer.Codes(), Codes{});
}

TEST_P(Copies, KnowWhatWasToldLast) {
    Adopt();
    m_vtClient.SetConnected(true);
    m_vtClient.Tell(connectioncode::Connected);
    const auto copy = Copy();
    RecordingObserver observer;
    copy->AddObserver(&observer);
    copy->Update(&m_vtClient, connectioncode::Connected);
    EXPECT_EQ(observer.Codes(), Codes{});
    m_vtClient.SetConnected(false);
    copy->Update(&m_vtClient, connectioncode::Disconnected);
    EXPECT_EQ(observer.Codes(), Codes{5020});
}

TEST_P(Copies, LeaveTheHandlesToTheirSource) {
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    auto copy = Copy();
    copy->DisconnectAllMpxORVs();
    copy.reset();
    EXPECT_EQ(handle->GetName(), Text("One"));
    EXPECT_EQ(m_vtClient.Tics().size(), 1U);
    m_client.DisconnectAllMpxORVs();
    EXPECT_EQ(m_vtClient.Tics().size(), 0U);
}

TEST_P(Copies, MayOutliveHandlesAndTicsOfTheirSource) {
    AdoptWithSegments(StatusSegment);
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    auto copy = Copy();
    delete handle;
    m_client.DisconnectFromMCSControlTree(false);
    copy.reset();
    EXPECT_EQ(m_client.GetVtClientToUse(), &m_vtClient);
}

TEST_P(Copies, OwnTheHandlesThatTheyMakeThemselves) {
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    auto copy = Copy();
    ASSERT_NE(copy->ConnectStaticMpxORV(Text("/B"), Text("Two")), nullptr);
    copy->DisconnectAllMpxORVs();
    EXPECT_EQ(NodeAt("/B"), nullptr);
    EXPECT_EQ(NodeAt("/A"), handle->GetControlNode());
    copy->ConnectStaticMpxORV(Text("/C"), Text("Three"));
    copy.reset();
    EXPECT_EQ(NodeAt("/C"), nullptr);
    EXPECT_NE(NodeAt("/A"), nullptr);
}

TEST_P(Copies, LetGoOfTicsOfTheirOwn) {
    Adopt();
    auto copy = Copy();
    ASSERT_TRUE(copy->ConnectToMCSControlTree(Text("/Copy"), StatusSegment));
    copy.reset();
    ASSERT_EQ(m_vtClient.Tics().size(), 1U);
    EXPECT_EQ(m_vtClient.Tics().front()->CountObservers(), 0);
    m_vtClient.EstablishAll();
}

INSTANTIATE_TEST_SUITE_P(Way, Copies, testing::Values(Way::Constructed, Way::Assigned), [](const auto& row) {
    return row.param == Way::Constructed ? "Constructed" : "Assigned";
});

TEST_F(ServerClientTest, AssigningLetsGoOfWhatTheClientHad) {
    FakeVtClient before;
    Client target;
    target.UseVtClient(&before);
    ASSERT_TRUE(target.ConnectToMCSControlTree(Text("/Target"), StatusSegment));
    target.ConnectStaticMpxORV(Text("/A"), Text("One"));
    Adopt();
    target = m_client;
    EXPECT_EQ(before.CountObservers(), 0);
    for (FakeVtTic* tic : before.Tics())
        EXPECT_EQ(tic->CountObservers(), 0);
    EXPECT_EQ(NodeAt("/A"), nullptr);
    EXPECT_EQ(target.GetVtClientToUse(), &m_vtClient);
    EXPECT_EQ(target.GetLocalMCSBasePath(), QString());
}

/// Whom an observer of the tree deletes when a handle goes that an assignment deletes.
enum class Deleted { Target, Source };
class DeletedByAnAssignment : public ServerClientTest, public testing::WithParamInterface<Deleted> {};

TEST_P(DeletedByAnAssignment, IsNotTouchedAnyMore) {
    Adopt();
    auto source = std::make_unique<Client>(m_client);
    auto target = std::make_unique<Client>();
    FakeVtClient before;
    target->UseVtClient(&before);
    target->ConnectStaticMpxORV(Text("/A"), Text("One"));
    RecordingObserver treeObserver([&](Observable* /*gone*/, TChangeCode code) {
        if (code == changecode::GoingAway) (GetParam() == Deleted::Target ? target : source).reset();
    });
    NodeAt("/A")->AddObserver(&treeObserver);
    *target = *source;
    EXPECT_EQ(treeObserver.Count(changecode::GoingAway), 1);
    EXPECT_EQ(before.CountObservers(), 0);
    EXPECT_EQ(NodeAt("/A"), nullptr);
    EXPECT_TRUE(!target || target->GetVtClientToUse() == nullptr);
}

INSTANTIATE_TEST_SUITE_P(, DeletedByAnAssignment, testing::Values(Deleted::Target, Deleted::Source),
                         [](const auto& row) { return row.param == Deleted::Target ? "Target" : "Source"; });

TEST_F(ServerClientTest, AssigningACopyBackIsHarmless) {
    AdoptWithSegments(StatusSegment);
    m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    std::optional<Client> copy(m_client);
    m_client = *copy;
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/Local/MCS"));
    EXPECT_EQ(m_vtClient.CountObservers(), 0);
    m_client.DisconnectAllMpxORVs();
    copy.reset();
    m_client.UseVtClient(nullptr);
}

TEST_F(ServerClientTest, AssigningAClientToItselfChangesNothing) {
    AdoptWithSegments(StatusSegment);
    m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    const Client& self = m_client;
    m_client = self;
    EXPECT_EQ(m_client.GetVtClientToUse(), &m_vtClient);
    EXPECT_EQ(m_vtClient.CountObservers(), 1);
    EXPECT_EQ(m_client.CountObservers(), 2);
    EXPECT_NE(NodeAt("/A"), nullptr);
}

}  // namespace
