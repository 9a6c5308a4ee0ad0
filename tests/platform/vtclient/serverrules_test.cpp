// SPDX-License-Identifier: Apache-2.0
// What a server answers to a client that a test plays message by message.
#include <tests/platform/vtclient/rawpeer.h>
#include <tests/platform/vtclient/twoends.h>

#include <platform/vtclient/vtlimits.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using values::Value;
using values::ValueNumeric;
using values::ValueSelection;
using vt::EBye;
using vt::EMessage;
using vt::EResult;
using vt::Message;
using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

Message Hello(quint32 version = vtlimits::ProtocolVersion) {
    Message hello = Message::Of(EMessage::Hello);
    hello.version = version;
    hello.application = S("test");
    return hello;
}

Message Subscribe(quint32 sub, const char* path) {
    Message subscribe = Message::Of(EMessage::Subscribe);
    subscribe.sub = sub;
    subscribe.path = S(path);
    return subscribe;
}

Message Write(quint32 req, quint32 sub, quint32 id, const vt::Content& content) {
    Message write = Message::Of(EMessage::Write);
    write.req = req;
    write.sub = sub;
    write.id = id;
    write.item.content = content;
    return write;
}

Message Create(quint32 req, quint32 sub, const char* path) {
    Message create = Message::Of(EMessage::Create);
    create.req = req;
    create.sub = sub;
    create.path = S(path);
    return create;
}

Message Ack(quint64 count) {
    Message ack = Message::Of(EMessage::Ack);
    ack.seq = count;
    return ack;
}

class ServerRules : public TwoEnds {
  protected:
    /// A client that the test plays.
    RawPeer& Connect() {
        auto wire = std::make_shared<MemoryChannel::Wire>();
        auto end = std::make_unique<MemoryChannel>(wire, false);
        m_serverEnds.push_back({end.get(), wire});
        m_hub->AddChannel(std::move(end));
        m_peers.push_back(std::make_unique<RawPeer>(wire, true));
        return *m_peers.back();
    }
    RawPeer& Admitted() {
        RawPeer& peer = Connect();
        peer.Send(Hello());
        Run();
        EXPECT_EQ(peer.Count(EMessage::Welcome), 1);
        return peer;
    }
    RawPeer& Subscribed(const char* path = "/S") {
        RawPeer& peer = Admitted();
        peer.Send(Subscribe(1, path));
        Run();
        EXPECT_EQ(peer.Count(EMessage::End), 1);
        return peer;
    }
    void Run() {
        for (int round = 0; round < 1000; ++round) {
            bool hasRun = m_serverLoop->Run();
            for (const auto& end : m_serverEnds)
                if (!end.second->isBGone) hasRun = end.first->Deliver() || hasRun;
            for (const auto& peer : m_peers)
                peer->Read();
            if (!hasRun) return;
        }
        FAIL() << "it never comes to rest";
    }
    void RunAfter(int milliseconds) {
        m_clock.Pass(milliseconds);
        Run();
    }
    void ExpectBye(const RawPeer& peer, EBye code, const char* reason) {
        ASSERT_EQ(peer.Count(EMessage::Bye), 1);
        EXPECT_EQ(peer.Of(EMessage::Bye)[0].code, code);
        EXPECT_EQ(peer.Of(EMessage::Bye)[0].reason, S(reason));
        EXPECT_TRUE(peer.isClosed);
    }

    std::vector<std::pair<MemoryChannel*, std::shared_ptr<MemoryChannel::Wire>>> m_serverEnds;
    std::vector<std::unique_ptr<RawPeer>> m_peers;
};

TEST_F(ServerRules, AHelloIsWelcomedWithSessionAndPatience) {
    RawPeer& peer = Admitted();
    const Message welcome = peer.Of(EMessage::Welcome)[0];
    EXPECT_EQ(welcome.version, 1U);
    EXPECT_EQ(welcome.session, 1);
    EXPECT_EQ(welcome.ping, 5000);
    EXPECT_EQ(welcome.dead, 15000);
    EXPECT_EQ(m_access.started, 1);
}

