// SPDX-License-Identifier: Apache-2.0
// What a server tells those who subscribe, and how much of it at a time.
#include <tests/platform/vtclient/serverrules.h>

using namespace std::chrono_literals;

namespace {

using namespace serverrules;

TEST_F(ServerRules, ASubscriptionsNumberIsFreeAndInRange) {
    for (const quint32 number : {0U, 0x80000000U}) {
        RawPeer& peer = Admitted();
        peer.Send(Subscribe(number, "/S"));
        Run();
        EXPECT_EQ(peer.Count<vt::ByeMessage>(), 1) << number;
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
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
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
    ASSERT_EQ(peer.Count<vt::AbsentMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::AbsentMessage>()[0].reason, S("'/S' may not be read by 'guest'"));
    EXPECT_EQ(peer.Count<vt::SubscribedMessage>(), 0);
    EXPECT_TRUE(m_access.provided.empty());
    EXPECT_EQ(m_hub->CountWatchers(), 0);
}

TEST_F(ServerRules, AnAbsentItemIsSubscribedWhenItAppears) {
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S/t"));
    Run();
    ASSERT_EQ(peer.Count<vt::AbsentMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::AbsentMessage>()[0].reason, QString());
    EXPECT_EQ(m_access.provided, std::vector<QString>{S("/S/t")});
    Add<Text>("/S", "t")->SetValue(S("here"));
    Run();
    EXPECT_EQ(peer.Count<vt::SubscribedMessage>(), 1);
    EXPECT_EQ(peer.Count<vt::EndMessage>(), 1);
    ASSERT_EQ(peer.changes.size(), 1U);
    EXPECT_EQ(std::get<QString>(peer.changes[0].item.content), S("here"));
}

TEST_F(ServerRules, WhereNothingWillComeIsAbsentWithAReasonAndOver) {
    m_access.unprovidable.insert(S("/S"));
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S/bad"));
    Run();
    ASSERT_EQ(peer.Count<vt::AbsentMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::AbsentMessage>()[0].reason, S("nothing comes here"));
    Add<Text>("/S", "bad");
    peer.Send(vt::UnsubscribeMessage{1});
    Run();
    EXPECT_EQ(peer.Count<vt::SubscribedMessage>(), 0);
    EXPECT_TRUE(m_access.released.empty());
    peer.Send(Subscribe(2, "/S/bad"));
    Run();
    EXPECT_EQ(peer.Count<vt::SubscribedMessage>(), 1) << "what is there can be seen all the same";
}

TEST_F(ServerRules, ALookMakesNothingAndIsToldOnceSomebodyElseMakesIt) {
    m_access.onProvide = [this](const QString& path) {
        if (Item("/S/used") == nullptr && path == S("/S/used")) Add<Text>("/S", "used");
    };
    m_access.unprovidable.insert(S("/S/bad"));
    RawPeer& looker = Admitted();
    looker.Send(Look(1, "/S/used"));
    looker.Send(Look(2, "/S/bad"));
    Run();
    ASSERT_EQ(looker.Count<vt::AbsentMessage>(), 2);
    for (const vt::AbsentMessage& absent : looker.Of<vt::AbsentMessage>())
        EXPECT_EQ(absent.reason, QString());
    EXPECT_TRUE(m_access.provided.empty());
    Subscribed("/S/used");
    EXPECT_EQ(looker.Count<vt::SubscribedMessage>(), 1);
    EXPECT_EQ(looker.Count<vt::EndMessage>(), 1);
    looker.Send(vt::UnsubscribeMessage{1});
    Run();
    EXPECT_TRUE(m_access.released.empty()) << "it let go of nothing";
}

TEST_F(ServerRules, AServerMayMakeWhatIsSubscribed) {
    m_access.onProvide = [this](const QString&) { Add<Text>("/S", "made"); };
    RawPeer& peer = Admitted();
    peer.Send(Subscribe(1, "/S"));
    Run();
    EXPECT_EQ(peer.Count<vt::AbsentMessage>(), 0);
    EXPECT_EQ(peer.Count<vt::EndMessage>(), 1);
}

TEST_F(ServerRules, TheSequenceCountsSnapshotEndAndBatches) {
    auto* const t = Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    t->SetValue(S("1"));
    Run();
    t->SetValue(S("2"));
    Run();
    std::vector<quint64> sequence;
    const auto keep = [&sequence](const auto& message) {
        using M = std::decay_t<decltype(message)>;
        if constexpr (vt::CarriesChanges(M::Type) || std::is_same_v<M, vt::EndMessage>)
            sequence.push_back(message.seq);
    };
    for (const vt::Message& message : peer.messages)
        std::visit(keep, message);
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
    EXPECT_EQ(peer.Count<vt::BatchMessage>(), 1);
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
    for (quint64 acked = 0; peer.Count<vt::EndMessage>() == 0 && acked < 100; ++acked) {
        Run();
        const int received = peer.Count<vt::SnapshotMessage>() + peer.Count<vt::EndMessage>();
        peer.Send(Ack(static_cast<quint64>(received)));
    }
    EXPECT_EQ(peer.changes.size(), 5001U);
    EXPECT_GT(peer.Count<vt::SnapshotMessage>(), 5);
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
    EXPECT_EQ(modest.Count<vt::EndMessage>(), 1);
    EXPECT_EQ(m_hub->CountWatchers(), 2);
    EXPECT_EQ(greedy.Count<vt::ByeMessage>(), 0);
    EXPECT_LE(greedy.Count<vt::SnapshotMessage>() + greedy.Count<vt::EndMessage>(),
              vtlimits::MaxUnackedMessages);
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
    EXPECT_EQ(peer.Count<vt::BatchMessage>(), vtlimits::MaxUnackedMessages - before);
    peer.Send(Ack(static_cast<quint64>(vtlimits::MaxUnackedMessages)));
    Run();
    EXPECT_EQ(peer.Count<vt::BatchMessage>(), vtlimits::MaxUnackedMessages - before + 1);
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
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
}

// What the client shows under the other subscription it has not set itself.
TEST_F(ServerRules, AWriteIsTheClientsOwnOnlyWhereItCameFrom) {
    auto* const log = Add<Text>("/S", "log");
    log->SetDelivery(values::EDelivery::EveryChange);
    RawPeer& peer = Subscribed();
    peer.Send(Subscribe(2, "/S/log"));
    Run();
    const std::size_t before = peer.changes.size();
    peer.Send(Write(1, 1, 1, S("written")));
    Run();
    std::vector<vt::EChange> told;
    for (std::size_t i = before; i < peer.changes.size(); ++i) {
        told.push_back(peer.changes[i].change);
        EXPECT_EQ(std::get<QString>(peer.changes[i].item.content), S("written"));
    }
    EXPECT_THAT(told, testing::UnorderedElementsAre(vt::EChange::Own, vt::EChange::Changed));
}

TEST_F(ServerRules, AClientThatDoesNotKeepUpWithOccurrencesIsEnded) {
    auto* const log = Add<Text>("/S", "log");
    log->SetDelivery(values::EDelivery::EveryChange);
    RawPeer& slow = Subscribed();
    RawPeer& good = Subscribed();
    for (int i = 0; i < 200 && slow.Count<vt::ByeMessage>() == 0; ++i) {
        log->SetValue(QString(50000, QLatin1Char('x')));
        Run();
        const int received = 2 + good.Count<vt::BatchMessage>();
        good.Send(Ack(static_cast<quint64>(received)));
        Run();
    }
    ASSERT_EQ(slow.Count<vt::ByeMessage>(), 1);
    EXPECT_EQ(slow.Of<vt::ByeMessage>()[0].code, EBye::TooSlow);
    EXPECT_EQ(good.Count<vt::ByeMessage>(), 0);
}

TEST_F(ServerRules, AnAcknowledgementOfWhatWasNotSentEndsTheSession) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Ack(99));
    Run();
    ExpectBye(peer, EBye::Malformed, "an acknowledgement of what was not sent");
}

