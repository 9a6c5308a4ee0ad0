// SPDX-License-Identifier: Apache-2.0
// What a channel over TCP sends, as a peer sees it that reads when it likes.
#include <platform/vtclient/channel/framedsocket.h>
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

constexpr int Deadline = 10000;         // ms
constexpr int SmallBuffer = 16 * 1024;  // asked of the system, which may take more

QByteArray Framed(const QByteArray& message) {
    const quint32 size = qToBigEndian(static_cast<quint32>(message.size()));
    return QByteArray(reinterpret_cast<const char*>(&size), sizeof size) + message;
}

/// A text that is like no other one's, of \a size bytes.
QByteArray Numbered(int number, int size) {
    return QByteArray::number(number).leftJustified(size, static_cast<char>('a' + number % 26));
}

class Sending : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_server.listen(QHostAddress(QHostAddress::LocalHost)));
        m_peer.setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, SmallBuffer);
        m_peer.connectToHost(m_server.serverAddress(), m_server.serverPort());
        ASSERT_TRUE(WaitUntil([this] { return m_server.hasPendingConnections(); }));
        QTcpSocket* const socket = m_server.nextPendingConnection();
        socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, SmallBuffer);
        ASSERT_TRUE(WaitUntil([this] { return m_peer.state() == QAbstractSocket::ConnectedState; }));
        m_channel = std::make_unique<vt::FramedSocket>(socket);
        m_channel->SetListener(&m_listener);
        RunTurns(2);
    }
    /// From now on what the channel sends stays with the system, and when that has enough with the channel.
    void StopReading() { m_peer.setReadBufferSize(1); }
    void Send(const QByteArray& message) {
        m_channel->Send(message);
        m_sent += Framed(message);
    }
    /// Sends and flushes, message by message, until the system takes no more and \a waiting bytes wait.
    void SendUntilWaiting(qint64 waiting) {
        for (int i = 0; m_channel->Unsent() < waiting; ++i) {
            ASSERT_LT(i, 100000) << "the system takes everything";
            Send(Numbered(i, 1000 + i % 7 * 500));
            m_channel->Flush();
        }
    }
    /// Everything that the peer gets until as much has come as was sent.
    bool ReceivesAll() {
        m_peer.setReadBufferSize(0);
        return WaitUntil([this] {
            m_received += m_peer.readAll();
            return m_received.size() >= m_sent.size();
        });
    }
    /// The same, to the end of the connection.
    bool ReceivesTheEnd() {
        m_peer.setReadBufferSize(0);
        return WaitUntil([this] {
            m_received += m_peer.readAll();
            return m_peer.state() == QAbstractSocket::UnconnectedState;
        });
    }

    QTcpServer m_server;
    QTcpSocket m_peer;
    RecordingListener m_listener;
    std::unique_ptr<vt::FramedSocket> m_channel;
    QByteArray m_sent;  ///< as it stands on the wire
    QByteArray m_received;
};

TEST_F(Sending, WhatIsFlushedIsOnItsWayBeforeTheEventLoopGoesOn) {
    Send("one");
    Send("two");
    m_channel->Flush();
    EXPECT_EQ(m_channel->Unsent(), 0);
    while (m_received.size() < m_sent.size() && m_peer.waitForReadyRead(Deadline))
        m_received += m_peer.readAll();
    EXPECT_EQ(m_received, m_sent);
}

TEST_F(Sending, WhatTheSystemDoesNotTakeWaitsAndArrivesInOrder) {
    StopReading();
    SendUntilWaiting(200 * 1000);
    EXPECT_TRUE(m_channel->IsOpen());
    ASSERT_TRUE(ReceivesAll());
    EXPECT_TRUE(m_received == m_sent) << "not as they were sent";
    EXPECT_TRUE(WaitUntil([this] { return m_channel->Unsent() == 0; }));
    EXPECT_THAT(m_listener.closings, IsEmpty());
}

TEST_F(Sending, OneMessageOfWhichTheSystemTakesAPartArrivesWhole) {
    StopReading();
    Send(Numbered(1, 8 << 20));
    m_channel->Flush();
    EXPECT_GT(m_channel->Unsent(), 0);
    EXPECT_LT(m_channel->Unsent(), m_sent.size()) << "it took nothing";
    ASSERT_TRUE(ReceivesAll());
    EXPECT_TRUE(m_received == m_sent);
}

