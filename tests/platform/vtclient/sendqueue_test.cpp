// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/sendqueue.h>

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

namespace {

using vt::SendQueue;

QByteArray Large(char character, int more = 0) {
    return QByteArray(SendQueue::MinShared + more, character);
}

QByteArray Given(SendQueue& queue) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    queue.GiveTo(buffer);
    return buffer.data();
}

TEST(SendQueueTest, IsEmptyAtFirstAndHasNothingToGive) {
    SendQueue queue;
    EXPECT_TRUE(queue.IsEmpty());
    queue.AppendShared(QByteArray());
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_EQ(Given(queue), QByteArray());
}

TEST(SendQueueTest, GivesOwnAndSharedBytesInTheirOrder) {
    SendQueue queue;
    queue.AppendShared(Large('a'));
    queue.Append("one");
    queue.AppendShared(Large('b', 1));
    queue.AppendShared(Large('c'));
    queue.Append("two");
    queue.AppendShared("short");
    queue.Append("three");
    const QByteArray all = Large('a') + "one" + Large('b', 1) + Large('c') + "twoshortthree";
    EXPECT_EQ(queue.Size(), all.size());
    EXPECT_EQ(Given(queue), all);
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(SendQueueTest, GivesMoreThanTheSystemTakesInOneCall) {
    SendQueue queue;
    QByteArray all;
    for (int i = 0; i < 3 * vt::MaxSendPieces; ++i) {
        const QByteArray own = QByteArray::number(i);
        const QByteArray shared = Large(static_cast<char>('a' + i % 26));
        queue.Append({own.constData(), static_cast<std::size_t>(own.size())});
        queue.AppendShared(shared);
        all += own + shared;
    }
    EXPECT_EQ(Given(queue), all);
}

TEST(SendQueueTest, IsUsedAgain) {
    SendQueue queue;
    for (int round = 0; round < 3; ++round) {
        queue.Append("own");
        queue.AppendShared(Large('a'));
        EXPECT_EQ(Given(queue), "own" + Large('a'));
    }
}

TEST(SendQueueTest, DoesNotCopyWhatIsSharedAndLetsGoOfItOnceItIsGiven) {
    const QByteArray shared = Large('a');
    ASSERT_TRUE(shared.isDetached());
    SendQueue queue;
    queue.AppendShared(shared);
    EXPECT_FALSE(shared.isDetached()) << "it was copied";
    Given(queue);
    EXPECT_TRUE(shared.isDetached()) << "it is held for ever";
}

TEST(SendQueueTest, CopiesWhatIsShort) {
    const QByteArray shared("short, but of its own");
    SendQueue queue;
    queue.AppendShared(shared);
    EXPECT_TRUE(shared.isDetached());
}

}  // namespace
