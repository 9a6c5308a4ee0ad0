// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/doubles/fakevtclient.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <vector>

/// A client of the server that shows the operations meant for derived classes.
template <class Client>
class OpenedClient : public Client {
  public:
    using Client::Client;
    using Client::ConnectMpxORV;
    using Client::IsPathValid;
    using Client::Update;
};

/// A handle that shows the operations meant for its client.
class OpenedHandle : public MpxORVHandle {
  public:
    OpenedHandle(MultiChannelServerClient& client, bool ownTic) : MpxORVHandle(client, ownTic) {}
    using MpxORVHandle::ConnectMpxORVControlTreeLocal;
    using MpxORVHandle::ConnectMpxORVControlTreeRemote;
    using MpxORVHandle::DisconnectMpxORVControlTree;
    using MpxORVHandle::Update;
};

/// A client of the server with a value-tree client that it may adopt, and an observer that notes what the
/// former tells.
class ServerClientTest : public testing::Test {
  protected:
    using Codes = std::vector<TChangeCode>;
    using Calls = std::vector<QString>;
    static constexpr auto Text = treeaccess::Text;

    ServerClientTest() { m_client.AddObserver(&m_observer); }
    ~ServerClientTest() override { m_client.DeleteObserver(&m_observer); }

    void Adopt() { m_client.UseVtClient(&m_vtClient); }
    /// Adopts the value-tree client and asks for \a segments below /Local/MCS.
    void AdoptWithSegments(EMCSControlTreeSegments segments) {
        Adopt();
        ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local/MCS"), segments));
    }
    static values::Node* NodeAt(const char* path) { return values::Tree::Instance()->FindNode(Text(path)); }
    static values::Node* PutNode(const char* path) {
        return values::Tree::Instance()->ProvideNode(Text(path));
    }

    values::Tree m_tree;
    FakeVtClient m_vtClient;
    OpenedClient<MultiChannelServerClient> m_client;
    RecordingObserver m_observer;
};

inline EMCSControlTreeSegments Segments(unsigned bits) {
    return static_cast<EMCSControlTreeSegments>(bits);
}
