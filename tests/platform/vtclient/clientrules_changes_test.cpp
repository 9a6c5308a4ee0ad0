// SPDX-License-Identifier: Apache-2.0
// How a client shows the changes that a server tells.
#include <tests/platform/vtclient/clientrules.h>

namespace {

using namespace clientrules;

TEST_F(ClientRules, OnALossValuesAreStaleBeforeAnybodyIsTold) {
    Establish();
    values::TValueState seen = values::Valid;
    m_observer.React([&](Observable*, TChangeCode code) {
        if (code == connectioncode::Disconnected) seen = T()->GetState();
    });
    m_wire->isOpen = false;
    Run();
    EXPECT_EQ(seen, values::Stale);
    EXPECT_THAT(m_observer.Codes(), ElementsAre(17, 15));
    m_observer.React({});
}

TEST_F(ClientRules, AMissedBatchLeadsToANewSnapshot) {
    Establish();
    Batch(4, {Changed(1, S("two"))});
    EXPECT_TRUE(m_client->IsConnected());
    EXPECT_FALSE(m_tic->IsEstablished());
    EXPECT_EQ(T()->GetValue(), S("one"));
    EXPECT_EQ(T()->GetState(), values::Stale);
    EXPECT_EQ(m_server->Count<vt::UnsubscribeMessage>(), 1);
    ASSERT_EQ(m_server->Count<vt::SubscribeMessage>(), 2);
    const quint32 before = m_sub;
    m_sub = m_server->Of<vt::SubscribeMessage>()[1].sub;
    EXPECT_NE(m_sub, before);
    const Text* const kept = T();
    Say(About<vt::SubscribedMessage>());
    Say(About<vt::SnapshotMessage>(1), {AddedNode(0, 0, "S"), AddedText(8, 0, "t", "three")});
    Say(About<vt::EndMessage>(2));
    EXPECT_TRUE(m_tic->IsEstablished());
    EXPECT_EQ(T(), kept);
    EXPECT_EQ(T()->GetValue(), S("three"));
    EXPECT_EQ(T()->GetState(), values::Valid);
}

TEST_F(ClientRules, ADoubledBatchLeadsToANewSnapshotToo) {
    Establish();
    Batch(3, {Changed(1, S("two"))});
    Batch(3, {Changed(1, S("two"))});
    EXPECT_EQ(m_server->Count<vt::SubscribeMessage>(), 2);
}

struct MalformedRow {
    const char* name;
    std::vector<TreeChange> changes;
    const char* reason;
};

class MalformedChanges : public ClientRules, public testing::WithParamInterface<MalformedRow> {};

TEST_P(MalformedChanges, EndTheSessionWithAReason) {
    Establish();
    Batch(3, GetParam().changes);
    Fail(GetParam().reason);
    ASSERT_NE(T(), nullptr);
    EXPECT_EQ(T()->GetState(), values::Stale);
}

INSTANTIATE_TEST_SUITE_P(
    All, MalformedChanges,
    testing::Values(
        MalformedRow{"UnknownId", {Changed(77, S("x"))}, "changes of '/S': an unknown id 77"},
        MalformedRow{"WrongKind",
                     {Changed(1, qint64{3})},
                     "changes of '/S': a content that is not of the item's kind"},
        MalformedRow{"ContentOfANode", {Changed(0, S("x"))}, "changes of '/S': a node with a content"},
        MalformedRow{"RemovedRoot", {Removed(0)}, "changes of '/S': the root of a subscription removed"},
        MalformedRow{"IdTwice", {AddedText(1, 0, "u", "")}, "changes of '/S': id 1 added twice"},
        MalformedRow{"NameTwice", {AddedText(2, 0, "t", "")}, "changes of '/S': the name 't' added twice"},
        MalformedRow{
            "UnknownParent", {AddedText(2, 9, "u", "")}, "changes of '/S': id 2 added below an unknown one"},
        MalformedRow{
            "BelowAValue", {AddedText(2, 1, "u", "")}, "changes of '/S': an item added below a value"},
        MalformedRow{"EmptyName", {AddedText(2, 0, "", "")}, "changes of '/S': '' is no name"},
        MalformedRow{"NameWithASlash", {AddedText(2, 0, "a/b", "")}, "changes of '/S': 'a/b' is no name"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ClientRules, WhatIsNewIsShownWhenItsSeriesIsComplete) {
    Establish();
    RecordingObserver root;
    m_tree.FindItem(S("/L"))->GetObservable()->AddObserver(&root);
    Batch(3, {AddedNode(2, 0, "n"), AddedText(3, 2, "a", "x")}, true);
    EXPECT_EQ(m_tree.FindItem(S("/L/n")), nullptr);
    Batch(4, {AddedText(4, 2, "b", "y")});
    EXPECT_NE(m_tree.FindItem(S("/L/n/a")), nullptr);
    EXPECT_NE(m_tree.FindItem(S("/L/n/b")), nullptr);
    EXPECT_EQ(root.Count(changecode::ChildrenAdded), 1);
    m_tree.FindItem(S("/L"))->GetObservable()->DeleteObserver(&root);
}

TEST_F(ClientRules, EightMessagesAreAcknowledgedTogether) {
    Establish();
    for (quint64 seq = 3; seq < 8; ++seq)
        Batch(seq, {Changed(1, QString::number(seq))});
    EXPECT_EQ(m_server->Count<vt::AckMessage>(), 0);
    Batch(8, {Changed(1, S("8"))});
    ASSERT_EQ(m_server->Count<vt::AckMessage>(), 1);
    EXPECT_EQ(m_server->Of<vt::AckMessage>().back().count, 8U);
}

TEST_F(ClientRules, WhatVanishesDuringItsSnapshotLeavesNothing) {
    m_tic = m_client->AddTic(S("/L,/S"), "");
    Connect();
    Welcome();
    m_sub = m_server->Of<vt::SubscribeMessage>().at(0).sub;
    Say(About<vt::SubscribedMessage>());
    Say(About<vt::SnapshotMessage>(1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "one")});
    Say(About<vt::AbsentMessage>());
    EXPECT_EQ(m_tree.FindItem(S("/L")), nullptr);
    Say(About<vt::SubscribedMessage>());
    Say(About<vt::SnapshotMessage>(1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "two")});
    Say(About<vt::EndMessage>(2));
    ASSERT_NE(T(), nullptr);
    EXPECT_EQ(T()->GetValue(), S("two"));
}

TEST_F(ClientRules, AnItemDeletedHereIsNotSpokenOfAgain) {
    Establish();
    m_tree.Delete(T());
    Batch(3, {Changed(1, S("two"))});
    Batch(4, {Removed(1)});
    Batch(5, {AddedText(2, 0, "t", "again")});
    EXPECT_TRUE(m_client->IsConnected());
    ASSERT_NE(T(), nullptr);
    EXPECT_EQ(T()->GetValue(), S("again"));
}

}  // namespace
