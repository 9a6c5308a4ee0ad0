// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>

#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <memory>

namespace {

using treeaccess::Text;
using treeaccess::ValueAt;
using Switch = values::Value<bool>;

constexpr const char* SourcePath = "devicecontrol/multichannelserver/common/mpxorvhandle";

class Handle : public ServerClientTest {
  protected:
    /// A handle that is registered and not connected.
    OpenedHandle* MakeHandle(bool ownTic) { return new OpenedHandle(m_client, ownTic); }
    OpenedHandle* ConnectRemote(bool ownTic) {
        OpenedHandle* const handle = MakeHandle(ownTic);
        handle->ConnectMpxORVControlTreeRemote(Text("/L/One"), Text("/R"), Text("One"), ownTic);
        return handle;
    }
    OpenedHandle* ConnectLocal(bool ownTic = false) {
        OpenedHandle* const handle = MakeHandle(ownTic);
        handle->ConnectMpxORVControlTreeLocal(Text("/Unread"), Text("/R"), Text("One"), ownTic);
        return handle;
    }
    FakeVtTic* Tic() { return m_vtClient.Tics().front(); }
    static void ExpectAssertions(const TraceRecorder& recorder,
                                 const std::vector<std::pair<const char*, int>>& expected) {
        ASSERT_EQ(recorder.Records().size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(recorder.Records()[i].kind, TraceRecord::Assertion);
            EXPECT_EQ(recorder.Records()[i].message, Text(expected[i].first));
            EXPECT_EQ(recorder.Records()[i].line, expected[i].second);
            EXPECT_EQ(recorder.Records()[i].file, Text(SourcePath));
        }
    }
};

TEST_F(Handle, StartsUnconnectedAndBelongsToTheClient) {
    OpenedHandle* const handle = MakeHandle(true);
    EXPECT_EQ(handle->GetLocalControlPath(), QString());
    EXPECT_EQ(handle->GetName(), QString());
    EXPECT_EQ(handle->GetControlNode(), nullptr);
    EXPECT_FALSE(handle->IsControlTreeConnected());
    m_client.DisconnectAllMpxORVs();  // deletes it
}

TEST_F(Handle, TheGeneratedNameHoldsMachineAndApplication) {
    const QString before = CfgCenter::GetAppName();
    CfgCenter::SetAppName(Text("Receiver %1"));
    EXPECT_EQ(MpxORVHandle::CreateUniqueMpxORVName(),
              Text("MpxORV") + VornOS::Create()->GetMachineName() + Text("_Receiver %1"));
    CfgCenter::SetAppName(before);
}

TEST_F(Handle, TheRemoteBasePathIsASlashAndTheName) {
    Adopt();
    EXPECT_EQ(ConnectRemote(true)->GetRemoteMpxORVBasePath(), Text("/One"));
    EXPECT_EQ(ConnectLocal()->GetRemoteMpxORVBasePath(), Text("/One"));
    EXPECT_EQ(MakeHandle(false)->GetRemoteMpxORVBasePath(), Text("/"));
}

// Connecting at a client.

TEST_F(Handle, WithATicOfItsOwnItMirrorsItsSubtree) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    EXPECT_EQ(m_vtClient.Calls(), Calls{Text("AddTic /L/One,/R/One []")});
    EXPECT_EQ(Tic()->CountObservers(), 1);
    EXPECT_EQ(handle->GetControlNode(), NodeAt("/L/One"));
    EXPECT_NE(handle->GetControlNode(), nullptr);
    EXPECT_EQ(handle->GetControlNode()->CountObservers(), 0);
}

TEST_F(Handle, WithATicOfItsOwnItIsConnectedWhileThatIsEstablished) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    EXPECT_FALSE(handle->IsControlTreeConnected());
    Tic()->SetEstablished(true);
    EXPECT_TRUE(handle->IsControlTreeConnected());
    Tic()->SetEstablished(false);
    EXPECT_FALSE(handle->IsControlTreeConnected());
}

TEST_F(Handle, WithoutATicOfItsOwnItIsConnectedAtOnce) {
    OpenedHandle* const handle = ConnectRemote(false);
    EXPECT_TRUE(handle->IsControlTreeConnected());
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
}

TEST_F(Handle, UsesTheNodeThatIsThere) {
    values::Node* const node = PutNode("/L/One");
    EXPECT_EQ(ConnectRemote(false)->GetControlNode(), node);
}

TEST_F(Handle, PassesTheSpecificationThroughLatin1) {
    Adopt();
    OpenedHandle* const handle = MakeHandle(true);
    handle->ConnectMpxORVControlTreeRemote(Text("/L/\xc3\xa4"), Text("/R"), Text("\xe2\x82\xac"), true);
    EXPECT_EQ(m_vtClient.Calls(), Calls{Text("AddTic /L/\xc3\xa4,/R/? []")});
    EXPECT_EQ(handle->GetName(), Text("\xe2\x82\xac"));
}

