// SPDX-License-Identifier: Apache-2.0
// What clients can make a server hold.
#include <tests/platform/vtclient/serverrules.h>

using namespace std::chrono_literals;

namespace {

using namespace serverrules;
using testing::HasSubstr;

class ServerMemory : public ServerRules {
  protected:
    static constexpr qint64 Memory = 1 << 20;
    static constexpr int TextLength = 1000;

    ServerMemory() {
        m_settings.memoryBytes = Memory;
        m_settings.giveBack = [this] { ++m_givenBack; };
        m_hub.reset();
        StartServer();
        m_log = Add<Text>("/S", "log");
        m_log->SetDelivery(values::EDelivery::EveryChange);
    }
    /// A client that says as whom it comes, and follows the log.
    RawPeer& Follower(const char* user, const char* address = "10.0.0.1:1") {
        RawPeer& peer = Connect(address);
        vt::HelloMessage hello = Hello();
        hello.user = S(user);
        peer.Send(hello);
        peer.Send(Subscribe(1, "/S/log"));
        Run();
        EXPECT_EQ(peer.Count<vt::EndMessage>(), 1);
        return peer;
    }
    void Log(int lines) {
        for (int i = 0; i < lines; ++i) {
            m_log->SetValue(QString::number(++m_lines).rightJustified(TextLength, QLatin1Char('.')));
            Run();
        }
    }
    static void AcknowledgeAll(RawPeer& peer) {
        peer.Send(Ack(static_cast<quint64>(peer.Count<vt::SnapshotMessage>() +
                                           peer.Count<vt::BatchMessage>() + peer.Count<vt::EndMessage>())));
    }
    static int CountEnded(const std::vector<RawPeer*>& peers) {
        int ended = 0;
        for (const RawPeer* peer : peers)
            ended += peer->Count<vt::ByeMessage>();
        return ended;
    }
    static void ExpectNoMemory(const RawPeer& peer) {
        ASSERT_EQ(peer.Count<vt::ByeMessage>(), 1);
        EXPECT_EQ(peer.Of<vt::ByeMessage>()[0].code, EBye::Limit);
        EXPECT_THAT(peer.Of<vt::ByeMessage>()[0].reason.toStdString(), HasSubstr("no memory left for it"));
    }

