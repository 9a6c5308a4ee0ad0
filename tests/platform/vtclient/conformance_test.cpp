// SPDX-License-Identifier: Apache-2.0
// What every transport owes the protocol. Each program that holds this source says which it tests.
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/channelpair.h>
#include <tests/platform/vtclient/recordinglistener.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

QByteArray Numbered(int number) {
    return QByteArray::number(number);
}

/// A text of \a size bytes in which no part is like another.
QByteArray Large(int size) {
    QByteArray text;
    text.reserve(size + 16);
    for (int i = 0; text.size() < size; ++i)
        text += QByteArray::number(i) + ' ';
    text.resize(size);
    return text;
}

class Conformance : public testing::TestWithParam<Transport> {
  protected:
    void SetUp() override {
        if (GetParam().obstacle != nullptr) {
            ASSERT_EQ(GetParam().obstacle(), QString());
        }
        m_pair = GetParam().connect();
        ASSERT_NE(m_pair, nullptr);
        m_pair->client->SetListener(&m_atClient);
        m_pair->server->SetListener(&m_atServer);
    }
    void AllowLarge() {
        m_pair->client->SetMaxMessage(vtlimits::MaxFrame);
        m_pair->server->SetMaxMessage(vtlimits::MaxFrame);
    }
    bool Arrives(const RecordingListener& listener, std::size_t count) {
        return m_pair->RunUntil([&listener, count] { return listener.messages.size() >= count; });
    }
    bool IsClosed(const RecordingListener& listener) {
        return m_pair->RunUntil([&listener] { return !listener.closings.empty(); });
    }

    RecordingListener m_atClient;
    RecordingListener m_atServer;
    std::unique_ptr<ChannelPair> m_pair;
};

TEST_P(Conformance, MessagesArriveWholeAndInOrderBothWays) {
    const std::vector<QByteArray> sent{"one", "", QByteArray("\0\1\2", 3), Large(4000), "last"};
    for (const QByteArray& message : sent) {
        m_pair->client->Send(message);
        m_pair->server->Send(message);
    }
    m_pair->client->Flush();
    m_pair->server->Flush();
    EXPECT_TRUE(Arrives(m_atServer, sent.size()));
    EXPECT_TRUE(Arrives(m_atClient, sent.size()));
    m_pair->Settle();
    EXPECT_EQ(m_atServer.messages, sent);
    EXPECT_EQ(m_atClient.messages, sent);
    EXPECT_GE(m_atServer.inputsDone, 1);
    EXPECT_GE(m_atClient.inputsDone, 1);
    EXPECT_THAT(m_atServer.closings, IsEmpty());
}

TEST_P(Conformance, AMessageInPartsArrivesAsOneAmongOthers) {
    const QByteArray shared = Large(3000);
    m_pair->server->Send("before");
    m_pair->server->SendInParts("head ", shared, " tail");
    m_pair->server->SendInParts("", shared, "");
    m_pair->server->SendInParts("head", QByteArray(), "tail");
    m_pair->server->SendInParts("", QByteArray(), "");
    m_pair->server->Send("after");
    m_pair->server->Flush();
    EXPECT_TRUE(Arrives(m_atClient, 6));
    EXPECT_THAT(m_atClient.messages, ElementsAre(QByteArray("before"), "head " + shared + " tail", shared,
                                                 QByteArray("headtail"), QByteArray(), QByteArray("after")));
}

TEST_P(Conformance, NothingIsSentBeforeTheFlush) {
    m_pair->client->Send("message");
    m_pair->Settle();
    EXPECT_THAT(m_atServer.messages, IsEmpty());
    m_pair->client->Flush();
    EXPECT_TRUE(Arrives(m_atServer, 1));
}

TEST_P(Conformance, WhatHasNotLeftIsUnsent) {
    EXPECT_EQ(m_pair->client->Unsent(), 0);
    m_pair->client->Send(Large(1000));
    EXPECT_GE(m_pair->client->Unsent(), 1000);
    m_pair->client->Flush();
    EXPECT_TRUE(Arrives(m_atServer, 1));
    EXPECT_TRUE(m_pair->RunUntil([this] { return m_pair->client->Unsent() == 0; }));
}

