// SPDX-License-Identifier: Apache-2.0
// What a queue sends past Qt's sockets.
#include <platform/vtclient/channel/sendqueue.h>
#include <tests/platform/vtclient/nativepair_posix.h>

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

namespace {

class SendQueueAtOnce : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(m_pair.IsConnected()); }
    void Append(const QByteArray& own, const QByteArray& shared) {
        m_queue.Append({own.constData(), static_cast<std::size_t>(own.size())});
        m_queue.AppendShared(shared);
        m_all += own.toStdString() + shared.toStdString();
    }

    NativePair m_pair;
    vt::SendQueue m_queue;
    std::string m_all;
};

TEST_F(SendQueueAtOnce, SendsAllThatTheSystemTakesHoweverManyPieces) {
    for (int i = 0; i < 3 * vt::MaxSendPieces; ++i)
        Append(QByteArray::number(i), QByteArray(vt::SendQueue::MinShared, static_cast<char>('a' + i % 26)));
    m_queue.SendAtOnce(m_pair.Near());
    EXPECT_TRUE(m_queue.IsEmpty());
    EXPECT_EQ(m_pair.Receive(m_all.size() + 1), m_all);
}

TEST_F(SendQueueAtOnce, GoesOnWhereTheSystemStopped) {
    // Own and shared bytes in turn, of lengths that make it stop anywhere.
    for (int i = 0; i < 2000; ++i)
        Append(QByteArray::number(i),
               QByteArray(vt::SendQueue::MinShared + i, static_cast<char>('a' + i % 26)));
    std::string received;
    int calls = 0;
    for (; !m_queue.IsEmpty(); ++calls) {
        ASSERT_LT(calls, 100000) << "it does not go on";
        m_queue.SendAtOnce(m_pair.Near());
        received += m_pair.Receive(static_cast<std::size_t>(1000 + calls * 777 % 50000));
    }
    received += m_pair.Receive(m_all.size());
    EXPECT_GT(calls, 10);
    EXPECT_TRUE(received == m_all);
}

TEST_F(SendQueueAtOnce, GivesTheRestToADevice) {
    Append("own", QByteArray(32 << 20, 'x'));
    Append("more", QByteArray(vt::SendQueue::MinShared, 'y'));
    m_queue.SendAtOnce(m_pair.Near());
    ASSERT_FALSE(m_queue.IsEmpty());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_queue.GiveTo(buffer);
    EXPECT_TRUE(m_queue.IsEmpty());
    EXPECT_TRUE(m_pair.Receive(m_all.size()) + buffer.data().toStdString() == m_all);
}

TEST_F(SendQueueAtOnce, KeepsEverythingWhereNobodyReadsAnyMore) {
    m_pair.CloseFar();
    Append("own", QByteArray(vt::SendQueue::MinShared, 'x'));
    m_queue.SendAtOnce(m_pair.Near());
    EXPECT_EQ(m_queue.Size(), static_cast<int>(m_all.size()));
}

}  // namespace
