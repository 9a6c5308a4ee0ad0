// SPDX-License-Identifier: Apache-2.0
// Other transports than TCP and TLS: schemes for clients, channels for the server.
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/channel/socketconnector.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/platform/vtclient/socketends.h>

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class Transports : public SocketEnds {
  protected:
    /// Schemes last as long as the process, so each test has one of its own.
    static bool Register(const char* scheme, VtConnectorMaker maker) {
        return VtClientCenter::Instance().RegisterScheme(QString::fromLatin1(scheme), std::move(maker));
    }
    static std::unique_ptr<vt::IConnector> None(const QString& /*host*/, int /*port*/,
                                                const VtClientOptions& /*options*/, QString* problem) {
        *problem = QStringLiteral("the cellar is locked");
        return nullptr;
    }
};

TEST_F(Transports, AClientComesInOverTheConnectorOfItsScheme) {
    Listen();
    QString askedHost;
    int askedPort = 0;
    ASSERT_TRUE(
        Register("tunnel", [&](const QString& host, int port, const VtClientOptions& options, QString*) {
            askedHost = host;
            askedPort = port;
            return std::make_unique<vt::SocketConnector>(QStringLiteral("127.0.0.1"), m_server.GetPort(),
                                                         false, options);
        }));
    IVtClient* const client = Connect("tunnel://cellar", 7);
    ASSERT_NE(client, nullptr);
    EXPECT_TRUE(ComesIn(client));
    EXPECT_EQ(askedHost, QStringLiteral("cellar"));
    EXPECT_EQ(askedPort, 7);
    EXPECT_EQ(client->GetServerAddress(), QStringLiteral("cellar"));
    Destroy(client);
}

TEST_F(Transports, AConnectorThatCannotBeMadeIsNoClientAndIsTracedWithTheReason) {
    ASSERT_TRUE(Register("locked", None));
    EXPECT_EQ(VtClientCenter::Instance().CreateVtClient("locked://cellar", 7), nullptr);
    ASSERT_FALSE(m_traces.Records().empty());
    EXPECT_THAT(m_traces.Records().back().message.toStdString(), HasSubstr("the cellar is locked"));
}

TEST_F(Transports, ASchemeIsRegisteredOnce) {
    EXPECT_FALSE(Register("mcs", None));
    EXPECT_FALSE(Register("mcss", None));
    EXPECT_TRUE(Register("once", None));
    EXPECT_FALSE(Register("once", None));
}

TEST_F(Transports, WhatIsNoSchemeIsRefused) {
    for (const char* const name : {"", "Tunnel", "7up", "a-b", "a://", "a\n"})
        EXPECT_FALSE(Register(name, None)) << name;
    EXPECT_FALSE(Register("nobody", nullptr));
}

TEST_F(Transports, TheServerTakesChannelsThatSomebodyElseAccepted) {
    Listen();
    QTcpServer door;
    ASSERT_TRUE(door.listen(QHostAddress::LocalHost));
    QObject::connect(&door, &QTcpServer::newConnection, &door, [&] {
        QTcpSocket* const socket = door.nextPendingConnection();
        socket->setParent(nullptr);
        m_server.Serve(std::make_unique<vt::FramedSocket>(socket));
    });
    IVtClient* const client = Connect("127.0.0.1", door.serverPort());
    EXPECT_TRUE(ComesIn(client));
    EXPECT_EQ(m_server.GetPeers().size(), 1U);
    Destroy(client);
}

TEST_F(Transports, AServerThatDoesNotListenClosesWhatItIsBrought) {
    const auto wire = std::make_shared<MemoryChannel::Wire>();
    m_server.Serve(std::make_unique<MemoryChannel>(wire, true));
    EXPECT_TRUE(wire->isAGone);
    EXPECT_FALSE(wire->isOpen);
}

}  // namespace
