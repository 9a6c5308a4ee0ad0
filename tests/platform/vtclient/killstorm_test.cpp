// SPDX-License-Identifier: Apache-2.0
// A server and a client in processes of their own, of which one or the other is killed at any moment, over
// and over, while both do all that they can.
#include <apps/common/childprogram.h>

#include <platform/vtclient/channel/socketcalls.h>
#include <tests/platform/vtclient/faultproxy.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gmock/gmock.h>

#include <random>

namespace {

#ifdef Q_OS_WIN
constexpr int Kills = 40;  // Wine starts a process in a second
#else
constexpr int Kills = 200;
#endif

/// A process, and what it has told.
struct Peer {
    explicit Peer(const char* its) : role(its) {}

    const char* role;
    ChildProgram process{ChildProgram::EErrors::AllPassedOn};
    QTcpSocket* control = nullptr;  ///< null until it has announced itself
    QString state;                  ///< empty until it has answered
};

class KillStorm : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_control.listen(QHostAddress(QHostAddress::LocalHost)));
        QObject::connect(&m_control, &QTcpServer::newConnection, &m_control, [this] {
            QTcpSocket* const socket = m_control.nextPendingConnection();
            vt::KeepFromChildren(socket->socketDescriptor());
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { OnLines(socket); });
        });
        Start(m_server);
        Start(m_client);
    }
    void TearDown() override {
        Kill(m_server);
        Kill(m_client);
    }

    void Start(Peer& peer) {
        QStringList words{QString::fromLatin1(peer.role), QString::number(m_control.serverPort()),
                          QString::number(++m_started)};
        if (&peer == &m_client) words += QString::number(m_network.Port());
        peer.state.clear();
        peer.process.Start(QStringLiteral(STORMPEER), words);
    }
    static void Kill(Peer& peer) {
        if (peer.control != nullptr) peer.control->disconnect();
        peer.control = nullptr;
        peer.process.Kill();
    }

    void OnLines(QTcpSocket* socket) {
        while (socket->canReadLine()) {
            const QString line = QString::fromUtf8(socket->readLine()).trimmed();
            const QString word = line.section(QLatin1Char(' '), 0, 0);
            const QString rest = line.section(QLatin1Char(' '), 1);
            if (word == QLatin1String("server") || word == QLatin1String("client"))
                OnAnnounced(word == QLatin1String("server") ? m_server : m_client, socket);
            else if (word == QLatin1String("port"))
                m_network.SetTarget(rest.toInt());
            else if (word == QLatin1String("state"))
                (socket == m_server.control ? m_server : m_client).state = rest;
            else
                m_errors.push_back(line);
        }
    }
    void OnAnnounced(Peer& peer, QTcpSocket* socket) {
        peer.control = socket;
        if (m_isActing) Command(peer, "act");
    }
    static void Command(Peer& peer, const char* command) {
        if (peer.control == nullptr) return;
        peer.control->write(QByteArray(command) + '\n');
    }
    void Ask() {
        for (Peer* const peer : {&m_server, &m_client}) {
            peer->state.clear();
            Command(*peer, "state");
        }
    }
    void SetActing(bool isActing) {
        m_isActing = isActing;
        Command(m_server, isActing ? "act" : "rest");
        Command(m_client, isActing ? "act" : "rest");
    }

    /// Both rest, and in the end their trees are alike.
    testing::AssertionResult ComeToRest() {
        SetActing(false);
        if (!WaitUntil([this] { return m_server.control != nullptr && m_client.control != nullptr; }))
            return testing::AssertionFailure() << "a process did not start";
        Ask();
        const bool isAtRest = WaitUntil([this] {
            if (m_server.state.isEmpty() || m_client.state.isEmpty()) return false;
            if (m_server.state == m_client.state) return true;
            Ask();
            return false;
        });
        if (isAtRest) return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "server: " << m_server.state.toStdString() << "\nclient: " << m_client.state.toStdString();
    }

    QTcpServer m_control;
    FaultProxy m_network{0};
    Peer m_server{"server"};
    Peer m_client{"client"};
    bool m_isActing = false;
    unsigned m_started = 0;
    std::vector<QString> m_errors;
    std::mt19937 m_random{7};
};

TEST_F(KillStorm, WhoeverIsKilledWheneverComesBackAndBothSidesAreAlike) {
    ASSERT_TRUE(ComeToRest());
    for (int kill = 0; kill < Kills; ++kill) {
        SCOPED_TRACE(testing::Message() << "kill " << kill);
        SetActing(true);
        // Some time after the start of the last one: while it connects, gets its first look, or later.
        const qint64 moment =
            m_network.CountBytes(EDirection::ToClient) + static_cast<qint64>(m_random() % 8000);
        ASSERT_TRUE(
            WaitUntil([this, moment] { return m_network.CountBytes(EDirection::ToClient) >= moment; }));
        ASSERT_TRUE(m_server.process.IsRunning() && m_client.process.IsRunning())
            << "nobody dies but who is killed";
        Peer& victim = m_random() % 2 == 0 ? m_server : m_client;
        Kill(victim);
        Start(victim);
        if (m_random() % 2 == 0) {
            ASSERT_TRUE(ComeToRest());
        }
        ASSERT_THAT(m_errors, testing::IsEmpty());
    }
    EXPECT_TRUE(ComeToRest());
}

}  // namespace
