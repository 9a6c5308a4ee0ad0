// SPDX-License-Identifier: Apache-2.0
// What a server makes of whatever a client says of shared roads, in whatever order.
#include <tests/platform/vtclient/loneserver.h>
#include <tests/platform/vtclient/memoryroads.h>

#include <gmock/gmock.h>

namespace {

using values::Value;
using Number = Value<int>;

class ServerRoads : public LoneServer {
  protected:
    ServerRoads() {
        m_settings.roads = &m_end;
        m_hub.reset();
        m_hub = std::make_unique<vt::ServerHub>(m_access, m_loop, m_settings);
        m_number = Add<Number>("/S", QStringLiteral("number"));
        m_peer = Connect();
        Subscribe(m_peer, 1, "/S");
        Said(m_peer);
    }
    ~ServerRoads() override { m_hub.reset(); }

    template <class M>
    std::vector<M> SaidOf() {
        std::vector<M> said;
        for (const DecodedMessage& message : Said(m_peer))
            if (const auto* const one = std::get_if<M>(&message.message)) said.push_back(*one);
        return said;
    }
    QString Join() {
        Say(m_peer, vt::JoinMessage{1});
        const auto roads = SaidOf<vt::RoadMessage>();
        EXPECT_EQ(roads.size(), 1U);
        return roads.empty() ? QString() : roads[0].road;
    }
    bool IsToldInSession() {
        m_number->SetValue(m_number->GetValue() + 1);
        Settle(m_peer);
        return !SaidOf<vt::BatchMessage>().empty();
    }

