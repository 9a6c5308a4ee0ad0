// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/framedsocket.h>
#include <tests/platform/vtclient/recordinglistener.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;
using testing::SizeIs;

TEST(FramedSocketTest, DoesNotGatherSmallMessages) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress(QHostAddress::LocalHost)));
    auto* const socket = new QTcpSocket;
    socket->connectToHost(server.serverAddress(), server.serverPort());
    ASSERT_TRUE(WaitUntil([socket] { return socket->state() == QAbstractSocket::ConnectedState; }));
    ASSERT_EQ(socket->socketOption(QAbstractSocket::LowDelayOption).toInt(), 0);
    const vt::FramedSocket channel(socket);
    EXPECT_EQ(socket->socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
}

/// A channel to a peer that resets the connection at a moment of which the channel has not heard yet.
class ResetConnection : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_server.listen(QHostAddress(QHostAddress::LocalHost)));
        auto* const socket = new QTcpSocket;
        socket->connectToHost(m_server.serverAddress(), m_server.serverPort());
        ASSERT_TRUE(WaitUntil([this, socket] {
            return m_server.hasPendingConnections() && socket->state() == QAbstractSocket::ConnectedState;
        }));
        m_peer = m_server.nextPendingConnection();
        m_channel = std::make_unique<vt::FramedSocket>(socket);
        m_channel->SetListener(&m_listener);
        RunTurns(2);
        m_channel->Send("never read");
        m_channel->Flush();
        m_peer->abort();
        m_channel->Send("sent into the void");
    }

    QTcpServer m_server;
    QTcpSocket* m_peer = nullptr;
    RecordingListener m_listener;
    std::unique_ptr<vt::FramedSocket> m_channel;
};

TEST_F(ResetConnection, IsToldFromTheEventLoopAndNotWithinTheFlushThatFindsIt) {
    m_channel->Flush();
    EXPECT_THAT(m_listener.closings, IsEmpty());
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    RunTurns(3);
    EXPECT_THAT(m_listener.closings, SizeIs(1));
    EXPECT_FALSE(m_channel->IsOpen());
}

TEST_F(ResetConnection, IsNotToldToWhoeverClosesTheChannelFirst) {
    m_channel->Close();
    RunTurns(3);
    EXPECT_THAT(m_listener.closings, IsEmpty());
    EXPECT_FALSE(m_channel->IsOpen());
}

TEST_F(ResetConnection, DoesNotKeepTheChannelFromBeingDestroyed) {
    m_channel.reset();
    RunTurns(3);
    EXPECT_THAT(m_listener.closings, IsEmpty());
}

}  // namespace
