// SPDX-License-Identifier: Apache-2.0
// The segments of the server's control tree that a client mirrors.
#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>

#include <functional>

/// Shows the private operation that names the segments: an explicit instantiation may name it.
QString RelativeSegmentPath(EMCSControlTreeSegments segment);
template <QString (*operation)(EMCSControlTreeSegments)>
struct RelativeSegmentPathRevealed {
    friend QString RelativeSegmentPath(EMCSControlTreeSegments segment) { return operation(segment); }
};
template struct RelativeSegmentPathRevealed<&MultiChannelServerClient::GetRelativeControlTreeSegmentPath>;

namespace {

using treeaccess::Text;
using Client = OpenedClient<MultiChannelServerClient>;

constexpr const char* SourcePath = "devicecontrol/multichannelserver/common/multichannelserverclient";

class ControlTree : public ServerClientTest {
  protected:
    /// Asks for \a bits below /L, without caring for the answer.
    bool Connect(unsigned bits) { return m_client.ConnectToMCSControlTree(Text("/L"), Segments(bits)); }
    void EstablishOnly(const std::vector<int>& tics) {
        m_vtClient.SetConnected(true);
        for (const int tic : tics)
            m_vtClient.Tics().at(static_cast<std::size_t>(tic))->SetEstablished(true);
    }
};

TEST(SegmentPath, NamesEachSegmentAndNothingElse) {
    const std::vector<std::pair<unsigned, const char*>> names = {
        {1, "Command"}, {2, "Config"}, {4, "Status"}, {8, "DynamicMpxORVs"}, {16, "StaticMpxORVs"}, {0, ""},
        {3, ""},        {31, ""},      {32, ""},      {0x80000000U, ""}};
    for (const auto& [bits, name] : names)
        EXPECT_EQ(RelativeSegmentPath(Segments(bits)), Text(name)) << bits;
}

TEST(SegmentPath, IsValidWhenItStartsWithASlash) {
    for (const char* valid : {"/", "/a", "//", "/a/", "/\xc3\xa4 ,"})
        EXPECT_TRUE(Client::IsPathValid(Text(valid))) << valid;
    for (const char* invalid : {"", "a", "a/b", " /a"})
        EXPECT_FALSE(Client::IsPathValid(Text(invalid))) << invalid;
    EXPECT_FALSE(Client::IsPathValid(QString()));
}

TEST_F(ControlTree, AddsATicPerSegmentInAscendingOrder) {
    AdoptWithSegments(AllSegments);
    EXPECT_EQ(m_vtClient.Calls(),
              (Calls{Text("AddTic /Local/MCS/Command,/MultiChannelServer/Command []"),
                     Text("AddTic /Local/MCS/Config,/MultiChannelServer/Config []"),
                     Text("AddTic /Local/MCS/Status,/MultiChannelServer/Status []"),
                     Text("AddTic /Local/MCS/DynamicMpxORVs,/MultiChannelServer/DynamicMpxORVs []"),
                     Text("AddTic /Local/MCS/StaticMpxORVs,/MultiChannelServer/StaticMpxORVs []")}));
    for (FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_EQ(tic->CountObservers(), 1);
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/Local/MCS"));
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(ControlTree, AddsTicsForTheRequestedSegmentsOnly) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4 + 16));
    EXPECT_EQ(m_vtClient.Calls(),
              (Calls{Text("AddTic /L/Command,/MultiChannelServer/Command []"),
                     Text("AddTic /L/Status,/MultiChannelServer/Status []"),
                     Text("AddTic /L/StaticMpxORVs,/MultiChannelServer/StaticMpxORVs []")}));
}

TEST_F(ControlTree, ASegmentIsRequestedIfAnyOfThoseAskedForIs) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    for (const unsigned bits : {1U, 4U, 5U, 3U, 31U, 33U})
        EXPECT_TRUE(m_client.AreMCSControlTreeSegmentsRequested(Segments(bits))) << bits;
    for (const unsigned bits : {0U, 2U, 8U, 26U, 32U})
        EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(Segments(bits))) << bits;
}