TEST_F(ServerRules, AnotherVersionIsRefused) {
    RawPeer& peer = Connect();
    peer.Send(Hello(2));
    Run();
    ExpectBye(peer, EBye::Version, "this server speaks version 1 of the protocol, not 2");
    EXPECT_EQ(m_access.started, 0);
}

TEST_F(ServerRules, WhoIsNotAdmittedHearsWhy) {
    m_access.refusal = S("the token is wrong");
    RawPeer& peer = Connect();
    peer.Send(Hello());
    Run();
    ExpectBye(peer, EBye::NotAdmitted, "the token is wrong");
    EXPECT_EQ(m_access.ended, 0);
}

TEST_F(ServerRules, TheFirstMessageMustBeAHello) {
    RawPeer& peer = Connect();
    peer.Send(Subscribe(1, "/S"));
    Run();
    ExpectBye(peer, EBye::Malformed, "the first message must be a hello");
}

TEST_F(ServerRules, ASecondHelloEndsTheSession) {
    RawPeer& peer = Admitted();
    peer.Send(Hello());
    Run();
    ExpectBye(peer, EBye::Malformed, "a message that only a server sends, or a second hello");
}

TEST_F(ServerRules, GarbageEndsTheSessionAndNobodyElses) {
    RawPeer& good = Admitted();
    RawPeer& bad = Admitted();
    bad.SendBytes(QByteArray("GET / HTTP/1.1"));
    Run();
    EXPECT_EQ(bad.Count(EMessage::Bye), 1);
    EXPECT_EQ(good.Count(EMessage::Bye), 0);
    EXPECT_EQ(m_hub->CountSessions(), 1);
}

TEST_F(ServerRules, AHelloMustComeInTime) {
    RawPeer& peer = Connect();
    RunAfter(vtlimits::HelloTimeout - 1);
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
    RunAfter(300);
    ExpectBye(peer, EBye::Silence, "no hello in time");
}

TEST_F(ServerRules, TheOldestThatSaysNoHelloMakesRoom) {
    std::vector<RawPeer*> silent;
    for (int i = 0; i < vtlimits::MaxPendingConnections; ++i)
        silent.push_back(&Connect());
    RawPeer& late = Connect();
    late.Send(Hello());
    Run();
    ExpectBye(*silent.front(), EBye::Limit, "too many connections wait for their hello");
    EXPECT_EQ(silent.back()->Count(EMessage::Bye), 0);
    EXPECT_EQ(late.Count(EMessage::Welcome), 1);
}

TEST_F(ServerRules, ASilentClientIsPingedAndThenGivenUp) {
    RawPeer& peer = Admitted();
    RunAfter(5001);
    EXPECT_EQ(peer.Count(EMessage::Ping), 1);
    RunAfter(4000);
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
    RunAfter(6001);
    ASSERT_EQ(peer.Count(EMessage::Bye), 1);
    EXPECT_EQ(peer.Of(EMessage::Bye)[0].code, EBye::Silence);
    EXPECT_EQ(m_access.ended, 1);
}

TEST_F(ServerRules, APingIsAnsweredWithItsNumber) {
    RawPeer& peer = Admitted();
    Message ping = Message::Of(EMessage::Ping);
    ping.seq = 77;
    peer.Send(ping);
    Run();
    ASSERT_EQ(peer.Count(EMessage::Pong), 1);
    EXPECT_EQ(peer.Of(EMessage::Pong)[0].seq, 77U);
}

TEST_F(ServerRules, ASubscriptionsNumberIsFreeAndInRange) {
    for (const quint32 number : {0U, 0x80000000U}) {
        RawPeer& peer = Admitted();
        peer.Send(Subscribe(number, "/S"));
        Run();
        EXPECT_EQ(peer.Count(EMessage::Bye), 1) << number;
    }
    RawPeer& peer = Subscribed("/");
    peer.Send(Subscribe(1, "/S"));
    Run();
    ExpectBye(peer, EBye::Malformed, "1 is no free number of a subscription");
}

