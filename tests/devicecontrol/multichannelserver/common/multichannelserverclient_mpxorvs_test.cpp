// SPDX-License-Identifier: Apache-2.0
// How a client makes, keeps and deletes the handles of MpxORVs.
#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <platform/config/cfgcenter.h>

#include <algorithm>
#include <cstddef>
#include <functional>

namespace {

using treeaccess::Text;

constexpr const char* SourcePath = "devicecontrol/multichannelserver/common/multichannelserverclient";

class MpxORVs : public ServerClientTest {};

TEST_F(MpxORVs, AStaticOneIsMirroredByATicOfItsOwnWithoutItsSegment) {
    AdoptWithSegments(StatusSegment);
    m_vtClient.ClearCalls();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/Local/One"), Text("One"));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{Text("AddTic /Local/One,/MultiChannelServer/StaticMpxORVs/One []")});
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/Local/One"));
    EXPECT_EQ(handle->GetName(), Text("One"));
    EXPECT_NE(handle->GetControlNode(), nullptr);
    EXPECT_EQ(handle->GetControlNode(), NodeAt("/Local/One"));
    EXPECT_FALSE(handle->IsControlTreeConnected());
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(MpxORVs, AStaticOneIsMirroredByTheTicOfItsSegment) {
    AdoptWithSegments(StaticMpxORVsSegment | StatusSegment);
    m_vtClient.ClearCalls();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(QString(), Text("One"));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/Local/MCS/StaticMpxORVs/One"));
    EXPECT_EQ(handle->GetControlNode(), NodeAt("/Local/MCS/StaticMpxORVs/One"));
    EXPECT_TRUE(handle->IsControlTreeConnected());
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
}

TEST_F(MpxORVs, ADynamicOneIsMirroredByATicOfItsOwnWithoutItsSegment) {
    AdoptWithSegments(StaticMpxORVsSegment);
    m_client.SetUniqueMpxORVName(Text("Mine"));
    m_vtClient.ClearCalls();
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(Text("/Local/Mine"));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(m_vtClient.Calls(),
              Calls{Text("AddTic /Local/Mine,/MultiChannelServer/DynamicMpxORVs/Mine []")});
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/Local/Mine"));
    EXPECT_EQ(handle->GetName(), Text("Mine"));
}

TEST_F(MpxORVs, ADynamicOneIsMirroredByTheTicOfItsSegment) {
    AdoptWithSegments(DynamicMpxORVsSegment);
    m_client.SetUniqueMpxORVName(Text("Mine"));
    m_vtClient.ClearCalls();
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(QString());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/Local/MCS/DynamicMpxORVs/Mine"));
    EXPECT_TRUE(handle->IsControlTreeConnected());
}

TEST_F(MpxORVs, ADynamicOneTakesTheStoredNameEveryTimeAndTheGeneratedOneWithout) {
    Adopt();
    m_client.SetUniqueMpxORVName(Text("Mine"));
    EXPECT_EQ(m_client.CreateAndConnectDynamicMpxORV(Text("/A"))->GetName(), Text("Mine"));
    EXPECT_EQ(m_client.CreateAndConnectDynamicMpxORV(Text("/B"))->GetName(), Text("Mine"));
    EXPECT_EQ(m_client.GetUniqueMpxORVName(), Text("Mine"));
    m_client.SetUniqueMpxORVName(QString());
    EXPECT_EQ(m_client.CreateAndConnectDynamicMpxORV(Text("/C"))->GetName(),
              MpxORVHandle::CreateUniqueMpxORVName());
}

TEST_F(MpxORVs, TheNameIsNotChecked) {
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), QString());
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{Text("AddTic /A,/MultiChannelServer/StaticMpxORVs/ []")});
}

TEST_F(MpxORVs, TwoOfTheSameNameAreTwoHandlesOfTheSameRemotePath) {
    Adopt();
    MpxORVHandle* const first = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    MpxORVHandle* const second = m_client.ConnectStaticMpxORV(Text("/B"), Text("One"));
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    ASSERT_EQ(m_vtClient.Tics().size(), 2U);
    EXPECT_EQ(m_vtClient.Tics()[0]->GetRemotePath(), Text("/MultiChannelServer/StaticMpxORVs/One"));
    EXPECT_EQ(m_vtClient.Tics()[1]->GetRemotePath(), Text("/MultiChannelServer/StaticMpxORVs/One"));
}

TEST_F(MpxORVs, TheConnectionOfEachIsToldOnItsChangeOnly) {
    Adopt();
    m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_client.ConnectStaticMpxORV(Text("/B"), Text("Two"));
    FakeVtTic* const one = m_vtClient.Tics()[0];
    FakeVtTic* const two = m_vtClient.Tics()[1];
    one->Establish();
    one->Establish();
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
    two->Establish();
    EXPECT_EQ(m_observer.Codes(), (Codes{5023, 5023}));
    one->Establish(false);
    one->Establish(false);
    EXPECT_EQ(m_observer.Codes(), (Codes{5023, 5023, 5024}));
}