TEST_F(ControlTree, SegmentsAreConnectedIfAllOfThoseAskedForAre) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4 + 16));
    EstablishOnly({0, 1});
    for (const unsigned bits : {0U, 1U, 4U, 5U})
        EXPECT_TRUE(m_client.AreMCSControlTreeSegmentsConnected(Segments(bits))) << bits;
    for (const unsigned bits : {16U, 17U, 2U, 3U, 7U, 31U, 32U, 33U})
        EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsConnected(Segments(bits))) << bits;
}

TEST_F(ControlTree, NoSegmentsAreConnectedEvenWithoutAClient) {
    EXPECT_TRUE(m_client.AreMCSControlTreeSegmentsConnected(NoSegments));
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsConnected(StatusSegment));
    EXPECT_FALSE(m_client.IsMCSControlTreeConnected());
}

TEST_F(ControlTree, IsConnectedOnceAllRequestedSegmentsAre) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    EXPECT_FALSE(m_client.IsMCSControlTreeConnected());
    EstablishOnly({1});
    EXPECT_FALSE(m_client.IsMCSControlTreeConnected());
    EstablishOnly({0});
    EXPECT_TRUE(m_client.IsMCSControlTreeConnected());
}

TEST_F(ControlTree, ItsConnectionIsToldOnAChangeOnly) {
    Adopt();
    m_vtClient.SetConnected(true);
    m_vtClient.Tell(connectioncode::Connected);
    ASSERT_TRUE(Connect(1 + 4));
    m_observer.Clear();
    EstablishOnly({0});
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EstablishOnly({1});
    m_vtClient.Tell(connectioncode::TicsChanged);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Count(5021), 1);
    m_vtClient.Tics().front()->SetEstablished(false);
    m_vtClient.Tell(connectioncode::TicsChanged);
    m_vtClient.Tell(connectioncode::TicsChanged);
    EXPECT_EQ(m_observer.Codes(), (Codes{5025, 5021, 5025, 5022}));
}

TEST_F(ControlTree, ItsConnectionIsToldByTheTicsCodeAlone) {
    Adopt();
    ASSERT_TRUE(Connect(4));
    EstablishOnly({0});
    m_vtClient.Tell(connectioncode::Connected);
    m_vtClient.Tell(connectioncode::Disconnected);
    EXPECT_EQ(m_observer.Codes(), Codes{5019});
}

// Disconnecting.

TEST_F(ControlTree, DisconnectingReleasesTheNodesThatAreThereAndRemovesTheTicsInOrder) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4 + 16));
    PutNode("/L/StaticMpxORVs");
    PutNode("/L/Command");
    m_vtClient.ClearCalls();
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_EQ(m_vtClient.Calls(), (Calls{Text("ReleaseNode /L/Command"), Text("RemoveTic /L/Command"),
                                         Text("RemoveTic /L/Status"), Text("ReleaseNode /L/StaticMpxORVs"),
                                         Text("RemoveTic /L/StaticMpxORVs")}));
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
    EXPECT_FALSE(m_client.IsMCSControlTreeConnected());
    EXPECT_NE(NodeAt("/L/Command"), nullptr);
}

TEST_F(ControlTree, DisconnectingDeletesTheLocalTreeIfAskedTo) {
    Adopt();
    ASSERT_TRUE(Connect(4));
    PutNode("/L/Status/Deep");
    PutNode("/Other");
    m_client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(NodeAt("/L"), nullptr);
    EXPECT_NE(NodeAt("/Other"), nullptr);
}

TEST_F(ControlTree, DisconnectingWhatIsNotConnectedDoesNothing) {
    Adopt();
    PutNode("/Other");
    const TraceRecorder recorder;
    m_client.DisconnectFromMCSControlTree(true);
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_NE(NodeAt("/Other"), nullptr);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_EQ(recorder.Messages(), Calls{});
}

TEST_F(ControlTree, DisconnectingIsToldOnceIfItWasConnected) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    m_vtClient.EstablishAll();
    m_observer.Clear();
    m_client.DisconnectFromMCSControlTree(false);
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_EQ(m_observer.Codes(), Codes{5022});
}