TEST_F(ServerRules, ThereIsALimitToSubscriptions) {
    RawPeer& peer = Admitted();
    for (quint32 i = 1; i <= vtlimits::MaxSubscriptions; ++i)
        peer.Send(Subscribe(i, "/S"));
    Run();
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
    peer.Send(Subscribe(vtlimits::MaxSubscriptions + 1, "/S"));
    Run();
    ExpectBye(peer, EBye::Limit, "more than 256 subscriptions");
    EXPECT_EQ(m_hub->CountWatchers(), 0);
}

TEST_F(ServerRules, ARelativePathIsNoPath) {
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "S"));
    Run();
    ExpectBye(peer, EBye::Malformed, "'S' is no absolute path");
}

TEST_F(ServerRules, WhatMayNotBeReadIsAbsentWithAReason) {
    Add<Text>("/S", "t");
    m_access.unreadable.insert(S("/S"));
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "//S/"));
    Run();
    ASSERT_EQ(peer.Count(EMessage::Absent), 1);
    EXPECT_EQ(peer.Of(EMessage::Absent)[0].reason, S("'/S' may not be read by 'guest'"));
    EXPECT_EQ(peer.Count(EMessage::Subscribed), 0);
    EXPECT_TRUE(m_access.provided.empty());
    EXPECT_EQ(m_hub->CountWatchers(), 0);
}

TEST_F(ServerRules, AnAbsentItemIsSubscribedWhenItAppears) {
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S/t"));
    Run();
    ASSERT_EQ(peer.Count(EMessage::Absent), 1);
    EXPECT_EQ(peer.Of(EMessage::Absent)[0].reason, QString());
    EXPECT_EQ(m_access.provided, std::vector<QString>{S("/S/t")});
    Add<Text>("/S", "t")->SetValue(S("here"));
    Run();
    EXPECT_EQ(peer.Count(EMessage::Subscribed), 1);
    EXPECT_EQ(peer.Count(EMessage::End), 1);
    ASSERT_EQ(peer.changes.size(), 1U);
    EXPECT_EQ(std::get<QString>(peer.changes[0].item.content), S("here"));
}

TEST_F(ServerRules, AServerMayMakeWhatIsSubscribed) {
    m_access.onProvide = [this](const QString&) { Add<Text>("/S", "made"); };
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S"));
    Run();
    EXPECT_EQ(peer.Count(EMessage::Absent), 0);
    EXPECT_EQ(peer.Count(EMessage::End), 1);
}

TEST_F(ServerRules, TheSequenceCountsSnapshotEndAndBatches) {
    auto* const t = Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    t->SetValue(S("1"));
    Run();
    t->SetValue(S("2"));
    Run();
    std::vector<quint64> sequence;
    for (const Message& message : peer.messages)
        if (message.type == EMessage::Snapshot || message.type == EMessage::End ||
            message.type == EMessage::Batch)
            sequence.push_back(message.seq);
    EXPECT_THAT(sequence, ElementsAre(1, 2, 3, 4));
}

TEST_F(ServerRules, ChangesOfOneTurnTravelTogetherAndOnlyTheLastContent) {
    auto* const a = Add<ValueNumeric<int>>("/S", "a");
    auto* const b = Add<ValueNumeric<int>>("/S", "b");
    RawPeer& peer = Subscribed();
    peer.changes.clear();
    for (int i = 1; i <= 10; ++i) {
        b->SetValue(i);
        a->SetValue(2 * i);
    }
    Run();
    EXPECT_EQ(peer.Count(EMessage::Batch), 1);
    ASSERT_EQ(peer.changes.size(), 2U);
    EXPECT_EQ(std::get<qint64>(peer.changes[0].item.content), 10);  // b changed first
    EXPECT_EQ(std::get<qint64>(peer.changes[1].item.content), 20);
}

TEST_F(ServerRules, OccurrencesAreNeverMerged) {
    auto* const log = Add<Text>("/S", "log");
    log->SetDelivery(values::EDelivery::EveryChange);
    RawPeer& peer = Subscribed();
    peer.changes.clear();
    for (const char* line : {"a", "a", "b", "a"})
        log->SetValue(S(line));
    Run();
    std::vector<QString> lines;
    for (const vt::TreeChange& change : peer.changes)
        lines.push_back(std::get<QString>(change.item.content));
    EXPECT_THAT(lines, ElementsAre(S("a"), S("a"), S("b"), S("a")));
}

