// SPDX-License-Identifier: Apache-2.0
// A client and a server of MpxORVs, connected over loopback. Both are in this process and so share its tree:
// the server's part is at its usual place, the client's below /Local.
#include <devicecontrol/multichannelserver/common/mcsclientatserver.h>

#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>

#include <tests/devicecontrol/multichannelserver/common/serverclienttest.h>
#include <tests/support/doubles/testaccess.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <memory>

namespace {

using treeaccess::Text;
using treeaccess::ValueAt;
using Number = values::Value<int>;

class ClientAndServer : public testing::Test {
  protected:
    ClientAndServer() {
        // Makes the MpxORV that a client asks for.
        m_access.onProvide = [this](const QString& path) {
            if (values::Tree::Instance()->FindNode(path) != nullptr) return;
            m_mpxORVs.SetUniqueMpxORVName(path.section(QLatin1Char('/'), -1));
            m_mpxORVs.CreateAndConnectDynamicMpxORV(path);
        };
        treeaccess::PutValue<Number>(Text("/MultiChannelServer/Status"), "Level")->SetValue(7);
        VtServerOptions options;
        options.port = 0;
        QString error;
        EXPECT_TRUE(m_server.Listen(options, &error)) << error.toStdString();
        m_client.AddObserver(&m_observer);
        m_observer.React([this](Observable* /*source*/, TChangeCode /*code*/) { m_loop.quit(); });
    }
    ~ClientAndServer() override { m_client.DeleteObserver(&m_observer); }