TEST_F(ControlTree, DisconnectingIsNotToldIfItNeverWasConnected) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_F(ControlTree, CanBeConnectedAnewAfterADisconnection) {
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    m_client.DisconnectFromMCSControlTree(false);
    EXPECT_TRUE(Connect(2));
    EXPECT_TRUE(m_client.AreMCSControlTreeSegmentsRequested(ConfigSegment));
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(StatusSegment));
}

TEST_F(ControlTree, IsForgottenWithTheClientThatMirroredIt) {
    FakeVtClient other;
    Adopt();
    ASSERT_TRUE(Connect(1 + 4));
    PutNode("/L/Status");
    m_vtClient.EstablishAll();
    m_observer.Clear();
    m_vtClient.ClearCalls();
    m_client.UseVtClient(&other);
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
    EXPECT_EQ(m_observer.Codes(), Codes{5022});
    // The tics stay with the client that is used no more, and have nobody to tell.
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    ASSERT_EQ(m_vtClient.Tics().size(), 2U);
    for (FakeVtTic* tic : m_vtClient.Tics())
        EXPECT_EQ(tic->CountObservers(), 0);
    EXPECT_NE(NodeAt("/L/Status"), nullptr);
}

// What is refused.

struct Refusal {
    const char* name;
    bool hasClient;
    unsigned requestedBefore;
    unsigned segments;
    const char* localPath;
    const char* message;
    const char* file;
    int line;
};

void PrintTo(const Refusal& row, std::ostream* stream) {
    *stream << row.name;
}

class RefusedControlTree : public ControlTree, public testing::WithParamInterface<Refusal> {
  protected:
    RefusedControlTree() {
        if (!GetParam().hasClient) return;
        Adopt();
        if (GetParam().requestedBefore != 0) Connect(GetParam().requestedBefore);
        m_vtClient.ClearCalls();
    }
    bool ConnectRefused() {
        return m_client.ConnectToMCSControlTree(Text(GetParam().localPath), Segments(GetParam().segments));
    }
};

TEST_P(RefusedControlTree, IsTracedAndLeavesAllAsItWas) {
    const TraceRecorder recorder(ErrorHandler::TraceWarnings);
    EXPECT_FALSE(ConnectRefused());
    ASSERT_EQ(recorder.Records().size(), 1U);
    EXPECT_EQ(recorder.Records()[0].message, Text(GetParam().message));
    EXPECT_EQ(recorder.Records()[0].file, Text(GetParam().file));
    EXPECT_EQ(recorder.Records()[0].line, GetParam().line);
    EXPECT_EQ(recorder.Records()[0].kind, TraceRecord::Trace);
    EXPECT_EQ(m_vtClient.Calls(), Calls{});
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text(GetParam().requestedBefore != 0 ? "/L" : ""));
    for (const unsigned bit : {1U, 2U, 4U, 8U, 16U})
        EXPECT_EQ(m_client.AreMCSControlTreeSegmentsRequested(Segments(bit)),
                  (GetParam().requestedBefore & bit) != 0);
    EXPECT_EQ(m_observer.Codes(), Codes{});
}

