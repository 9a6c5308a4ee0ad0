// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/framedsocket.h>
#include <platform/vtclient/wire/bytebuffer.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/recordinglistener.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtCore/QtEndian>
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

/// A channel to a peer that begins messages.
class BegunMessages : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_server.listen(QHostAddress(QHostAddress::LocalHost)));
        m_peer.connectToHost(m_server.serverAddress(), m_server.serverPort());
        ASSERT_TRUE(WaitUntil([this] { return m_server.hasPendingConnections(); }));
        m_socket = m_server.nextPendingConnection();
        m_channel = std::make_unique<vt::FramedSocket>(m_socket);
        m_channel->SetMaxMessage(vtlimits::MaxFrame);
        m_channel->SetListener(&m_listener);
    }
    /// Announces a message of the largest size, of which \a size bytes come.
    void Begin(int size) {
        QByteArray head(4, '\0');
        qToBigEndian(vtlimits::MaxFrame, head.data());
        m_peer.write(head + QByteArray(size, 'x'));
    }
    /// Whether all that the peer has sent was taken from the socket, and so is in the channel.
    bool IsTaken(int size) {
        return WaitUntil([this, size] {
            return m_peer.bytesToWrite() == 0 && m_channel->Unfinished() >= size &&
                   m_socket->bytesAvailable() == 0;
        });
    }

    QTcpServer m_server;
    QTcpSocket m_peer;
    QTcpSocket* m_socket = nullptr;
    RecordingListener m_listener;
    std::unique_ptr<vt::FramedSocket> m_channel;
};

TEST_F(BegunMessages, CostWhatHasComeAndNotWhatWasAnnounced) {
    Begin(1000);
    ASSERT_TRUE(IsTaken(1004));
    EXPECT_LE(m_channel->Unfinished(), 4096);
}

TEST_F(BegunMessages, AreReadAheadByLittle) {
    EXPECT_LE(m_socket->readBufferSize(), vt::ByteBuffer::KeptRoom);
    constexpr int Size = 700'000;
    Begin(Size);
    ASSERT_TRUE(IsTaken(Size)) << "it is taken although less is read ahead";
}

TEST_F(BegunMessages, LeaveNoRoomBehindOnceTheyWereHandled) {
    QByteArray whole(4, '\0');
    qToBigEndian<quint32>(60'000, whole.data());
    m_peer.write(whole + QByteArray(60'000, 'x'));
    ASSERT_TRUE(WaitUntil([this] { return !m_listener.messages.empty(); }));
    EXPECT_GE(m_channel->Unfinished(), 60'000);
    m_channel->GiveBackRoom();
    EXPECT_LE(m_channel->Unfinished(), vt::ByteBuffer::FirstRoom);
}

TEST_F(BegunMessages, StayWhenRoomIsGivenBack) {
    Begin(1000);
    ASSERT_TRUE(IsTaken(1004));
    m_channel->GiveBackRoom();
    m_peer.write(QByteArray(static_cast<int>(vtlimits::MaxFrame) - 1000, 'y'));
    ASSERT_TRUE(WaitUntil([this] { return !m_listener.messages.empty(); }));
    EXPECT_EQ(m_listener.messages[0].size(), static_cast<int>(vtlimits::MaxFrame));
    EXPECT_TRUE(m_listener.messages[0].startsWith("xxx"));
    EXPECT_TRUE(m_listener.messages[0].endsWith("yyy"));
}

}  // namespace