TEST_F(Sending, WhatIsSharedArrivesInOrderHoweverMuchTheSystemTakes) {
    StopReading();
    const QByteArray shared = Numbered(7, 50000);
    for (int i = 0; i < 100; ++i) {
        m_channel->SendInParts("head", shared, "tail");
        m_sent += Framed("head" + shared + "tail");
        Send(Numbered(i, 10));
        if (i % 10 == 9) m_channel->Flush();
    }
    EXPECT_GT(m_channel->Unsent(), 0);
    EXPECT_TRUE(shared.isDetached()) << "what waits belongs to nobody else";
    ASSERT_TRUE(ReceivesAll());
    EXPECT_TRUE(m_received == m_sent);
}

TEST_F(Sending, WhatIsSentLaterStaysBehindWhatWaitsAlsoWhenTheSystemHasRoomAgain) {
    StopReading();
    SendUntilWaiting(50 * 1000);
    // Room in the system, of which the channel hears by and by.
    for (int round = 0; round < 20; ++round) {
        m_peer.setReadBufferSize(qint64{1} << 20);
        RunTurns(1);
        m_received += m_peer.readAll();
        Send(Numbered(round, 100));
        m_channel->Flush();
    }
    ASSERT_TRUE(ReceivesAll());
    EXPECT_TRUE(m_received == m_sent);
}

TEST_F(Sending, GoesOnAtOnceOnceNothingWaitsAnyMore) {
    StopReading();
    SendUntilWaiting(50 * 1000);
    ASSERT_TRUE(ReceivesAll());
    ASSERT_TRUE(WaitUntil([this] { return m_channel->Unsent() == 0; }));
    Send("afterwards");
    m_channel->Flush();
    EXPECT_EQ(m_channel->Unsent(), 0);
    ASSERT_TRUE(ReceivesAll());
    EXPECT_TRUE(m_received == m_sent);
}

TEST_F(Sending, ClosingSendsWhatWasNotFlushedAndThenTheEnd) {
    Send("not flushed");
    m_channel->Close();
    ASSERT_TRUE(ReceivesTheEnd());
    EXPECT_EQ(m_received, m_sent);
    EXPECT_EQ(m_peer.error(), QAbstractSocket::RemoteHostClosedError) << "and no reset";
}

TEST_F(Sending, ClosingSendsWhatWaitsAndThenTheEnd) {
    StopReading();
    SendUntilWaiting(200 * 1000);
    Send("the last words");
    m_channel->Close();
    ASSERT_TRUE(ReceivesTheEnd());
    EXPECT_TRUE(m_received == m_sent);
    EXPECT_EQ(m_peer.error(), QAbstractSocket::RemoteHostClosedError);
}

TEST_F(Sending, ClosingSendsWhatWaitsHoweverManyPeersNeverReadTheirLastWords) {
    std::vector<std::unique_ptr<QTcpSocket>> silent;
    for (std::size_t i = 0; i < 2 * vtlimits::MaxLingering; ++i) {
        silent.push_back(std::make_unique<QTcpSocket>());
        silent.back()->setReadBufferSize(1);
        silent.back()->connectToHost(m_server.serverAddress(), m_server.serverPort());
        ASSERT_TRUE(WaitUntil([this] { return m_server.hasPendingConnections(); })) << i;
        vt::FramedSocket channel(m_server.nextPendingConnection());
        channel.Send("the last words");
    }
    StopReading();
    SendUntilWaiting(200 * 1000);
    m_channel->Close();
    ASSERT_TRUE(ReceivesTheEnd());
    EXPECT_TRUE(m_received == m_sent);
}

TEST_F(Sending, ClosingSendsTheLastWordsToAPeerWhoseOwnAreUnread) {
    m_channel->SetListener(nullptr);
    m_peer.write(QByteArray(100 * 1000, 'x'));
    m_peer.flush();
    ASSERT_TRUE(WaitUntil([this] { return m_peer.bytesToWrite() == 0; }));
    Send("the last words");
    m_channel->Close();
    ASSERT_TRUE(ReceivesTheEnd());
    EXPECT_EQ(m_received, m_sent);
    EXPECT_EQ(m_peer.error(), QAbstractSocket::RemoteHostClosedError);
}

TEST_F(Sending, APeerThatResetsWhileSomethingWaitsIsToldOfOnce) {
    StopReading();
    SendUntilWaiting(50 * 1000);
    m_peer.abort();
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    RunTurns(3);
    EXPECT_THAT(m_listener.closings, SizeIs(1));
    EXPECT_FALSE(m_channel->IsOpen());
}

TEST_F(Sending, APeerThatClosedIsToldOfOnceHoweverOftenIsSent) {
    m_peer.disconnectFromHost();
    for (int i = 0; i < 3; ++i) {
        Send("into the void");
        m_channel->Flush();
    }
    EXPECT_THAT(m_listener.closings, IsEmpty()) << "not from within the flush";
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.closings.empty(); }));
    RunTurns(3);
    EXPECT_THAT(m_listener.closings, SizeIs(1));
}

}  // namespace