TEST_P(RefusedControlTree, IsNotTracedUnlessFailuresAre) {
    const TraceRecorder recorder(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_FALSE(ConnectRefused());
    EXPECT_EQ(recorder.Messages(), Calls{});
}

// Each row has all the later reasons too, so that the table shows their order.
INSTANTIATE_TEST_SUITE_P(
    Reasons, RefusedControlTree,
    testing::Values(
        Refusal{"NoClient", false, 0, 33, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: VtClientToUse not set", SourcePath, 135},
        Refusal{"SecondRequest", true, 4 + 8, 33, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: there are already MCS control tree "
                "segments connected (m_eRequestedControlTreeSegments=0x0000000c)",
                "", 0},
        Refusal{"SecondRequestOfAll", true, 31, 31, "/L",
                "MultiChannelServerClient::ConnectToMCSControlTree: there are already MCS control tree "
                "segments connected (m_eRequestedControlTreeSegments=0x0000001f)",
                "", 0},
        Refusal{"UnknownSegment", true, 0, 32, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid MCS control tree segments "
                "specified (eTreeSegmentsToConnect=0x00000020)",
                "", 0},
        Refusal{"UnknownSegmentBesideAKnownOne", true, 0, 33, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid MCS control tree segments "
                "specified (eTreeSegmentsToConnect=0x00000021)",
                "", 0},
        Refusal{"AllBits", true, 0, 0xffffffffU, "/L",
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid MCS control tree segments "
                "specified (eTreeSegmentsToConnect=0xffffffff)",
                "", 0},
        Refusal{"NoSegment", true, 0, 0, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: no MCS control tree segments specified "
                "(eTreeSegmentsToConnect=0x00000000)",
                "", 0},
        Refusal{"EmptyPath", true, 0, 4, "",
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid local MCS base path: "
                "sLocalMcsBasePath=",
                "", 0},
        Refusal{"RelativePath", true, 0, 4, "L\xc3\xa4/%s",
                "MultiChannelServerClient::ConnectToMCSControlTree: invalid local MCS base path: "
                "sLocalMcsBasePath=L\xc3\xa4/%s",
                "", 0}),
    [](const auto& row) { return row.param.name; });

struct Undoing {
    const char* name;
    int accepted;
    const char* refused;  ///< paths of the tic
    std::vector<const char*> undone;
};

class RefusedTic : public ControlTree, public testing::WithParamInterface<Undoing> {};

TEST_P(RefusedTic, UndoesTheTicsBeforeIt) {
    Adopt();
    PutNode("/L/Command");
    PutNode("/L/DynamicMpxORVs");
    m_vtClient.AcceptTics(GetParam().accepted);
    const TraceRecorder recorder;
    EXPECT_FALSE(Connect(31));
    ASSERT_EQ(recorder.Records().size(), 1U);
    EXPECT_EQ(recorder.Records()[0].message,
              Text("ConnectToMCSControlTree: AddTic(\"%1\") failed").arg(Text(GetParam().refused)));
    EXPECT_EQ(recorder.Records()[0].file, Text(SourcePath));
    EXPECT_EQ(recorder.Records()[0].line, 180);
    const auto& calls = m_vtClient.Calls();
    const Calls afterAdding(calls.begin() + GetParam().accepted + 1, calls.end());
    Calls undone;
    for (const char* call : GetParam().undone)
        undone.push_back(Text(call));
    EXPECT_EQ(afterAdding, undone);
    EXPECT_TRUE(m_vtClient.Tics().empty());
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
    EXPECT_FALSE(m_client.AreMCSControlTreeSegmentsRequested(AllSegments));
    EXPECT_EQ(m_observer.Codes(), Codes{});
    EXPECT_NE(NodeAt("/L/Command"), nullptr);
}

TEST_P(RefusedTic, IsNotTracedUnlessFailuresAre) {
    Adopt();
    m_vtClient.AcceptTics(GetParam().accepted);
    const TraceRecorder recorder(ErrorHandler::TraceAssertions | ErrorHandler::TraceDetails);
    EXPECT_FALSE(Connect(31));
    EXPECT_EQ(recorder.Messages(), Calls{});
}

TEST_P(RefusedTic, LeavesRoomForAnotherAttempt) {
    const TraceRecorder recorder;
    Adopt();
    m_vtClient.AcceptTics(GetParam().accepted);
    EXPECT_FALSE(Connect(31));
    m_vtClient.AcceptTics(5);
    EXPECT_TRUE(Connect(31));
    EXPECT_EQ(m_vtClient.Tics().size(), 5U);
}

INSTANTIATE_TEST_SUITE_P(
    Segments, RefusedTic,
    testing::Values(Undoing{"TheFirst", 0, "/L/Command,/MultiChannelServer/Command", {}},
                    Undoing{"TheThird",
                            2,
                            "/L/Status,/MultiChannelServer/Status",
                            {"ReleaseNode /L/Command", "RemoveTic /L/Command", "RemoveTic /L/Config"}},
                    Undoing{"TheLast",
                            4,
                            "/L/StaticMpxORVs,/MultiChannelServer/StaticMpxORVs",
                            {"ReleaseNode /L/Command", "RemoveTic /L/Command", "RemoveTic /L/Config",
                             "RemoveTic /L/Status", "ReleaseNode /L/DynamicMpxORVs",
                             "RemoveTic /L/DynamicMpxORVs"}}),
    [](const auto& row) { return row.param.name; });

}  // namespace