TEST_F(Handle, AValueInPlaceOfItsNodeIsAnAssertion) {
    treeaccess::PutValue<Switch>(Text("/L"), "One");
    const TraceRecorder recorder;
    OpenedHandle* const handle = ConnectRemote(false);
    ExpectAssertions(recorder, {{"pNode", 109}});
    EXPECT_EQ(handle->GetControlNode(), nullptr);
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
}

TEST_F(Handle, ARefusedTicIsAnAssertionAndTheHandleCountsAsConnected) {
    Adopt();
    m_vtClient.AcceptTics(0);
    const TraceRecorder recorder;
    OpenedHandle* const handle = ConnectRemote(true);
    ExpectAssertions(recorder, {{"m_pControlTic", 116}});
    EXPECT_TRUE(handle->IsControlTreeConnected());  // deliberate: no tic, but a remote base path
}

TEST_F(Handle, NoClientInUseIsAnAssertion) {
    const TraceRecorder recorder;
    ConnectRemote(true);
    ExpectAssertions(recorder, {{"m_MCSClient.GetVtClientToUse() != NULL", 113}, {"m_pControlTic", 116}});
}

TEST_F(Handle, NothingIsAssertedUnlessAssertionsAreTraced) {
    treeaccess::PutValue<Switch>(Text("/L"), "One");
    treeaccess::PutValue<Switch>(Text("/R"), "One");
    const TraceRecorder recorder(ErrorHandler::TraceWarnings | ErrorHandler::TraceDetails);
    ConnectRemote(true);
    ConnectLocal();
    EXPECT_EQ(recorder.Messages(), Calls{});
}

TEST_F(Handle, AnySourceMayTellThatTicsChanged) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    Tic()->SetEstablished(true);
    handle->Update(nullptr, connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), Codes{5023});
}

TEST_F(Handle, OtherCodesTellNothing) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    Tic()->SetEstablished(true);
    for (const TChangeCode code : {2, 3, 4, 16, 17})
        handle->Update(Tic(), code);
    handle->Update(nullptr, connectioncode::GoingAway);
    handle->Update(&m_vtClient, connectioncode::GoingAway);
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_EQ(Tic()->CountObservers(), 1);
}

TEST_F(Handle, ForgetsATicThatGoes) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    m_vtClient.RemoveTic(Tic());
    m_vtClient.ClearCalls();
    EXPECT_TRUE(handle->IsControlTreeConnected());  // deliberate: no tic, but a remote base path
    EXPECT_EQ(m_observer.Codes(), Codes{});
    delete handle;
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
}

// Connecting at the server.

TEST_F(Handle, AtTheServerItCreatesItsNodeAndObservesIt) {
    OpenedHandle* const handle = ConnectLocal();
    ASSERT_NE(NodeAt("/R/One"), nullptr);
    EXPECT_EQ(NodeAt("/R/One")->CountObservers(), 1);
    EXPECT_EQ(NodeAt("/Unread"), nullptr);
    EXPECT_EQ(handle->GetLocalControlPath(), Text("/R"));
    EXPECT_EQ(handle->GetControlNode(), NodeAt("/R"));  // deliberate: not the node that it created
    EXPECT_EQ(handle->GetName(), Text("One"));
    EXPECT_FALSE(handle->IsControlTreeConnected());
    PutNode("/R/One/Below");  // told to it with the number that tics have too
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(Handle, AtTheServerAValueInPlaceOfItsNodeIsAnAssertion) {
    treeaccess::PutValue<Switch>(Text("/R"), "One");
    const TraceRecorder recorder;
    delete ConnectLocal();
    ExpectAssertions(recorder, {{"m_pControlNode", 135}});
    EXPECT_NE(ValueAt<Switch>(Text("/R/One")), nullptr);
}

TEST_F(Handle, AtTheServerItsNodeGoesWithIt) {
    OpenedHandle* const handle = ConnectLocal();
    PutNode("/R/One/Below");
    delete handle;
    EXPECT_EQ(NodeAt("/R/One"), nullptr);
    EXPECT_NE(NodeAt("/R"), nullptr);
}

TEST_F(Handle, AtTheServerItForgetsANodeThatGoes) {
    OpenedHandle* const handle = ConnectLocal();
    treeaccess::DeleteAt(Text("/R/One"));
    values::Node* const next = PutNode("/R/One");
    delete handle;
    EXPECT_EQ(NodeAt("/R/One"), next);
}

TEST(HandleAtTheServer, OutlivesTheTree) {
    MCSPolicySet* policies = nullptr;
    MultiChannelServerClient client;
    {
        const values::Tree tree;
        auto* const handle = new OpenedHandle(client, true);
        handle->ConnectMpxORVControlTreeLocal(QString(), Text("/R"), Text("One"), true);
        policies = &handle->GetPolicySet();
    }
    EXPECT_EQ(policies->GetParentNodeInTree(), nullptr);
    client.DisconnectAllMpxORVs();
}

// Disconnecting.

TEST_F(Handle, WithATicOfItsOwnItTakesTicAndLocalSubtreeAlong) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    PutNode("/L/One/Below");
    m_vtClient.ClearCalls();
    handle->DisconnectMpxORVControlTree();
    EXPECT_EQ(m_vtClient.Calls(), (Calls{Text("ReleaseNode /L/One"), Text("RemoveTic /L/One")}));
    EXPECT_EQ(NodeAt("/L/One"), nullptr);
    EXPECT_NE(NodeAt("/L"), nullptr);
    EXPECT_EQ(handle->GetLocalControlPath(), QString());
    EXPECT_EQ(handle->GetName(), QString());
    EXPECT_FALSE(handle->IsControlTreeConnected());
}