TEST_F(MpxORVs, DeletingAHandleTakesItFromTheClient) {
    Adopt();
    MpxORVHandle* const first = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_client.ConnectStaticMpxORV(Text("/B"), Text("Two"));
    m_vtClient.ClearCalls();
    delete first;
    EXPECT_EQ(m_vtClient.Calls(), (Calls{Text("ReleaseNode /A"), Text("RemoveTic /A")}));
    EXPECT_EQ(NodeAt("/A"), nullptr);
    m_vtClient.ClearCalls();
    m_client.DisconnectAllMpxORVs();
    EXPECT_EQ(m_vtClient.Calls(), (Calls{Text("ReleaseNode /B"), Text("RemoveTic /B")}));
    EXPECT_EQ(NodeAt("/B"), nullptr);
}

TEST_F(MpxORVs, AreDeletedWhenNoClientIsToBeUsed) {
    Adopt();
    m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_vtClient.ClearCalls();
    m_client.UseVtClient(nullptr);
    EXPECT_EQ(NodeAt("/A"), nullptr);
    // Nobody is asked to remove the tic: the client was let go of before.
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    ASSERT_EQ(m_vtClient.Tics().size(), 1U);
    EXPECT_EQ(m_vtClient.Tics().front()->CountObservers(), 0);
    m_vtClient.Tics().front()->Establish();
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(MpxORVs, StayWhenAnotherClientIsToBeUsed) {
    FakeVtClient other;
    Adopt();
    MpxORVHandle* const handle = m_client.ConnectStaticMpxORV(Text("/A"), Text("One"));
    m_client.UseVtClient(&other);
    EXPECT_EQ(handle->GetName(), Text("One"));
    m_vtClient.Tics().front()->Establish();
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
    delete handle;
    EXPECT_EQ(other.Calls(), (Calls{Text("ReleaseNode /A"), Text("RemoveTic of a stranger")}));
    ASSERT_EQ(m_vtClient.Tics().size(), 1U);
    m_vtClient.Tics().front()->Establish(false);
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
    m_client.UseVtClient(nullptr);
}

TEST_F(MpxORVs, AreDeletedWithTheClient) {
    {
        MultiChannelServerClient client;
        client.UseVtClient(&m_vtClient);
        client.ConnectStaticMpxORV(Text("/A"), Text("One"));
        client.CreateAndConnectDynamicMpxORV(Text("/B"));
    }
    EXPECT_EQ(NodeAt("/A"), nullptr);
    EXPECT_EQ(NodeAt("/B"), nullptr);
    for (FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_EQ(tic->CountObservers(), 0);
}

/// A handle that notes its end. The places are handed out from the top down, so that the order in which the
/// handles are made is not that of their addresses.
class PlacedHandle final : public OpenedHandle {
  public:
    PlacedHandle(MultiChannelServerClient& client, std::vector<PlacedHandle*>* deleted)
        : OpenedHandle(client, false), m_deleted(deleted) {}
    PlacedHandle(const PlacedHandle&) = delete;
    PlacedHandle& operator=(const PlacedHandle&) = delete;
    ~PlacedHandle() override { m_deleted->push_back(this); }

    static void* operator new(std::size_t size);
    static void operator delete(void* place);
    static void FreeAllPlaces();

  private:
    std::vector<PlacedHandle*>* m_deleted;
};

struct Place {
    alignas(PlacedHandle) std::byte bytes[sizeof(PlacedHandle)];
};
Place s_places[3];
std::size_t s_freePlaces = std::size(s_places);

void* PlacedHandle::operator new(std::size_t /*size*/) {
    return s_places[--s_freePlaces].bytes;
}

void PlacedHandle::operator delete(void* /*place*/) {}

void PlacedHandle::FreeAllPlaces() {
    s_freePlaces = std::size(s_places);
}

TEST_F(MpxORVs, AreDeletedInTheOrderOfTheirAddresses) {
    PlacedHandle::FreeAllPlaces();
    std::vector<PlacedHandle*> made;
    std::vector<PlacedHandle*> deleted;
    for (int i = 0; i < 3; ++i)
        made.push_back(new PlacedHandle(m_client, &deleted));
    m_client.DisconnectAllMpxORVs();
    std::reverse(made.begin(), made.end());
    EXPECT_EQ(deleted, made);
    m_client.DisconnectAllMpxORVs();
    EXPECT_EQ(deleted.size(), 3U);
}

// What is refused.

using Attempt = std::function<MpxORVHandle*(OpenedClient<MultiChannelServerClient>&)>;

struct Refusal {
    const char* name;
    bool hasClient;
    unsigned segments;
    Attempt attempt;
    const char* message;
    int line;
};

void PrintTo(const Refusal& row, std::ostream* stream) {
    *stream << row.name;
}

class RefusedMpxORV : public MpxORVs, public testing::WithParamInterface<Refusal> {
  protected:
    RefusedMpxORV() {
        if (GetParam().hasClient) Adopt();
        if (GetParam().segments != 0)
            m_client.ConnectToMCSControlTree(Text("/Local/MCS"), Segments(GetParam().segments));
        m_vtClient.ClearCalls();
    }
};

TEST_P(RefusedMpxORV, IsTracedAndMakesNoHandle) {
    const TraceRecorder recorder(ErrorHandler::TraceWarnings);
    EXPECT_EQ(GetParam().attempt(m_client), nullptr);
    ASSERT_EQ(recorder.Records().size(), 1U);
    EXPECT_EQ(recorder.Records()[0].message, Text(GetParam().message));
    EXPECT_EQ(recorder.Records()[0].file, Text(SourcePath));
    EXPECT_EQ(recorder.Records()[0].line, GetParam().line);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_EQ(NodeAt("/A"), nullptr);
}

TEST_P(RefusedMpxORV, IsNotTracedUnlessFailuresAre) {
    const TraceRecorder recorder(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_EQ(GetParam().attempt(m_client), nullptr);
    EXPECT_EQ(recorder.Messages(), Calls{});
}

Attempt ConnectAt(const char* local, const char* remote) {
    return [local, remote](auto& client) {
        return client.ConnectMpxORV(Text(local), Text(remote), Text("One"), true);
    };
}

Attempt ConnectStatic(const char* local) {
    return [local](auto& client) { return client.ConnectStaticMpxORV(Text(local), Text("One")); };
}

Attempt ConnectDynamic(const char* local) {
    return [local](auto& client) { return client.CreateAndConnectDynamicMpxORV(Text(local)); };
}

constexpr const char* ForbiddenPath =
    "MultiChannelServerClient::CreateAndConnectDynamicMpxORV: LocalMpxORVControlPath must not be specified "
    "when MCS control tree is not connected";
constexpr const char* MissingPath =
    "MultiChannelServerClient::CreateAndConnectDynamicMpxORV: LocalMpxORVControlPath must be specified when "
    "MCS control tree is not connected";
constexpr const char* NoClient = "MultiChannelServerClient::ConnectMpxORV(): VtClientToUse not set";
constexpr const char* InvalidLocal =
    "MultiChannelServerClient::ConnectMpxORV(): invalid LocalMpxORVControlPath";
constexpr const char* InvalidRemote =
    "MultiChannelServerClient::ConnectMpxORV(): invalid RemoteMpxORVControlPath";

// Rows with several reasons show the order in which they are looked at.
INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedMpxORV,
    testing::Values(Refusal{"NoClientAndInvalidPaths", false, 0, ConnectAt("", ""), NoClient, 328},
                    Refusal{"InvalidPaths", true, 0, ConnectAt("", ""), InvalidLocal, 333},
                    Refusal{"InvalidLocalPath", true, 0, ConnectAt("A", "/R"), InvalidLocal, 333},
                    Refusal{"InvalidRemotePath", true, 0, ConnectAt("/A", "R"), InvalidRemote, 338},
                    Refusal{"EmptyRemotePath", true, 0, ConnectAt("/A", ""), InvalidRemote, 338},
                    Refusal{"StaticPathWithItsSegment", true, 16, ConnectStatic("/A"), ForbiddenPath, 273},
                    Refusal{"StaticWithoutPathAndSegment", true, 15, ConnectStatic(""), MissingPath, 284},
                    Refusal{"StaticWithoutPathAndClient", false, 0, ConnectStatic(""), MissingPath, 284},
                    Refusal{"StaticWithoutClient", false, 0, ConnectStatic("/A"), NoClient, 328},
                    Refusal{"StaticWithARelativePath", true, 0, ConnectStatic("A"), InvalidLocal, 333},
                    Refusal{"DynamicPathWithItsSegment", true, 8, ConnectDynamic("/A"), ForbiddenPath, 305},
                    Refusal{"DynamicWithoutPathAndSegment", true, 23, ConnectDynamic(""), MissingPath, 316},
                    Refusal{"DynamicWithoutPathAndClient", false, 0, ConnectDynamic(""), MissingPath, 316},
                    Refusal{"DynamicWithoutClient", false, 0, ConnectDynamic("/A"), NoClient, 328},
                    Refusal{"DynamicWithARelativePath", true, 0, ConnectDynamic("A"), InvalidLocal, 333}),
    [](const auto& row) { return row.param.name; });

}  // namespace