TEST_F(ServerRules, ALargeTreeComesInChunks) {
    for (int i = 0; i < 5000; ++i)
        Add<Text>("/S", QStringLiteral("value%1").arg(i).toUtf8().constData())
            ->SetValue(QString(50, QLatin1Char('x')));
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S"));
    for (quint64 acked = 0; peer.Count(EMessage::End) == 0 && acked < 100; ++acked) {
        Run();
        peer.Send(Ack(static_cast<quint64>(peer.Count(EMessage::Snapshot) + peer.Count(EMessage::End))));
    }
    EXPECT_EQ(peer.changes.size(), 5001U);
    EXPECT_GT(peer.Count(EMessage::Snapshot), 5);
    EXPECT_LT(peer.largest, vtlimits::BatchTarget + 1024);
    for (std::size_t i = 0; i < peer.changes.size(); ++i)
        ASSERT_EQ(peer.changes[i].id, i);
}

TEST_F(ServerRules, AClientThatSubscribesALargeTreeAHundredTimesCostsAWindowAndDelaysNobody) {
    for (int i = 0; i < 20000; ++i)
        Add<Text>("/S", QStringLiteral("value%1").arg(i).toUtf8().constData());
    RawPeer& greedy = Admitted();
    for (quint32 i = 1; i <= 100; ++i)
        greedy.Send(Subscribe(i, "/"));
    RawPeer& modest = Admitted();
    modest.Send(Subscribe(1, "/S/value7"));
    Run();
    EXPECT_EQ(modest.Count(EMessage::End), 1);
    EXPECT_EQ(m_hub->CountWatchers(), 2);
    EXPECT_EQ(greedy.Count(EMessage::Bye), 0);
    EXPECT_LE(greedy.Count(EMessage::Snapshot) + greedy.Count(EMessage::End), vtlimits::MaxUnackedMessages);
    EXPECT_LE(greedy.received, vtlimits::MaxUnackedBytes + 2 * vtlimits::BatchTarget + 100 * 64);
}

TEST_F(ServerRules, AClientThatDoesNotAcknowledgeGetsNoMore) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    RawPeer& peer = Subscribed();
    const int before = 2;  // snapshot and end
    for (int i = 1; i <= 500; ++i) {
        n->SetValue(i);
        Run();
    }
    EXPECT_EQ(peer.Count(EMessage::Batch), vtlimits::MaxUnackedMessages - before);
    peer.Send(Ack(static_cast<quint64>(vtlimits::MaxUnackedMessages)));
    Run();
    EXPECT_EQ(peer.Count(EMessage::Batch), vtlimits::MaxUnackedMessages - before + 1);
    EXPECT_EQ(std::get<qint64>(peer.changes.back().item.content), 500);
}

TEST_F(ServerRules, ASlowClientsBacklogIsBoundedByTheItemsNotByTime) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    RawPeer& peer = Subscribed();
    for (int i = 1; i <= 100; ++i) {
        n->SetValue(i);
        Run();
    }
    peer.changes.clear();
    for (int i = 0; i < 20000; ++i) {
        n->SetValue(i);
        Add<Text>("/S/x", "passing");
        m_tree.Delete(Item("/S/x"));
        if (i % 100 == 0) Run();
    }
    peer.Send(Ack(64));
    Run();
    EXPECT_LT(peer.changes.size(), 10U);
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
}

TEST_F(ServerRules, AClientThatDoesNotKeepUpWithOccurrencesIsEnded) {
    auto* const log = Add<Text>("/S", "log");
    log->SetDelivery(values::EDelivery::EveryChange);
    RawPeer& slow = Subscribed();
    RawPeer& good = Subscribed();
    for (int i = 0; i < 200 && slow.Count(EMessage::Bye) == 0; ++i) {
        log->SetValue(QString(50000, QLatin1Char('x')));
        Run();
        good.Send(Ack(static_cast<quint64>(2 + good.Count(EMessage::Batch))));
        Run();
    }
    ASSERT_EQ(slow.Count(EMessage::Bye), 1);
    EXPECT_EQ(slow.Of(EMessage::Bye)[0].code, EBye::TooSlow);
    EXPECT_EQ(good.Count(EMessage::Bye), 0);
}

