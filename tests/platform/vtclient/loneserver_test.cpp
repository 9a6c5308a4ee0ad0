// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/loneserver.h>

using namespace std::chrono_literals;

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
            if (IsAcknowledged(message.message)) ++toAck;
            changes.insert(changes.end(), message.changes.begin(), message.changes.end());
        }
        Acknowledge(peer, toAck);
    }
    ASSERT_EQ(changes.size(), static_cast<std::size_t>(Count) + 3)
        << "with the root, the log, and what it says";
    EXPECT_EQ(changes[Count + 1].name, S("log"));
    EXPECT_EQ(changes.back().item.content, vt::Content(S("begun")));
}

TEST_F(LoneServer, ASelectionWithTooManyChoicesIsStaleUntilItHasFewer) {
    auto* const selection = Add<values::ValueSelection>("/S", S("s"));
    selection->AddItem(S("A"), 1.0, 1);
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    Said(peer);
    const TraceRecorder traces;
    selection->SetItems({{Long(vtlimits::MaxChange), 1.0, 1}, {S("B"), 2.0, 2}});
    Settle(peer);
    std::vector<vt::TreeChange> changes = SaidChanges(peer);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].change, EChange::Described);
    EXPECT_EQ(changes[0].item.flags, vt::ItemDescription::Stale);
    selection->Select(2);
    Settle(peer);
    for (const vt::TreeChange& change : SaidChanges(peer))
        EXPECT_EQ(change.change, EChange::Described) << "an index of choices that the client does not know";
    selection->DeleteItem(selection->GetItem(1));
    Settle(peer);
    changes = SaidChanges(peer);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].change, EChange::Items);
    EXPECT_EQ(changes[0].item.content, vt::Content(qint64{0}));
    EXPECT_EQ(changes[1].change, EChange::Described);
    EXPECT_EQ(changes[1].item.flags, 0U);
}

TEST_F(LoneServer, WhoIsBehindLearnsTooWhatIsStaleForItsSize) {
    auto* const text = Add<Text>("/S", S("t"));
    auto* const number = Add<Value<int>>("/S", S("n"));
    Peer quick = Connect();
    Peer slow = Connect();
    for (Peer* peer : {&quick, &slow})
        Subscribe(*peer, 1, "/S");
    quint64 ofQuick = 2;
    quint64 ofSlow = 2;
    Acknowledge(slow, ofSlow);
    for (const int length : {vtlimits::MaxChange, 1}) {
        // As much as the slow one takes, and a little more.
        for (int i = 0; i <= vtlimits::MaxUnackedMessages; ++i) {
            Acknowledge(quick, ofQuick);
            number->SetValue(number->GetValue() + 1);
            Settle(quick);
            ++ofQuick;
        }
        Acknowledge(quick, ofQuick);
        text->SetValue(Long(length));
        Settle(quick);
        ++ofQuick;
        const unsigned flags = length == 1 ? 0U : vt::ItemDescription::Stale;
        EXPECT_EQ(SaidChanges(quick).back().item.flags, flags);
        EXPECT_EQ(Said(slow).size(),
                  static_cast<std::size_t>(vtlimits::MaxUnackedMessages) + (length == 1 ? 0U : 4U));
        Acknowledge(slow, ofSlow += vtlimits::MaxUnackedMessages);
        const std::vector<vt::TreeChange> late = SaidChanges(slow);
        ASSERT_FALSE(late.empty());
        EXPECT_EQ(late.back().change, EChange::Described);
        EXPECT_EQ(late.back().item.flags, flags);
        Acknowledge(slow, ++ofSlow);
    }
}

TEST_F(LoneServer, AWriteThatLeadsToTooLargeAContentIsAnswered) {
    auto* const text = Add<Text>("/S", S("t"));
    RecordingObserver expand([text](Observable* /*source*/, TChangeCode code) {
        if (code == changecode::ContentChanged && text->GetValue() == S("all"))
            text->SetValue(Long(vtlimits::MaxFrame));
    });
    text->AddObserver(&expand);
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    Said(peer);
    vt::WriteMessage write;
    write.req = 9;
    write.sub = 1;
    write.id = 1;
    write.content = S("all");
    Say(peer, write);
    const std::vector<DecodedMessage> said = Said(peer);
    ASSERT_EQ(said.size(), 2U);
    const auto* const answer = std::get_if<vt::AnswerMessage>(&said[0].message);
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer->req, 9U);
    EXPECT_EQ(answer->result, vt::EResult::Done);
    ASSERT_EQ(said[1].changes.size(), 1U);
    EXPECT_EQ(said[1].changes[0].item.flags, vt::ItemDescription::Stale);
    text->DeleteObserver(&expand);
}

