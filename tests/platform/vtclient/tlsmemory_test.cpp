// SPDX-License-Identifier: Apache-2.0
// What TLS connections make a server hold.
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/channel/lingeringsocket.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/platform/vtclient/descriptorlimit.h>
#include <tests/platform/vtclient/recordinglistener.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QtEndian>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslSocket>
#include <QtNetwork/QTcpServer>

#include <gmock/gmock.h>

#include <QtCore/QElapsedTimer>

#include <algorithm>

namespace {

using testing::Contains;

/// Whoever connects speaks TLS with it.
class OneTlsServer final : public QTcpServer {
  public:
    QSslSocket* Socket() const { return m_socket; }

  protected:
    void incomingConnection(qintptr descriptor) override {
        m_socket = new QSslSocket;
        m_socket->setSocketDescriptor(descriptor);
        QSslConfiguration configuration = m_socket->sslConfiguration();
        configuration.setLocalCertificate(QSslCertificate(Read("server.pem")));
        configuration.setPrivateKey(QSslKey(Read("server.key"), QSsl::Ec));
        m_socket->setSslConfiguration(configuration);
        m_socket->startServerEncryption();
    }

  private:
    static QByteArray Read(const char* name) {
        QFile file(Certificates::Instance().File(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QSslSocket* m_socket = nullptr;
};

/// The server's end of a TLS connection as a channel, and the client's by hand.
class TlsChannel : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(Certificates::Instance().Error(), QString());
        ASSERT_TRUE(WaitUntil([] { return CountLingering() == 0; })) << "those of other tests";
        ASSERT_TRUE(m_server.listen(QHostAddress(QHostAddress::LocalHost)));
        m_peer.setPeerVerifyMode(QSslSocket::VerifyNone);
        m_peer.connectToHostEncrypted(m_server.serverAddress().toString(), m_server.serverPort());
        ASSERT_TRUE(WaitUntil([this] {
            return m_peer.isEncrypted() && m_server.Socket() != nullptr && m_server.Socket()->isEncrypted();
        }));
        m_socket = m_server.Socket();
        m_channel = std::make_unique<vt::FramedSocket>(m_socket);
        m_channel->SetMaxMessage(vtlimits::MaxFrame);
        m_channel->SetListener(&m_listener);
    }
    /// Announces a message of the largest size, of which \a size bytes come.
    void Begin(int size) {
        QByteArray head(4, '\0');
        qToBigEndian(vtlimits::MaxFrame, head.data());
        m_peer.write(head + QByteArray(size, 'x'));
        ASSERT_TRUE(WaitUntil([this, size] { return m_channel->Unfinished() >= size; }));
    }
    static int CountLingering() {
        return QCoreApplication::instance()->findChildren<vt::LingeringSocket*>().size();
    }

    OneTlsServer m_server;
    QSslSocket m_peer;
    QPointer<QSslSocket> m_socket;
    RecordingListener m_listener;
    std::unique_ptr<vt::FramedSocket> m_channel;
};

TEST_F(TlsChannel, ReadsAheadByLittleAndYetTakesEverything) {
    EXPECT_LE(m_socket->readBufferSize(), vtlimits::TlsReadAhead);
    Begin(static_cast<int>(vtlimits::MaxFrame) - 1);
    m_peer.write("y", 1);
    ASSERT_TRUE(WaitUntil([this] { return !m_listener.messages.empty(); }));
    EXPECT_EQ(m_listener.messages[0].size(), static_cast<int>(vtlimits::MaxFrame));
    EXPECT_TRUE(m_listener.messages[0].endsWith("xy"));
}

TEST_F(TlsChannel, CountsWithALargeMessageWhatTlsHolds) {
    Begin(1000);
    EXPECT_LE(m_channel->Unfinished(), 4096) << "a small one costs itself";
    m_peer.write(QByteArray(100'000, 'x'));
    EXPECT_TRUE(WaitUntil([this] { return m_channel->Unfinished() >= 101'000 + vtlimits::TlsConnection; }));
}

TEST_F(TlsChannel, ThatIsClosedCostsNoEncryptionOnceItsLastWordsHaveLeft) {
    m_peer.setReadBufferSize(1);  // it does not see the end
    m_channel->Send("farewell");
    m_channel->Close();
    EXPECT_TRUE(WaitUntil([this] { return m_socket.isNull(); }));
#ifndef Q_OS_WIN  // which tells of the end also whoever does not read
    EXPECT_EQ(CountLingering(), 1) << "its connection is still there";
#endif
    m_peer.write(QByteArray(1'000'000, 'x'));
    RunTurns(10);
    m_peer.setReadBufferSize(0);
    QByteArray received;
    EXPECT_TRUE(WaitUntil([this, &received] {
        received += m_peer.readAll();
        return received.endsWith("farewell");
    }));
    EXPECT_TRUE(WaitUntil([] { return CountLingering() == 0; }));
}

class TlsDoor : public SocketEnds {
  protected:
    void SetUp() override {
        RaiseDescriptorLimit();  // both ends of each connection are here
        ASSERT_EQ(Certificates::Instance().Error(), QString());
        m_serverOptions.certificateFile = Certificates::Instance().File("server.pem");
        m_serverOptions.privateKeyFile = Certificates::Instance().File("server.key");
        m_clientOptions.caFile = Certificates::Instance().File("authority.pem");
        Listen();
    }
    static QElapsedTimer Started() {
        QElapsedTimer time;
        time.start();
        return time;
    }
    /// What a client that speaks TLS says first.
    static QByteArray FirstWords() {
        QTcpServer server;
        server.listen(QHostAddress(QHostAddress::LocalHost));
        QSslSocket client;
        client.connectToHostEncrypted(server.serverAddress().toString(), server.serverPort());
        EXPECT_TRUE(WaitUntil([&server] { return server.hasPendingConnections(); }));
        QTcpSocket* const socket = server.nextPendingConnection();
        EXPECT_TRUE(WaitUntil([socket] { return socket->bytesAvailable() != 0; }));
        return socket->readAll();
    }
};

TEST_F(TlsDoor, HandshakesThatStopHalfwayAreBoundedAndKeepNobodyOut) {
    constexpr int Surplus = 50;
    const QByteArray words = FirstWords();
    const QElapsedTimer time = Started();
    std::vector<std::unique_ptr<SocketPeer>> peers;
    const auto countAnswered = [&peers] {
        return std::count_if(peers.begin(), peers.end(),
                             [](const auto& peer) { return peer->Socket().bytesAvailable() != 0; });
    };
    for (int i = 0; i < vtlimits::MaxHandshakes + Surplus; ++i) {
        peers.push_back(std::make_unique<SocketPeer>(m_server.GetPort()));
        ASSERT_TRUE(peers.back()->WaitConnected());
        peers.back()->SendBytes(words);
    }
    IVtClient* const client = Connect("mcss://127.0.0.1");
    EXPECT_TRUE(WaitUntil([&] { return countAnswered() == vtlimits::MaxHandshakes + Surplus; }));
    EXPECT_TRUE(ComesIn(client)) << client->GetLastError().toStdString();
    if (time.hasExpired(vtlimits::HelloTimeout.count())) return;  // so long that the first have run out of it
    EXPECT_THAT(m_traces.Messages(),
                Contains(QStringLiteral("A connection from 127.0.0.1 is refused: it takes its time with the "
                                        "TLS handshake, and others wait")));
}

}  // namespace