TEST_F(ServerRules, AnAcknowledgementOfWhatWasNotSentEndsTheSession) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Ack(99));
    Run();
    ExpectBye(peer, EBye::Malformed, "an acknowledgement of what was not sent");
}

struct WriteRow {
    const char* name;
    vt::Content content;
    EResult result;
    const char* reason;
    const char* shown;
};

class Writes : public ServerRules, public testing::WithParamInterface<WriteRow> {};

TEST_P(Writes, AreAnswered) {
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    n->SetMin(0);
    n->SetMax(100);
    n->SetValue(50);
    RawPeer& peer = Subscribed();
    peer.Send(Write(42, 1, 1, GetParam().content));
    Run();
    ASSERT_EQ(peer.Count(EMessage::Answer), 1);
    const Message answer = peer.Of(EMessage::Answer)[0];
    EXPECT_EQ(answer.req, 42U);
    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.reason, S(GetParam().reason));
    EXPECT_EQ(QString::number(n->GetValue()), S(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(All, Writes,
                         testing::Values(WriteRow{"WithinLimits", qint64{7}, EResult::Done, "", "7"},
                                         WriteRow{"TheSame", qint64{50}, EResult::Done, "", "50"},
                                         WriteRow{"AboveLimits", qint64{700}, EResult::Clamped, "", "100"},
                                         WriteRow{"BelowLimits", qint64{-1}, EResult::Clamped, "", "0"},
                                         WriteRow{"Beyond32Bits", qint64{1} << 40, EResult::Denied,
                                                  "the content is none of a value of type int", "50"},
                                         WriteRow{"AText", QStringLiteral("7"), EResult::Denied,
                                                  "the content is none of a value of type int", "50"},
                                         WriteRow{"Nothing", vt::Content(), EResult::Denied,
                                                  "the content is none of a value of type int", "50"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServerRules, AWriteToAVanishedItemIsAnsweredGone) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    m_tree.Delete(Item("/S/t"));
    peer.Send(Write(1, 1, 1, QStringLiteral("x")));
    peer.Send(Write(2, 9, 1, QStringLiteral("x")));
    Run();
    ASSERT_EQ(peer.Count(EMessage::Answer), 2);
    EXPECT_EQ(peer.Of(EMessage::Answer)[0].result, EResult::Gone);
    EXPECT_EQ(peer.Of(EMessage::Answer)[1].result, EResult::Gone);
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
}

TEST_F(ServerRules, ANodeHasNoContent) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Write(1, 1, 0, QStringLiteral("x")));
    Run();
    EXPECT_EQ(peer.Of(EMessage::Answer).at(0).reason, S("a node has no content"));
}

TEST_F(ServerRules, WhatMayNotBeWrittenIsDenied) {
    auto* const t = Add<Text>("/S", "t");
    m_access.unwritable.insert(S("/S/t"));
    RawPeer& peer = Subscribed();
    peer.Send(Write(1, 1, 1, QStringLiteral("x")));
    Run();
    EXPECT_EQ(peer.Of(EMessage::Answer).at(0).result, EResult::Denied);
    EXPECT_EQ(peer.Of(EMessage::Answer).at(0).reason, S("not for you"));
    EXPECT_EQ(t->GetValue(), QString());
}

TEST_F(ServerRules, ASelectionIsWrittenByKey) {
    auto* const selection = Add<ValueSelection>("/S", "s");
    selection->AddItem(S("off"), 0.0, 10);
    selection->AddItem(S("on"), 1.0, 20);
    RawPeer& peer = Subscribed();
    peer.Send(Write(1, 1, 1, qint64{20}));
    Run();
    EXPECT_EQ(selection->GetCurrentText(), S("on"));
    EXPECT_EQ(peer.Of(EMessage::Answer).at(0).result, EResult::Done);
    peer.Send(Write(2, 1, 1, qint64{30}));
    Run();
    EXPECT_EQ(peer.Of(EMessage::Answer).at(1).reason, S("the selection has no item with this key"));
    EXPECT_EQ(selection->GetCurrentText(), S("on"));
    peer.Send(Write(3, 1, 1, vt::Content()));
    Run();
    EXPECT_EQ(selection->GetCurrentIndex(), ValueSelection::NoIndex);
    EXPECT_EQ(peer.Of(EMessage::Answer).at(2).result, EResult::Done);
}

TEST_F(ServerRules, APushButtonThatTheServerResetsIsAnsweredWithWhatHolds) {
    auto* const button = Add<Value<bool>>("/S", "button");
    int presses = 0;
    RecordingObserver server([&](Observable*, TChangeCode code) {
        if (code != changecode::ContentChanged || !button->GetValue()) return;
        ++presses;
        button->SetValue(false);
    });
    button->AddObserver(&server);
    RawPeer& peer = Subscribed();
    peer.Send(Write(1, 1, 1, true));
    Run();
    EXPECT_EQ(presses, 1);
    ASSERT_EQ(peer.Count(EMessage::Answer), 1);
    EXPECT_EQ(peer.Of(EMessage::Answer)[0].result, EResult::Clamped);
    EXPECT_EQ(std::get<bool>(peer.Of(EMessage::Answer)[0].item.content), false);
    button->DeleteObserver(&server);
}

TEST_F(ServerRules, CreationsAreCheckedAndAnswered) {
    Add<Text>("/S", "t");
    m_access.uncreatable.insert(S("/S/no"));
    RawPeer& peer = Subscribed();
    peer.Send(Create(1, 1, "/S/a/b"));
    peer.Send(Create(2, 1, "/S/a/b"));
    peer.Send(Create(3, 1, "/S/no"));
    peer.Send(Create(4, 1, "/elsewhere"));
    peer.Send(Create(5, 1, "/S/t/below"));
    peer.Send(Create(6, 7, "/S/x"));
    Run();
    std::map<quint32, Message> answers;
    for (const Message& answer : peer.Of(EMessage::Answer))
        answers[answer.req] = answer;
    ASSERT_EQ(answers.size(), 6U);
    EXPECT_EQ(answers[1].result, EResult::Done);
    EXPECT_EQ(answers[2].result, EResult::Done);
    EXPECT_EQ(answers[3].reason, S("nothing is created here"));
    EXPECT_EQ(answers[4].reason, S("'/elsewhere' does not lie in the subscription"));
    EXPECT_EQ(answers[5].reason, S("a value stands in the way"));
    EXPECT_EQ(answers[6].result, EResult::Gone);
    EXPECT_TRUE(Item("/S/a/b") != nullptr && Item("/S/a/b")->IsNode());
    EXPECT_EQ(Item("/elsewhere"), nullptr);
}

TEST_F(ServerRules, ACreationIsAnsweredAfterTheItemWasTold) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Create(1, 1, "/S"));
    Run();
    ASSERT_GE(peer.messages.size(), 2U);
    EXPECT_EQ(peer.messages[peer.messages.size() - 2].type, EMessage::Batch);
    EXPECT_EQ(peer.messages.back().type, EMessage::Answer);
}