    void Connect() { ASSERT_TRUE(m_client.ConnectToServer(Text("127.0.0.1"), m_server.GetPort())); }
    /// True once the client has told \a code since the last Clear() of the observer.
    bool IsTold(TChangeCode code) {
        QTimer deadline;
        deadline.setSingleShot(true);
        QObject::connect(&deadline, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        deadline.start(20000);
        while (m_observer.Count(code) == 0 && deadline.isActive())
            m_loop.exec();
        return m_observer.Count(code) != 0;
    }

    values::Tree m_tree;
    MCSClientAtServer m_mpxORVs;
    TestAccess m_access;
    VtServer m_server{m_access};
    MultiChannelServerClient m_client;
    RecordingObserver m_observer;
    QEventLoop m_loop;
};

TEST_F(ClientAndServer, TheClientMirrorsTheControlTreeAndLetsGoOfIt) {
    Connect();
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local"), StatusSegment));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    EXPECT_EQ(m_observer.Count(serverclientcode::ConnectedToServer), 1);
    EXPECT_TRUE(m_client.IsConnectedToServer());
    EXPECT_TRUE(m_client.IsMCSControlTreeConnected());
    ASSERT_NE(ValueAt<Number>(Text("/Local/Status/Level")), nullptr);
    EXPECT_EQ(ValueAt<Number>(Text("/Local/Status/Level"))->GetValue(), 7);
    m_observer.Clear();
    m_client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(m_observer.Codes(), std::vector<TChangeCode>{5022});
    EXPECT_EQ(m_tree.FindNode(Text("/Local")), nullptr);
    EXPECT_NE(ValueAt<Number>(Text("/MultiChannelServer/Status/Level")), nullptr);
    EXPECT_TRUE(m_client.IsConnectedToServer());
}

TEST_F(ClientAndServer, TheClientIsToldOfTheEndOfTheServer) {
    Connect();
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local"), StatusSegment));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    m_server.Close(Text("maintenance"));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeDisconnected));
    EXPECT_EQ(m_observer.Count(serverclientcode::DisconnectedFromServer), 1);
    EXPECT_FALSE(m_client.IsConnectedToServer());
}

TEST_F(ClientAndServer, ADynamicMpxORVIsMadeAtTheServerAndStaysThere) {
    Connect();
    m_client.SetUniqueMpxORVName(Text("Mine"));
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(Text("/Local/Mine"));
    ASSERT_NE(handle, nullptr);
    ASSERT_TRUE(IsTold(serverclientcode::MpxORVConnected));
    EXPECT_TRUE(handle->IsControlTreeConnected());
    EXPECT_NE(m_tree.FindNode(Text("/MultiChannelServer/DynamicMpxORVs/Mine")), nullptr);
    m_observer.Clear();
    delete handle;
    EXPECT_EQ(m_tree.FindNode(Text("/Local/Mine")), nullptr);
    EXPECT_NE(m_tree.FindNode(Text("/MultiChannelServer/DynamicMpxORVs/Mine")), nullptr);
    // What comes later tells nothing of it either.
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local"), StatusSegment));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    EXPECT_EQ(m_observer.Codes(), (std::vector<TChangeCode>{5025, 5021}));
}

TEST_F(ClientAndServer, TheControlTreeMayBeConnectedAgainInAnswerToItsEnd) {
    Connect();
    ASSERT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local"), StatusSegment));
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    m_observer.Clear();
    m_observer.React([this](Observable* /*source*/, TChangeCode code) {
        if (code != serverclientcode::ControlTreeDisconnected) return m_loop.quit();
        EXPECT_EQ(m_client.GetLocalMCSBasePath(), QString());
        EXPECT_EQ(m_tree.FindNode(Text("/Local")), nullptr);
        EXPECT_TRUE(m_client.ConnectToMCSControlTree(Text("/Local"), StatusSegment));
    });
    m_client.DisconnectFromMCSControlTree(true);
    EXPECT_EQ(m_observer.Codes(), std::vector<TChangeCode>{5022});
    ASSERT_TRUE(IsTold(serverclientcode::ControlTreeConnected));
    EXPECT_EQ(m_client.GetLocalMCSBasePath(), Text("/Local"));
    ASSERT_NE(ValueAt<Number>(Text("/Local/Status/Level")), nullptr);
    EXPECT_EQ(ValueAt<Number>(Text("/Local/Status/Level"))->GetState(), values::Valid);
}

TEST_F(ClientAndServer, TheClientMayGoWhileAHandleOfItIsDeleted) {
    treeaccess::PutValue<Number>(Text("/MultiChannelServer/StaticMpxORVs/One"), "Level");
    IVtClient* const adopted = VtClientCenter::Instance().CreateVtClient("127.0.0.1", m_server.GetPort());
    auto client = std::make_unique<MultiChannelServerClient>();
    client->AddObserver(&m_observer);
    client->UseVtClient(adopted);
    MpxORVHandle* const handle = client->ConnectStaticMpxORV(Text("/Mine"), Text("One"));
    ASSERT_TRUE(IsTold(serverclientcode::MpxORVConnected));
    RecordingObserver valueObserver(
        [&client](Observable* /*source*/, TChangeCode /*code*/) { client.reset(); });
    auto* const value = ValueAt<Number>(Text("/Mine/Level"));
    ASSERT_NE(value, nullptr);
    value->AddObserver(&valueObserver);
    delete handle;
    EXPECT_EQ(client, nullptr);
    EXPECT_EQ(m_tree.FindNode(Text("/Mine")), nullptr);
    EXPECT_TRUE(adopted->AreAllTicsEstablished()) << "its tic is left behind";
    VtClientCenter::Instance().DestroyVtClient(adopted);
}

TEST_F(ClientAndServer, AnMpxORVThatEndsAtTheServerIsDisconnectedAtTheClient) {
    Connect();
    m_client.SetUniqueMpxORVName(Text("Mine"));
    MpxORVHandle* const handle = m_client.CreateAndConnectDynamicMpxORV(Text("/Local/Mine"));
    ASSERT_TRUE(IsTold(serverclientcode::MpxORVConnected));
    m_mpxORVs.DisconnectAllMpxORVs();
    ASSERT_TRUE(IsTold(serverclientcode::MpxORVDisconnected));
    EXPECT_FALSE(handle->IsControlTreeConnected());
}

TEST_F(ClientAndServer, TheClientMayGoAtAnyMomentOfTheConnection) {
    for (const TChangeCode code : {5019, 5021, 5023, 5025}) {
        auto client = std::make_unique<MultiChannelServerClient>();
        RecordingObserver observer;
        observer.React([&](Observable* /*source*/, TChangeCode told) {
            if (told != code) return;
            client.reset();
            m_loop.quit();
        });
        client->AddObserver(&observer);
        ASSERT_TRUE(client->ConnectToServer(Text("127.0.0.1"), m_server.GetPort()));
        ASSERT_TRUE(client->ConnectToMCSControlTree(Text("/Local"), StatusSegment));
        client->SetUniqueMpxORVName(Text("Mine"));
        ASSERT_NE(client->CreateAndConnectDynamicMpxORV(Text("/Mine")), nullptr);
        QTimer::singleShot(20000, &m_loop, &QEventLoop::quit);
        m_loop.exec();
        EXPECT_EQ(client, nullptr) << code;
    }
}

}  // namespace
