// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsclientatserver.h>

#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <functional>

namespace {

using treeaccess::Text;
using Client = OpenedClient<MCSClientAtServer>;

constexpr const char* SourcePath = "devicecontrol/multichannelserver/common/multichannelserverclient";

class MCSClientAtServerTest : public testing::Test {
  protected:
    values::Node* NodeAt(const QString& path) { return m_tree.FindNode(path); }
    values::Node* NodeAt(const char* path) { return NodeAt(Text(path)); }

    values::Tree m_tree;
    Client m_client;
};

TEST_F(MCSClientAtServerTest, CreatesADynamicMpxORVWithTheStoredName) {
    m_client.SetUniqueMpxORVName(Text("Client1"));
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1"), nullptr);
    EXPECT_EQ(NodeAt("/Any"), nullptr);
    EXPECT_EQ(handle->GetName(), Text("Client1"));
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/MultiChannelServer/DynamicMpxORVs"));
    EXPECT_EQ(handle->GetControlNode(), NodeAt("/MultiChannelServer/DynamicMpxORVs"));
    EXPECT_FALSE(handle->IsControlTreeConnected());
    EXPECT_EQ(m_client.GetUniqueMpxORVName(), Text("Client1"));
}

TEST_F(MCSClientAtServerTest, CreatesADynamicMpxORVWithTheGeneratedNameWithoutAStoredOne) {
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(handle->GetName(), MpxORVHandle::CreateUniqueMpxORVName());
    EXPECT_NE(NodeAt(Text("/MultiChannelServer/DynamicMpxORVs/") + handle->GetName()), nullptr);
}

TEST_F(MCSClientAtServerTest, ASecondDynamicMpxORVOfTheSameNameLeavesTheFirstUntouched) {
    const TraceRecorder recorder;
    m_client.SetUniqueMpxORVName(Text("Client1"));
    MpxORVHandle* const first = m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    values::Node* const node = NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1");
    EXPECT_EQ(m_client.CreateAndConnectDynamicMpxORV(Text("/Any")), nullptr);
    EXPECT_EQ(NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1"), node);
    EXPECT_EQ(node->CountObservers(), 1);
    EXPECT_EQ(first->GetName(), Text("Client1"));
}

TEST_F(MCSClientAtServerTest, ANameIsFreeAgainOnceItsHandleIsGone) {
    m_client.SetUniqueMpxORVName(Text("Client1"));
    delete m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    EXPECT_EQ(NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1"), nullptr);
    EXPECT_NE(m_client.CreateAndConnectDynamicMpxORV(Text("/Any")), nullptr);
}

TEST_F(MCSClientAtServerTest, TheNodesGoWithTheClient) {
    {
        MCSClientAtServer client;
        client.SetUniqueMpxORVName(Text("Client1"));
        client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    }
    EXPECT_EQ(NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1"), nullptr);
    EXPECT_NE(NodeAt("/MultiChannelServer/DynamicMpxORVs"), nullptr);
}

TEST_F(MCSClientAtServerTest, MakesNoDifferenceBetweenRequestedAndOtherSegments) {
    FakeVtClient vtClient;
    m_client.UseVtClient(&vtClient);
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/L"), AllSegments));
    vtClient.ClearCalls();
    EXPECT_NE(m_client.CreateAndConnectDynamicMpxORV(Text("/Any")), nullptr);
    EXPECT_EQ(vtClient.Calls(), std::vector<QString>{});
    m_client.UseVtClient(nullptr);
}

TEST_F(MCSClientAtServerTest, AStaticMpxORVIsMadeLocallyToo) {
    ASSERT_NE(m_client.ConnectStaticMpxORV(Text("/Any"), Text("One")), nullptr);
    EXPECT_NE(NodeAt("/MultiChannelServer/StaticMpxORVs/One"), nullptr);
}

TEST_F(MCSClientAtServerTest, AHandleDeletedWhenItsNodeComesIsNotReturned) {
    values::Node* const parent = m_tree.ProvideNode(Text("/MultiChannelServer/DynamicMpxORVs"));
    RecordingObserver observer([this](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ChildrenAdded) m_client.DisconnectAllMpxORVs();
    });
    parent->AddObserver(&observer);
    m_client.SetUniqueMpxORVName(Text("Client1"));
    EXPECT_EQ(m_client.CreateAndConnectDynamicMpxORV(Text("/Any")), nullptr);
    EXPECT_EQ(observer.Count(changecode::ChildrenAdded), 1);
    parent->DeleteObserver(&observer);
}

TEST_F(MCSClientAtServerTest, CopiesLeaveTheHandlesToTheirSource) {
    m_client.SetUniqueMpxORVName(Text("Client1"));
    m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    {
        const MCSClientAtServer copy(m_client);
        MCSClientAtServer assigned;
        assigned = copy;
        EXPECT_EQ(assigned.GetUniqueMpxORVName(), Text("Client1"));
    }
    EXPECT_NE(NodeAt("/MultiChannelServer/DynamicMpxORVs/Client1"), nullptr);
}

using Attempt = std::function<MpxORVHandle*(Client&)>;

struct Refusal {
    const char* name;
    Attempt attempt;
    const char* message;
    int line;
};

void PrintTo(const Refusal& row, std::ostream* stream) {
    *stream << row.name;
}

class RefusedAtServer : public MCSClientAtServerTest, public testing::WithParamInterface<Refusal> {
  protected:
    RefusedAtServer() {
        m_client.SetUniqueMpxORVName(Text("Taken %1"));
        m_client.CreateAndConnectDynamicMpxORV(Text("/Any"));
    }
};

TEST_P(RefusedAtServer, IsTracedAndMakesNoNode) {
    const TraceRecorder recorder(ErrorHandler::TraceWarnings);
    EXPECT_EQ(GetParam().attempt(m_client), nullptr);
    ASSERT_EQ(recorder.Records().size(), 1U);
    EXPECT_EQ(recorder.Records()[0].message, Text(GetParam().message));
    EXPECT_EQ(recorder.Records()[0].file, Text(SourcePath));
    EXPECT_EQ(recorder.Records()[0].line, GetParam().line);
    EXPECT_EQ(NodeAt("/MultiChannelServer/DynamicMpxORVs")->CountChildren(), 1);
    EXPECT_EQ(NodeAt("/R"), nullptr);
}

TEST_P(RefusedAtServer, IsNotTracedUnlessFailuresAre) {
    const TraceRecorder recorder(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_EQ(GetParam().attempt(m_client), nullptr);
    EXPECT_EQ(recorder.Messages(), std::vector<QString>{});
}

Attempt Create(const char* name, const char* local) {
    return [name, local](Client& client) {
        client.SetUniqueMpxORVName(Text(name));
        return client.CreateAndConnectDynamicMpxORV(Text(local));
    };
}

Attempt ConnectAt(const char* local, const char* remote) {
    return [local, remote](Client& client) {
        return client.ConnectMpxORV(Text(local), Text(remote), Text("One"), false);
    };
}

constexpr const char* InvalidLocal =
    "MultiChannelServerClient::ConnectMpxORV(): invalid LocalMpxORVControlPath";
constexpr const char* InvalidRemote =
    "MultiChannelServerClient::ConnectMpxORV(): invalid RemoteMpxORVControlPath";
constexpr const char* Taken = "A DynMpx subtree for client id Taken %1 already exists.";

INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedAtServer,
    testing::Values(Refusal{"TakenName", Create("Taken %1", "/Any"), Taken, 528},
                    Refusal{"TakenNameBeforeAnInvalidPath", Create("Taken %1", ""), Taken, 528},
                    Refusal{"EmptyLocalPath", Create("Free", ""), InvalidLocal, 541},
                    Refusal{"RelativeLocalPath", Create("Free", "Any"), InvalidLocal, 541},
                    Refusal{"InvalidPaths", ConnectAt("", ""), InvalidLocal, 541},
                    Refusal{"InvalidRemotePath", ConnectAt("/Any", "R"), InvalidRemote, 546}),
    [](const auto& row) { return row.param.name; });

}  // namespace
