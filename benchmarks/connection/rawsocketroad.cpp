// SPDX-License-Identifier: Apache-2.0
#include "rawsocketroad.h"

#include <QtCore/QObject>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <array>

namespace bench {

namespace {

struct Record {
    int number = 0;  ///< of the value, or of the client that reports
    int content = 0;
};

void Write(QTcpSocket& socket, const Record& record) {
    socket.write(reinterpret_cast<const char*>(&record), sizeof record);
}

template <class Handler>
void ReadAll(QTcpSocket& socket, Handler handler) {
    std::array<Record, 1024> records;
    while (socket.bytesAvailable() >= qint64{sizeof(Record)}) {
        const auto whole = socket.bytesAvailable() / qint64{sizeof(Record)} * qint64{sizeof(Record)};
        const qint64 count =
            socket.read(reinterpret_cast<char*>(records.data()), qMin(whole, qint64{sizeof records}));
        for (qint64 i = 0; i < count / qint64{sizeof(Record)}; ++i)
            handler(records[static_cast<std::size_t>(i)]);
    }
}

class RawServerEnd final : public ServerEnd {
  public:
    void Open() override {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { Accept(); });
        m_server.listen(QHostAddress(QHostAddress::LocalHost), 0);
        onOpen(m_server.serverPort());
    }
    void Set(int index, int content) override {
        for (QTcpSocket* socket : m_sockets)
            Write(*socket, {index, content});
    }
    void Send() override {
        for (QTcpSocket* socket : m_sockets)
            socket->flush();
    }

  private:
    void Accept() {
        QTcpSocket* const socket = m_server.nextPendingConnection();
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        m_sockets.push_back(socket);
        QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, socket] {
            ReadAll(*socket, [this](const Record& record) { onReport(record.number, record.content); });
        });
    }

    QTcpServer m_server;
    std::vector<QTcpSocket*> m_sockets;  // of the server
};

class RawClientEnd final : public ClientEnd {
  public:
    RawClientEnd(int client, int port) : m_client(client), m_port(static_cast<quint16>(port)) {}

    void Open() override {
        QObject::connect(&m_socket, &QTcpSocket::connected, &m_socket, [this] {
            m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
            onReady();
        });
        QObject::connect(&m_socket, &QTcpSocket::readyRead, &m_socket, [this] {
            ReadAll(m_socket, [this](const Record& record) { onChange(record.number, record.content); });
        });
        m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
    }
    void Report(int content) override {
        Write(m_socket, {m_client, content});
        m_socket.flush();
    }

  private:
    int m_client;
    quint16 m_port;
    QTcpSocket m_socket;
};

}  // namespace

Road MakeRawSocketRoad() {
    return {
        QStringLiteral("raw"), [](const RoadSetup&) { return std::make_unique<RawServerEnd>(); },
        [](const RoadSetup&, int client, int port) { return std::make_unique<RawClientEnd>(client, port); }};
}

}  // namespace bench
