// SPDX-License-Identifier: Apache-2.0
#include "remoteobjectsroad.h"

#include "rep_valuechannel_merged.h"

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <QtRemoteObjects/QRemoteObjectHost>
#include <QtRemoteObjects/QRemoteObjectNode>

namespace bench {

namespace {

class Channel final : public ValueChannelSource {
  public:
    void report(int client, int content) override { onReport(client, content); }

    std::function<void(int client, int content)> onReport;
};

// The sockets are made here, so that they send small packets at once, as those of the other roads do.
class RemoteObjectsServerEnd final : public ServerEnd {
  public:
    void Open() override {
        m_channel.onReport = onReport;
        m_host.setHostUrl(QUrl(QStringLiteral("mcsbench:server")),
                          QRemoteObjectHost::AllowExternalRegistration);
        m_host.enableRemoting(&m_channel, QStringLiteral("Channel"));
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* const socket = m_server.nextPendingConnection();
            socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            m_host.addHostSideConnection(socket);
        });
        m_server.listen(QHostAddress(QHostAddress::LocalHost), 0);
        onOpen(m_server.serverPort());
    }
    void Set(int index, int content) override { emit m_channel.changed(index, content); }

  private:
    QTcpServer m_server;
    QRemoteObjectHost m_host;
    Channel m_channel;
};

class RemoteObjectsClientEnd final : public ClientEnd {
  public:
    RemoteObjectsClientEnd(int client, int port) : m_client(client), m_port(static_cast<quint16>(port)) {}

    void Open() override {
        QObject::connect(&m_socket, &QTcpSocket::connected, &m_socket, [this] {
            m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
            m_node.addClientSideConnection(&m_socket);
            Acquire();
        });
        m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
    }
    void Report(int content) override { m_replica->report(m_client, content); }

  private:
    void Acquire() {
        m_replica.reset(m_node.acquire<ValueChannelReplica>(QStringLiteral("Channel")));
        QObject::connect(m_replica.get(), &ValueChannelReplica::changed, &m_socket,
                         [this](int index, int content) { onChange(index, content); });
        QObject::connect(m_replica.get(), &QRemoteObjectReplica::initialized, &m_socket,
                         [this] { onReady(); });
    }

    int m_client;
    quint16 m_port;
    QTcpSocket m_socket;
    QRemoteObjectNode m_node;
    std::unique_ptr<ValueChannelReplica> m_replica;
};

}  // namespace

Road MakeRemoteObjectsRoad() {
    return {QStringLiteral("remoteobjects"),
            [](const RoadSetup&) { return std::make_unique<RemoteObjectsServerEnd>(); },
            [](const RoadSetup&, int client, int port) {
                return std::make_unique<RemoteObjectsClientEnd>(client, port);
            }};
}

}  // namespace bench