TEST_P(Conformance, APeerThatDoesNotReadLeavesTheRestUnsent) {
    AllowLarge();
    m_pair->server->SetListener(nullptr);
    const QByteArray message = Large(1 << 20);
    for (int i = 0; i < 24; ++i)
        m_pair->client->Send(message);
    m_pair->client->Flush();
    m_pair->Settle();
    EXPECT_GT(m_pair->client->Unsent(), 1 << 20);
    EXPECT_TRUE(m_pair->client->IsOpen());
}

TEST_P(Conformance, AMessageOfExactlyTheLimitPasses) {
    m_pair->client->Send(Large(vtlimits::MaxFrameBeforeWelcome));
    m_pair->client->Flush();
    EXPECT_TRUE(Arrives(m_atServer, 1));
    EXPECT_THAT(m_atServer.closings, IsEmpty());
}

TEST_P(Conformance, AMessageBeyondTheLimitClosesWithAReasonAndTheOneBeforeItCounts) {
    m_pair->client->Send("good");
    m_pair->client->Send(Large(vtlimits::MaxFrameBeforeWelcome + 1));
    m_pair->client->Send("never seen");
    m_pair->client->Flush();
    EXPECT_TRUE(IsClosed(m_atServer));
    m_pair->Settle();
    EXPECT_THAT(m_atServer.messages, ElementsAre(QByteArray("good")));
    EXPECT_THAT(m_atServer.closings,
                ElementsAre(QStringLiteral("a message of 4097 bytes, where 4096 are allowed")));
}

TEST_P(Conformance, WhoeverIsSentTooMuchCanStillSayWhyItCloses) {
    m_atServer.onClosed = [this] {
        EXPECT_TRUE(m_pair->server->IsOpen());
        m_pair->server->Send("too much");
    };
    for (int i = 0; i < 100; ++i)
        m_pair->client->Send(Large(vtlimits::MaxFrameBeforeWelcome + 1));
    m_pair->client->Flush();
    EXPECT_TRUE(IsClosed(m_atClient));
    EXPECT_THAT(m_atClient.messages, ElementsAre(QByteArray("too much")));
    EXPECT_THAT(m_atServer.closings, SizeIs(1));
    EXPECT_FALSE(m_pair->server->IsOpen());
}

TEST_P(Conformance, ClosingSendsWhatIsQueuedAlsoToAPeerWhoseWordsAreUnread) {
    AllowLarge();
    const QByteArray message = Large(1 << 20);
    for (int i = 0; i < 4; ++i)
        m_pair->client->Send(message);
    m_pair->client->Flush();
    for (int i = 0; i < 4; ++i)
        m_pair->server->Send(message);
    m_pair->server->Close();
    EXPECT_TRUE(IsClosed(m_atClient));
    EXPECT_THAT(m_atClient.messages, SizeIs(4));
}

TEST_P(Conformance, TheLimitCanBeRaised) {
    AllowLarge();
    const QByteArray message = Large(1 << 20);
    m_pair->client->Send(message);
    m_pair->client->Send("small");
    m_pair->client->Flush();
    EXPECT_TRUE(Arrives(m_atServer, 2));
    EXPECT_EQ(m_atServer.messages.at(0), message);
    EXPECT_EQ(m_atServer.messages.at(1), QByteArray("small"));
}

TEST_P(Conformance, TenThousandSmallMessagesOfOneTurnArriveInOrder) {
    constexpr int Count = 10000;
    for (int i = 0; i < Count; ++i)
        m_pair->server->Send(Numbered(i));
    m_pair->server->Flush();
    EXPECT_TRUE(Arrives(m_atClient, Count));
    for (int i = 0; i < Count; ++i)
        ASSERT_EQ(m_atClient.messages.at(static_cast<std::size_t>(i)), Numbered(i));
}