TEST_F(LoneServer, NamesAndPrefixesOfAnyLengthLeaveMessagesReadable) {
    m_hub.reset();
    m_settings.application = Long(2 * vtlimits::MaxHelloText);
    m_hub = std::make_unique<vt::ServerHub>(m_access, m_loop, m_settings);
    m_access.prefixes = QStringList{S("/S"), Long(vtlimits::MaxPathLength + 1)};
    m_tree.ProvideNode(S("/S"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    const std::vector<DecodedMessage> said = Said(peer);
    ASSERT_GE(said.size(), 2U);
    EXPECT_EQ(std::get<vt::WelcomeMessage>(said[0].message).application, Long(vtlimits::MaxHelloText));
    EXPECT_EQ(std::get<vt::SubscribedMessage>(said[1].message).prefixes, QStringList{S("/S")});
}

TEST_F(LoneServer, WhatHasTooLongANameOrPathStaysAtTheServer) {
    auto* const text = Add<Text>("/S", S("t"));
    Add<Text>("/S", Long(vtlimits::MaxNameLength));
    m_tree.ProvideNode(S("/S/%1/%1/%1/%1/%1").arg(Long(1000)));
    const TraceRecorder traces;
    Add<Text>("/S", Long(vtlimits::MaxNameLength + 1));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    const std::vector<vt::TreeChange> changes = SaidChanges(peer);
    EXPECT_EQ(changes.size(), 1U + 2U + 4U);
    EXPECT_EQ(traces.Messages().size(), 2U);
    text->SetName(Long(vtlimits::MaxNameLength + 1) + S("x"));
    Settle(peer);
    const std::vector<vt::TreeChange> renamed = SaidChanges(peer);
    ASSERT_EQ(renamed.size(), 1U);
    EXPECT_EQ(renamed[0].change, EChange::Described);
}

TEST_F(LoneServer, WhatIsNotSentMayGo) {
    m_tree.ProvideNode(S("/S"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S");
    Said(peer);
    const TraceRecorder traces;
    auto* const unsent = Add<Text>("/S", Long(vtlimits::MaxNameLength + 1));
    Settle(peer);
    unsent->SetValue(S("not sent either"));
    m_tree.Delete(unsent);
    Add<Text>("/S", S("next"));
    Settle(peer);
    const std::vector<vt::TreeChange> changes = SaidChanges(peer);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].name, S("next"));
}

TEST_F(LoneServer, AnItemWithALongNameCanBeSubscribedByItself) {
    Add<Text>("/S", Long(vtlimits::MaxNameLength + 1));
    Peer peer = Connect();
    Subscribe(peer, 1, qPrintable(S("/S/") + Long(vtlimits::MaxNameLength + 1)));
    const std::vector<vt::TreeChange> changes = SaidChanges(peer);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].id, 0U);
}

TEST_F(LoneServer, AValueThatIsRenamedIsAbsentUnderItsOldName) {
    auto* const text = Add<Text>("/S", S("old"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S/old");
    Said(peer);
    text->SetName(S("new"));
    Settle(peer);
    const std::vector<DecodedMessage> said = Said(peer);
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(TypeOf(said[0].message), EMessage::Absent);
}

TEST_F(LoneServer, AValueThatIsRenamedIsThereUnderItsNewName) {
    auto* const text = Add<Text>("/S", S("old"));
    Peer peer = Connect();
    Subscribe(peer, 1, "/S/new");
    Said(peer);
    text->SetName(S("new"));
    m_clock.Pass(250ms);
    Settle(peer);
    const std::vector<DecodedMessage> said = Said(peer);
    ASSERT_EQ(said.size(), 3U);
    EXPECT_EQ(TypeOf(said[0].message), EMessage::Subscribed);
}

TEST_F(LoneServer, WhoHearsOfTheEndOfASessionMayEndAnother) {
    Peer first = Connect();
    Peer second = Connect();
    Said(second);
    m_access.onEnded = [this](const VtPeer& peer) {
        if (peer.session == 1) m_hub->EndSession(2, S("alone it is of no use"));
    };
    first.wire->isOpen = false;
    Settle(first);
    const std::vector<DecodedMessage> said = Said(second);
    ASSERT_EQ(said.size(), 1U);
    EXPECT_EQ(std::get<vt::ByeMessage>(said[0].message).reason, S("alone it is of no use"));
    EXPECT_EQ(m_hub->CountSessions(), 0);
    m_access.onEnded = nullptr;
}

}  // namespace