TEST_F(Handle, WithATicOfItsOwnButWithoutANodeItOnlyRemovesTheTic) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    treeaccess::DeleteAt(Text("/L/One"));
    m_vtClient.ClearCalls();
    delete handle;
    EXPECT_EQ(m_vtClient.Calls(), Calls{Text("RemoveTic /L/One")});
}

TEST_F(Handle, WithoutATicOfItsOwnItLeavesTheLocalSubtreeAlone) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(false);
    delete handle;
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_NE(NodeAt("/L/One"), nullptr);
}

TEST_F(Handle, WithoutAClientInUseItLeavesItsTicWithNobodyToTell) {
    Adopt();
    OpenedHandle* const handle = ConnectRemote(true);
    {
        // A client that keeps its handles and has nobody to ask.
        FakeVtClient other;
        m_client.UseVtClient(&other);
    }
    static_cast<void>(handle);  // deleted with the other client
    EXPECT_EQ(NodeAt("/L/One"), nullptr);
    EXPECT_EQ(Tic()->CountObservers(), 0);
    Tic()->Establish();
}

// Policies.

TEST_F(Handle, ShowsItsPoliciesBelowItsControlPathFromTheFirstCallOn) {
    OpenedHandle* const handle = ConnectRemote(false);
    EXPECT_EQ(NodeAt("/L/One/Policy"), nullptr);
    MCSPolicySet& policies = handle->GetPolicySet();
    ASSERT_NE(NodeAt("/L/One/Policy"), nullptr);
    EXPECT_EQ(policies.GetParentNodeInTree(), NodeAt("/L/One/Policy"));
    EXPECT_EQ(&handle->GetPolicySet(), &policies);
    policies.Add(MCSPolicy::MAYCAL);
    EXPECT_TRUE(ValueAt<Switch>(Text("/L/One/Policy/MayCal"))->GetValue());
}

TEST_F(Handle, TakesThePoliciesThatTheTreeHolds) {
    OpenedHandle* const handle = ConnectRemote(false);
    treeaccess::PutValue<Switch>(Text("/L/One/Policy"), "MayBIT")->SetValue(true);
    EXPECT_EQ(handle->GetPolicySet().ToString(), Text("MayBIT"));
}

TEST_F(Handle, LeavesTheSwitchesBehindWithNobodyObservingThem) {
    OpenedHandle* const handle = ConnectRemote(false);
    handle->GetPolicySet();
    delete handle;
    ASSERT_NE(NodeAt("/L/One/Policy"), nullptr);
    EXPECT_EQ(treeaccess::CountObservers(NodeAt("/L/One/Policy")), 0);
}

TEST_F(Handle, AtTheServerItShowsItsPoliciesBelowThePathOfItsParent) {
    ConnectLocal()->GetPolicySet();
    EXPECT_NE(NodeAt("/R/Policy"), nullptr);  // deliberate: the local control path is the parent's
}

// Copies.

TEST_F(Handle, ACopySharesWhatItsSourceHasAndObservesNothing) {
    Adopt();
    OpenedHandle* const source = ConnectRemote(true);
    source->GetPolicySet().Add(MCSPolicy::MAYCAL);
    Tic()->Establish();
    m_observer.Clear();
    const auto copy = std::make_unique<OpenedHandle>(*source);
    EXPECT_EQ(Tic()->CountObservers(), 1);
    EXPECT_EQ(copy->GetLocalControlPath(), Text("/L/One"));
    EXPECT_EQ(copy->GetName(), Text("One"));
    EXPECT_EQ(copy->GetControlNode(), source->GetControlNode());
    EXPECT_EQ(&copy->GetPolicySet(), &source->GetPolicySet());
    EXPECT_TRUE(copy->IsControlTreeConnected());
    copy->Update(nullptr, connectioncode::TicsChanged);  // knows what was told last, too
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(Handle, DeletingACopyDisconnectsItsSource) {
    Adopt();
    OpenedHandle* const source = ConnectRemote(true);
    m_vtClient.ClearCalls();
    std::make_unique<OpenedHandle>(*source).reset();
    EXPECT_EQ(m_vtClient.Calls(), (Calls{Text("ReleaseNode /L/One"), Text("RemoveTic /L/One")}));
    EXPECT_EQ(NodeAt("/L/One"), nullptr);
    m_vtClient.ClearCalls();
    m_client.DisconnectAllMpxORVs();  // the source is still the client's
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
}

TEST_F(Handle, DeletingACopyAtTheServerDeletesTheNodeForItsSourceToo) {
    OpenedHandle* const source = ConnectLocal();
    std::make_unique<OpenedHandle>(*source).reset();
    EXPECT_EQ(NodeAt("/R/One"), nullptr);
    delete source;
}

}  // namespace