    Text* m_log = nullptr;
    int m_lines = 0;
    int m_givenBack = 0;
};

TEST_F(ServerMemory, WhoNeverAcknowledgesLosesItsPlaceToWhoDoes) {
    m_access.isShareless = true;
    RawPeer& good = Follower("good");
    std::vector<RawPeer*> silent;
    for (int i = 0; i < 20; ++i)
        silent.push_back(&Follower("silent"));
    constexpr int Lines = 500;
    for (int i = 0; i < Lines / 5; ++i) {
        Log(5);
        AcknowledgeAll(good);
        RunAfter(20ms);
        EXPECT_LE(m_hub->HeldBytes(), Memory);
    }
    EXPECT_EQ(good.Count<vt::ByeMessage>(), 0);
    EXPECT_EQ(static_cast<int>(good.changes.size()), 1 + Lines) << "it has every one";
    EXPECT_GT(CountEnded(silent), 10);
    for (const RawPeer* peer : silent)
        if (peer->Count<vt::ByeMessage>() != 0) ExpectNoMemory(*peer);
}

TEST_F(ServerMemory, OneUserHoldsHalfOfItAtMost) {
    m_access.needsCredentials = true;
    RawPeer& other = Follower("other", "10.0.0.2:1");
    std::vector<RawPeer*> greedy;
    for (int i = 0; i < 10; ++i)
        greedy.push_back(&Follower("greedy", qPrintable(S("10.0.1.%1:1").arg(i))));
    Log(vtlimits::MaxUnackedMessages + 55);
    EXPECT_LE(m_hub->HeldBytes(), Memory * 3 / 4);
    EXPECT_GT(CountEnded(greedy), 0);
    EXPECT_EQ(other.Count<vt::ByeMessage>(), 0);
}

TEST_F(ServerMemory, OneHostHoldsHalfOfItAtMost) {
    RawPeer& other = Follower("other", "10.0.0.2:1");
    std::vector<RawPeer*> greedy;
    for (int i = 0; i < 10; ++i)
        greedy.push_back(&Follower("", qPrintable(S("10.0.0.1:%1").arg(i))));
    Log(vtlimits::MaxUnackedMessages + 55);
    EXPECT_LE(m_hub->HeldBytes(), Memory * 3 / 4);
    EXPECT_GT(CountEnded(greedy), 0);
    EXPECT_EQ(other.Count<vt::ByeMessage>(), 0);
}

TEST_F(ServerMemory, WhatHasBegunToComeCounts) {
    m_access.isShareless = true;
    RawPeer& small = Follower("");
    RawPeer& large = Follower("");
    m_serverEnds[0].first->SetUnfinished(Memory / 4);
    m_serverEnds[1].first->SetUnfinished(Memory);
    for (RawPeer* peer : {&small, &large})
        AcknowledgeAll(*peer);
    Run();
    EXPECT_EQ(small.Count<vt::ByeMessage>(), 0);
    ExpectNoMemory(large);
}

class AskedFor : public ServerMemory, public testing::WithParamInterface<const char*> {};

TEST_P(AskedFor, Counts) {
    RawPeer& peer = Subscribed();
    const QString path = QString::fromUtf8(GetParam()) + QString(200, QLatin1Char('x'));
    for (quint32 i = 0; i < 5000 && peer.Count<vt::ByeMessage>() == 0; ++i) {
        vt::CreateMessage create = Create(i, 1, "");
        create.path = path + QString::number(i);
        peer.Send(create);
        if (i % 100 == 0) Run();
    }
    Run();
    ExpectNoMemory(peer);
}

INSTANTIATE_TEST_SUITE_P(AndDenied, AskedFor, testing::Values("/S/log/"));
INSTANTIATE_TEST_SUITE_P(AndGranted, AskedFor, testing::Values("/S/"));

TEST_F(ServerMemory, ThatIsLetGoOfIsGivenBackSoonAndOnce) {
    m_settings.memoryBytes = 64 << 20;
    m_hub.reset();
    StartServer();
    RawPeer& peer = Follower("");
    m_serverEnds.back().first->SetUnfinished(8 << 20);
    AcknowledgeAll(peer);
    Run();
    vt::ByeMessage bye;
    bye.code = EBye::ClientEnds;
    peer.Send(bye);
    Run();
    for (int i = 0; i < 40; ++i)
        RunAfter(250ms);
    EXPECT_EQ(m_givenBack, 1);
    EXPECT_EQ(m_hub->HeldBytes(), 0);
}

TEST_F(ServerMemory, OfManyConnectionsThatEndIsGivenBackToo) {
    constexpr int Crowd = 1000;
    std::vector<RawPeer*> crowd;
    for (int i = 0; i < Crowd; ++i)
        crowd.push_back(&Connect());
    for (RawPeer* peer : crowd)
        peer->Send(vt::PingMessage());  // before the hello, so they end
    Run();
    for (int i = 0; i < 40; ++i)
        RunAfter(250ms);
    EXPECT_EQ(m_hub->CountSessions(), 0);
    EXPECT_EQ(m_givenBack, 1);
}

TEST_F(ServerMemory, LittleThatIsLetGoOfIsNotWorthTheTime) {
    RawPeer& peer = Follower("");
    AcknowledgeAll(peer);
    for (int i = 0; i < 40; ++i)
        RunAfter(250ms);
    EXPECT_EQ(m_givenBack, 0);
}

/// A client that goes on pinging.
class Acknowledging : public ServerMemory {
  protected:
    void PassPinging(RawPeer& peer, std::chrono::seconds time) {
        for (std::chrono::seconds passed{}; passed < time && peer.Count<vt::ByeMessage>() == 0; ++passed) {
            peer.Send(vt::PingMessage());
            RunAfter(1s);
        }
    }
};

TEST_F(Acknowledging, NothingForHalfAMinuteEndsTheSession) {
    RawPeer& peer = Follower("");
    Log(vtlimits::AckAfterMessages);
    PassPinging(peer, vtlimits::AckPatience - 1s);
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
    PassPinging(peer, 2s);
    ExpectBye(peer, EBye::TooSlow, "nothing acknowledged for 30 s");
}

TEST_F(Acknowledging, SomethingNowAndThenKeepsTheSession) {
    RawPeer& peer = Follower("");
    Log(vtlimits::MaxUnackedMessages);
    for (quint64 acked = 1; acked < 10; ++acked) {
        PassPinging(peer, vtlimits::AckPatience - 2s);
        peer.Send(Ack(acked));
        Run();
    }
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
}

TEST_F(Acknowledging, IsNotOwedForAFewMessages) {
    RawPeer& peer = Follower("");
    AcknowledgeAll(peer);
    Log(vtlimits::AckAfterMessages - 1);
    PassPinging(peer, 10 * vtlimits::AckPatience);
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
}

}  // namespace
