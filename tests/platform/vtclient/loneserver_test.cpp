// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneserver.h>

namespace {

using values::EDelivery;
using values::Value;
using vt::EChange;
using vt::EMessage;

using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

QString Long(int length) {
    return QString(length, QChar(u'l'));
}

TEST_F(LoneServer, ABatchThatIsNearlyFullHasRoomForALongText) {
    auto* const first = Add<Text>("/S", S("first"));
    auto* const second = Add<Text>("/S", S("second"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    Said(peer);
    first->SetValue(Long(vtlimits::BatchTarget - 100));
    second->SetValue(Long(vtlimits::MaxChange - 10));
    Settle(peer);
    const std::vector<vt::TreeChange> changes = SaidChanges(peer);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[1].change, EChange::Changed);
}

TEST_F(LoneServer, ABatchThatIsNearlyFullHasRoomForALongMessage) {
    auto* const first = Add<Text>("/S", S("first"));
    auto* const log = Add<Text>("/S", S("log"));
    log->SetDelivery(EDelivery::EveryChange);
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    Said(peer);
    first->SetValue(Long(vtlimits::BatchTarget - 100));
    log->SetValue(Long(vtlimits::MaxChange - 10));
    log->SetValue(Long(vtlimits::MaxChange - 10));
    Settle(peer);
    EXPECT_EQ(SaidChanges(peer).size(), 3U);
}

/// A client that is behind learns first of what is new, however much that is, and then of what happened to
/// it.
TEST_F(LoneServer, MuchThatIsNewComesInPartsBeforeAMessageOfTheLastOfIt) {
    constexpr int Count = 20000;  // twice what is sent without an acknowledgement, and a frame more
    m_tree.ProvideNode(S("/S"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    for (int i = 0; i < Count; ++i)
        Add<Value<bool>>("/S", Long(150) + QString::number(i));
    auto* const log = Add<Text>("/S", S("log"));
    log->SetDelivery(EDelivery::EveryChange);
    log->SetValue(S("begun"));
    Settle(peer);
    std::vector<vt::TreeChange> changes;
    quint64 toAck = 0;
    for (std::vector<DecodedMessage> said = Said(peer); !said.empty(); said = Said(peer)) {
        for (const DecodedMessage& message : said) {
            if (CarriesChanges(message.message.type) || message.message.type == EMessage::End) ++toAck;
            changes.insert(changes.end(), message.changes.begin(), message.changes.end());
        }
        Acknowledge(peer, toAck);
    }
    ASSERT_EQ(changes.size(), static_cast<std::size_t>(Count) + 3)
        << "with the root, the log, and what it says";
    EXPECT_EQ(changes[Count + 1].name, S("log"));
    EXPECT_EQ(changes.back().item.content, vt::Content(S("begun")));
}

}  // namespace