TEST_F(ServerRules, ASessionsEndIsToldOnceAndLetsGoOfEverything) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    EXPECT_EQ(m_hub->CountWatchers(), 1);
    EXPECT_EQ(Find<Text>("/S/t")->CountObservers(), 1);
    Message bye = Message::Of(EMessage::Bye);
    bye.code = EBye::ClientEnds;
    peer.Send(bye);
    Run();
    EXPECT_EQ(m_hub->CountSessions(), 0);
    EXPECT_EQ(m_hub->CountWatchers(), 0);
    EXPECT_EQ(m_access.ended, 1);
    EXPECT_EQ(Find<Text>("/S/t")->CountObservers(), 0);
}

TEST_F(ServerRules, UnsubscribingLetsGo) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    Message unsubscribe = Message::Of(EMessage::Unsubscribe);
    unsubscribe.sub = 1;
    peer.Send(unsubscribe);
    Run();
    EXPECT_EQ(m_hub->CountWatchers(), 0);
    EXPECT_EQ(m_access.released, std::vector<QString>{S("/S")});
    EXPECT_EQ(peer.Count(EMessage::Bye), 0);
}

TEST_F(ServerRules, UnsubscribingLetsGoOnceOfWhatWasWantedWithin) {
    Add<Text>("/S", "t");
    m_access.uncreatable.insert(S("/S/no"));
    RawPeer& peer = Subscribed();
    peer.Send(Create(1, 1, "/S/made"));
    peer.Send(Create(2, 1, "/S/made"));
    peer.Send(Create(3, 1, "/S/no"));
    Run();
    EXPECT_EQ(m_access.provided, (std::vector<QString>{S("/S"), S("/S/made"), S("/S/no")}));
    EXPECT_TRUE(m_access.released.empty());
    Message unsubscribe = Message::Of(EMessage::Unsubscribe);
    unsubscribe.sub = 1;
    peer.Send(unsubscribe);
    Run();
    EXPECT_EQ(m_access.released, (std::vector<QString>{S("/S/made"), S("/S/no"), S("/S")}));
}