TEST_P(Conformance, ClosingSendsWhatIsQueuedAndTheOtherEndIsToldOnce) {
    AllowLarge();
    const QByteArray message = Large(1 << 20);
    m_pair->client->Send(message);
    m_pair->client->Send("farewell");
    m_pair->client->Close();
    EXPECT_FALSE(m_pair->client->IsOpen());
    EXPECT_TRUE(IsClosed(m_atServer));
    m_pair->Settle();
    EXPECT_THAT(m_atServer.messages, ElementsAre(message, QByteArray("farewell")));
    EXPECT_THAT(m_atServer.closings, SizeIs(1));
    EXPECT_FALSE(m_pair->server->IsOpen());
    EXPECT_THAT(m_atClient.closings, IsEmpty()) << "whoever closes is not told";
}

TEST_P(Conformance, DestroyingSendsWhatIsQueuedToo) {
    AllowLarge();
    const QByteArray message = Large(1 << 20);
    m_pair->client->Send(message);
    m_pair->client.reset();
    EXPECT_TRUE(IsClosed(m_atServer));
    EXPECT_THAT(m_atServer.messages, ElementsAre(message));
}

TEST_P(Conformance, ClosingTwiceAndSendingAfterwardsDoNothing) {
    m_pair->client->Close();
    m_pair->client->Close();
    m_pair->client->Send("too late");
    m_pair->client->Flush();
    EXPECT_TRUE(IsClosed(m_atServer));
    m_pair->Settle();
    EXPECT_THAT(m_atServer.messages, IsEmpty());
    EXPECT_THAT(m_atServer.closings, SizeIs(1));
}

TEST_P(Conformance, ClosingWhileAMessageIsGivenEndsTheGiving) {
    for (int i = 0; i < 10; ++i)
        m_pair->client->Send(Numbered(i));
    m_atServer.onMessage = [this] { m_pair->server->Close(); };
    m_pair->client->Flush();
    EXPECT_TRUE(IsClosed(m_atClient));
    m_pair->Settle();
    EXPECT_THAT(m_atServer.messages, SizeIs(1));
    EXPECT_THAT(m_atServer.closings, IsEmpty());
}

TEST_P(Conformance, AChannelMayBeDestroyedWhenItsInputIsDone) {
    for (int i = 0; i < 10; ++i)
        m_pair->client->Send(Numbered(i));
    m_atServer.onInputDone = [this] { m_pair->server.reset(); };
    m_pair->client->Flush();
    EXPECT_TRUE(IsClosed(m_atClient));
    EXPECT_EQ(m_pair->server, nullptr);
    EXPECT_THAT(m_atClient.closings, SizeIs(1));
}

TEST_P(Conformance, AnAnswerSentWhileAMessageIsGivenArrives) {
    m_atServer.onMessage = [this] {
        m_pair->server->Send(m_atServer.messages.back());
        m_pair->server->Flush();
    };
    for (int i = 0; i < 100; ++i)
        m_pair->client->Send(Numbered(i));
    m_pair->client->Flush();
    EXPECT_TRUE(Arrives(m_atClient, 100));
    EXPECT_EQ(m_atClient.messages, m_atServer.messages);
}

TEST_P(Conformance, ThePeerIsNamed) {
    const Transport& transport = GetParam();
    EXPECT_FALSE(m_pair->client->PeerAddress().isEmpty());
    EXPECT_FALSE(m_pair->server->PeerAddress().isEmpty());
    EXPECT_EQ(m_pair->client->IsLoopback(), transport.atClient.isLoopback);
    EXPECT_EQ(m_pair->server->IsLoopback(), transport.atServer.isLoopback);
    EXPECT_EQ(m_pair->client->IsEncrypted(), transport.atClient.isEncrypted);
    EXPECT_EQ(m_pair->server->IsEncrypted(), transport.atServer.isEncrypted);
    EXPECT_EQ(m_pair->client->CertificateName(), QLatin1String(transport.atClient.certificateName));
    EXPECT_EQ(m_pair->server->CertificateName(), QLatin1String(transport.atServer.certificateName));
}

INSTANTIATE_TEST_SUITE_P(Transports, Conformance, testing::ValuesIn(TransportsToTest()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