    MemoryBus m_bus;
    MemoryBus::End m_end{m_bus};
    Number* m_number = nullptr;
    Peer m_peer;
};

TEST_F(ServerRoads, TellsTheRoadAndItsKey) {
    Say(m_peer, vt::JoinMessage{1});
    const auto roads = SaidOf<vt::RoadMessage>();
    ASSERT_EQ(roads.size(), 1U);
    EXPECT_EQ(roads[0].sub, 1U);
    EXPECT_EQ(roads[0].key, 1U);
    EXPECT_EQ(QByteArray::fromHex(roads[0].secret.toLatin1()).size(), vt::RoadSeal::KeySize);
    EXPECT_EQ(roads[0].road, QStringLiteral("%1-1").arg(m_hub->Epoch(), 0, 16));
    EXPECT_TRUE(IsToldInSession()) << "nothing was heard by the road";
}

TEST_F(ServerRoads, SaysFromWhereOnTheRoadCounts) {
    const QString road = Join();
    Say(m_peer, vt::HeardMessage{1, road});
    const auto positions = SaidOf<vt::AtMessage>();
    ASSERT_EQ(positions.size(), 1U);
    EXPECT_FALSE(IsToldInSession());
    EXPECT_EQ(m_bus.CountOn(road), 1U);
    EXPECT_EQ(vt::NumberOnRoad(m_bus.published[0].message.constData(), m_bus.published[0].message.size()),
              positions[0].number + 1);
}

// A snapshot takes time, and so do many of them.
TEST_F(ServerRoads, WhatHasChangedLeavesBeforeWhatNewcomersLack) {
    Say(m_peer, vt::HeardMessage{1, Join()});
    Peer inStep = Connect();
    Subscribe(inStep, 1, "/S");
    Add<Number>("/Large", QStringLiteral("number"));
    Peer newcomer = Connect();
    Said(newcomer);
    vt::SubscribeMessage subscribe;
    subscribe.sub = 1;
    subscribe.path = QStringLiteral("/Large");
    newcomer.wire->toB.push_back(ToBytes(subscribe));
    m_number->SetValue(5);
    Said(inStep);
    const std::size_t published = m_bus.published.size();
    bool hasLeft = false;
    m_end.onFlush = [&] {
        if (hasLeft || m_bus.published.size() == published) return;
        hasLeft = true;
        EXPECT_EQ(SaidChanges(inStep).size(), 1U) << "in a session likewise";
        const std::vector<DecodedMessage> said = Said(newcomer);
        const bool isSnapshot = std::any_of(said.begin(), said.end(), [](const DecodedMessage& one) {
            return std::holds_alternative<vt::SnapshotMessage>(one.message);
        });
        EXPECT_FALSE(isSnapshot);
    };
    newcomer.channel->Deliver();  // in one turn with the change
    EXPECT_TRUE(hasLeft);
    EXPECT_EQ(SaidChanges(newcomer).size(), 2U);
    Settle(inStep);
}

TEST_F(ServerRoads, SaysWhereTheRoadIsBeforeAnAnswerOnce) {
    Say(m_peer, vt::HeardMessage{1, Join()});
    m_number->SetValue(5);
    Settle(m_peer);
    Said(m_peer);
    Say(m_peer, vt::WriteMessage{1, 1, 1, qint64{7}});
    Say(m_peer, vt::WriteMessage{2, 1, 99, qint64{7}});
    std::vector<vt::EMessage> types;
    for (const DecodedMessage& said : Said(m_peer))
        types.push_back(
            std::visit([](const auto& one) { return std::decay_t<decltype(one)>::Type; }, said.message));
    // What the first write has changed is on the road by the second one.
    EXPECT_THAT(types, testing::ElementsAre(vt::EMessage::At, vt::EMessage::Answer, vt::EMessage::At,
                                            vt::EMessage::Answer));
    Say(m_peer, vt::WriteMessage{3, 1, 99, qint64{7}});
    EXPECT_EQ(SaidOf<vt::AtMessage>().size(), 0U) << "it is where it was";
}

TEST_F(ServerRoads, BeginsAnewForWhoeverLeaves) {
    Say(m_peer, vt::HeardMessage{1, Join()});
    Said(m_peer);
    Say(m_peer, vt::LeaveMessage{1});
    EXPECT_EQ(SaidOf<vt::SubscribedMessage>().size(), 1U);
    EXPECT_TRUE(IsToldInSession());
    EXPECT_TRUE(m_access.released.empty()) << "what is used stays in use";
}

TEST_F(ServerRoads, GoesOnInTheSessionWithWhoeverLeavesBefore) {
    Join();
    Say(m_peer, vt::LeaveMessage{1});
    EXPECT_EQ(SaidOf<vt::SubscribedMessage>().size(), 0U);
    EXPECT_TRUE(IsToldInSession());
}

TEST_F(ServerRoads, SaysOnceMoreWhatSomebodyHasMissed) {
    const QString road = Join();
    Say(m_peer, vt::AgainMessage{1, 0, 100});
    EXPECT_EQ(m_bus.CountOn(road), 0U) << "it is not told by the road yet";
    Say(m_peer, vt::HeardMessage{1, road});
    for (int i = 1; i <= 5; ++i) {
        m_number->SetValue(100 + i);
        Settle(m_peer);
    }
    ASSERT_EQ(m_bus.CountOn(road), 5U);
    const auto first =
        *vt::NumberOnRoad(m_bus.published[0].message.constData(), m_bus.published[0].message.size());
    Say(m_peer, vt::AgainMessage{1, first + 1, first + 2});
    ASSERT_EQ(m_bus.CountOn(road), 7U);
    EXPECT_EQ(m_bus.published[5].message, m_bus.published[1].message);
    EXPECT_EQ(m_bus.published[6].message, m_bus.published[2].message);
    Say(m_peer, vt::AgainMessage{1, first + 2, first + 3});
    EXPECT_EQ(m_bus.CountOn(road), 8U) << "one of them was said just now, for whomever";
    for (const auto& nonsense : {vt::AgainMessage{1, first + 100, first + 200}, vt::AgainMessage{1, 5, 1},
                                 vt::AgainMessage{7, first, first}})
        Say(m_peer, nonsense);
    EXPECT_EQ(m_bus.CountOn(road), 8U);
    m_clock.Pass(std::chrono::seconds(1));
    Say(m_peer, vt::AgainMessage{1, 0, ~quint64(0) >> 1});
    EXPECT_GE(m_bus.CountOn(road), 13U) << "all that there was, marks included";
}

TEST_F(ServerRoads, LeavesAloneWhatMakesNoSense) {
    const QString road = Join();
    const vt::Message messages[] = {
        vt::JoinMessage{7},        vt::JoinMessage{1},        vt::HeardMessage{7, road},
        vt::HeardMessage{1, {}},   vt::LeaveMessage{7},       vt::HeardMessage{1, road},
        vt::HeardMessage{1, road}, vt::JoinMessage{1},        vt::LeaveMessage{1},
        vt::LeaveMessage{1},       vt::JoinMessage{1},        vt::HeardMessage{1, road},
        vt::AgainMessage{1, 9, 3}, vt::AgainMessage{1, 0, 9}, vt::UnsubscribeMessage{1},
        vt::JoinMessage{1},        vt::HeardMessage{1, road}, vt::LeaveMessage{1}};
    for (const vt::Message& message : messages)
        Say(m_peer, message);
    for (const vt::Message& first : messages)  // at once, and in any order
        for (const vt::Message& second : messages) {
            m_peer.wire->toB.push_back(ToBytes(vt::SubscribeMessage{1, QStringLiteral("/S"), false}));
            m_peer.wire->toB.push_back(ToBytes(vt::JoinMessage{1}));
            m_peer.wire->toB.push_back(ToBytes(first));
            m_peer.wire->toB.push_back(ToBytes(second));
            Say(m_peer, vt::UnsubscribeMessage{1});
            Acknowledge(m_peer, 0);
            if (!m_peer.channel->IsOpen()) return;
        }
    EXPECT_EQ(m_hub->CountSessions(), 1);
}

TEST_F(ServerRoads, HasOtherRoadsOnAnotherBus) {
    Say(m_peer, vt::HeardMessage{1, Join()});
    Said(m_peer);
    MemoryBus other;
    MemoryBus::End end(other);
    m_hub->SetRoads(&end);
    Settle(m_peer);
    const auto said = Said(m_peer);
    const auto has = [&said](auto type) {
        return std::any_of(said.begin(), said.end(), [](const DecodedMessage& message) {
            return std::holds_alternative<decltype(type)>(message.message);
        });
    };
    EXPECT_TRUE(has(vt::SubscribedMessage()));
    EXPECT_TRUE(has(vt::RoadMessage()));
    EXPECT_TRUE(IsToldInSession());
    m_hub->SetRoads(nullptr);
    EXPECT_TRUE(IsToldInSession());
    Say(m_peer, vt::JoinMessage{1});
    EXPECT_EQ(SaidOf<vt::RoadMessage>().size(), 0U);
}

}  // namespace