TEST_F(ServerRules, WhatWasWantedAndHasGoneMayBeWantedAgain) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    peer.Send(Create(1, 1, "/S/made"));
    Run();
    m_tree.Delete(Item("/S/made"));
    m_access.provided.clear();
    peer.Send(Create(2, 1, "/S/made"));
    Run();
    EXPECT_EQ(m_access.provided, std::vector<QString>{S("/S/made")});
    EXPECT_NE(Item("/S/made"), nullptr);
}

TEST_F(ServerRules, ClientsOfOneSubtreeShareItsWatcher) {
    auto* const t = Add<Text>("/S", "t");
    RawPeer& first = Subscribed();
    RawPeer& second = Subscribed("//S");
    EXPECT_EQ(m_hub->CountWatchers(), 1);
    EXPECT_EQ(t->CountObservers(), 1);
    t->SetValue(S("x"));
    Run();
    EXPECT_EQ(first.Count(EMessage::Batch), 1);
    EXPECT_EQ(second.Count(EMessage::Batch), 1);
}

TEST_F(ServerRules, AContentThatFitsNoFrameIsStaleUntilItFits) {
    auto* const t = Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    peer.changes.clear();
    const TraceRecorder traces;
    t->SetValue(QString(1500000, QLatin1Char('x')));
    Run();
    ASSERT_EQ(peer.changes.size(), 1U);
    EXPECT_EQ(peer.changes[0].change, vt::EChange::Described);
    EXPECT_EQ(peer.changes[0].item.flags, unsigned{vt::ItemDescription::Stale});
    EXPECT_THAT(traces.Messages(), ElementsAre(S("The content of '/S/t' is too large to be sent")));
    t->SetValue(S("short"));
    Run();
    ASSERT_EQ(peer.changes.size(), 3U);
    EXPECT_EQ(std::get<QString>(peer.changes[1].item.content), S("short"));
    EXPECT_EQ(peer.changes[2].item.flags, 0U);
}

TEST_F(ServerRules, ATurnEndsWhenItsTimeIsUpAndGoesOnInTheNext) {
    for (int i = 0; i < 3000; ++i)
        Add<Text>("/S", QStringLiteral("v%1").arg(i).toUtf8().constData());
    RawPeer& peer = Admitted();
    m_clock.SetCost(500);  // each look at the clock takes an eighth of a turn
    peer.Send(Subscribe(1, "/S"));
    for (int i = 0; i < 2000 && peer.Count(EMessage::End) == 0; ++i) {
        Run();
        peer.Send(Ack(static_cast<quint64>(peer.Count(EMessage::Snapshot))));
    }
    EXPECT_EQ(peer.Count(EMessage::End), 1);
    EXPECT_EQ(peer.changes.size(), 3001U);
}

}  // namespace