TEST_F(ServerRules, UnsubscribingLetsGo) {
    Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    vt::UnsubscribeMessage unsubscribe;
    unsubscribe.sub = 1;
    peer.Send(unsubscribe);
    Run();
    EXPECT_EQ(m_hub->CountWatchers(), 0);
    EXPECT_EQ(m_access.released, std::vector<QString>{S("/S")});
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
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
    vt::UnsubscribeMessage unsubscribe;
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
    EXPECT_EQ(first.Count<vt::BatchMessage>(), 1);
    EXPECT_EQ(second.Count<vt::BatchMessage>(), 1);
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

TEST_F(ServerRules, AnOccurrenceThatFitsNoFrameIsStaleUntilOneFits) {
    auto* const t = Add<Text>("/S", "t");
    t->SetDelivery(values::EDelivery::EveryChange);
    t->SetValue(QString(1500000, QLatin1Char('x')));
    RawPeer& peer = Subscribed();
    constexpr unsigned Occurs = vt::ItemDescription::EveryChange;
    ASSERT_FALSE(peer.changes.empty());
    EXPECT_EQ(peer.changes.back().item.flags, Occurs | vt::ItemDescription::Stale);
    peer.changes.clear();
    t->SetValue(S("short"));
    Run();
    ASSERT_EQ(peer.changes.size(), 2U);
    EXPECT_EQ(std::get<QString>(peer.changes[0].item.content), S("short"));
    EXPECT_EQ(peer.changes[1].change, vt::EChange::Described);
    EXPECT_EQ(peer.changes[1].item.flags, Occurs);
    peer.changes.clear();
    const TraceRecorder traces;
    for (const char character : {'y', 'z'})
        t->SetValue(QString(1500000, QLatin1Char(character)));
    Run();
    ASSERT_EQ(peer.changes.size(), 1U);
    EXPECT_EQ(peer.changes[0].item.flags, Occurs | vt::ItemDescription::Stale);
    EXPECT_EQ(traces.Messages().size(), 2U);  // both are lost
}

TEST_F(ServerRules, ATurnEndsWhenItsTimeIsUpAndGoesOnInTheNext) {
    for (int i = 0; i < 3000; ++i)
        Add<Text>("/S", QStringLiteral("v%1").arg(i).toUtf8().constData());
    RawPeer& peer = Admitted();
    m_clock.SetCost(500us);  // each look at the clock takes an eighth of a turn
    peer.Send(Subscribe(1, "/S"));
    for (int i = 0; i < 2000 && peer.Count<vt::EndMessage>() == 0; ++i) {
        Run();
        peer.Send(Ack(static_cast<quint64>(peer.Count<vt::SnapshotMessage>())));
    }
    EXPECT_EQ(peer.Count<vt::EndMessage>(), 1);
    EXPECT_EQ(peer.changes.size(), 3001U);
}

}  // namespace
