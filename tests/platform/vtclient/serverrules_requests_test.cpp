// SPDX-License-Identifier: Apache-2.0
// What a server answers to writes and creations.
#include <tests/platform/vtclient/serverrules.h>

namespace {

using namespace serverrules;

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
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 1);
    const vt::AnswerMessage answer = peer.Of<vt::AnswerMessage>()[0];
    EXPECT_EQ(answer.req, 42U);
    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.reason, S(GetParam().reason));
    EXPECT_EQ(QString::number(n->GetValue()), S(GetParam().shown));
    const bool isWritten = GetParam().result != EResult::Denied;
    EXPECT_EQ(m_access.written, isWritten ? std::vector<QString>{S("/S/n")} : std::vector<QString>());
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
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 2);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].result, EResult::Gone);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>()[1].result, EResult::Gone);
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
}

TEST_F(ServerRules, ANodeHasNoContent) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Write(1, 1, 0, QStringLiteral("x")));
    Run();
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(0).reason, S("a node has no content"));
}

TEST_F(ServerRules, WhatMayNotBeWrittenIsDenied) {
    auto* const t = Add<Text>("/S", "t");
    m_access.unwritable.insert(S("/S/t"));
    RawPeer& peer = Subscribed();
    peer.Send(Write(1, 1, 1, QStringLiteral("x")));
    Run();
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(0).result, EResult::Denied);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(0).reason, S("not for you"));
    EXPECT_EQ(t->GetValue(), QString());
    EXPECT_TRUE(m_access.written.empty());
}

TEST_F(ServerRules, WhoEndsWithItsWriteHasNotWritten) {
    auto* const t = Add<Text>("/S", "t");
    RawPeer& peer = Subscribed();
    RecordingObserver server([this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_hub->EndAll(S("over"));
    });
    t->AddObserver(&server);
    peer.Send(Write(1, 1, 1, QStringLiteral("x")));
    Run();
    EXPECT_EQ(m_access.ended.size(), 1U);
    EXPECT_TRUE(m_access.written.empty()) << "nobody would ever hear that it has gone";
    t->DeleteObserver(&server);
}

TEST_F(ServerRules, ASelectionIsWrittenByKey) {
    auto* const selection = Add<ValueSelection>("/S", "s");
    selection->AddItem(S("off"), 0.0, 10);
    selection->AddItem(S("on"), 1.0, 20);
    RawPeer& peer = Subscribed();
    peer.Send(Write(1, 1, 1, qint64{20}));
    Run();
    EXPECT_EQ(selection->GetCurrentText(), S("on"));
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(0).result, EResult::Done);
    peer.Send(Write(2, 1, 1, qint64{30}));
    Run();
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(1).reason, S("the selection has no item with this key"));
    EXPECT_EQ(selection->GetCurrentText(), S("on"));
    EXPECT_THAT(m_access.written, ElementsAre(S("/S/s")));
    peer.Send(Write(3, 1, 1, vt::Content()));
    Run();
    EXPECT_EQ(selection->GetCurrentIndex(), ValueSelection::NoIndex);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>().at(2).result, EResult::Done);
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
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].result, EResult::Clamped);
    EXPECT_EQ(std::get<bool>(peer.Of<vt::AnswerMessage>()[0].content), false);
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
    std::map<quint32, vt::AnswerMessage> answers;
    for (const vt::AnswerMessage& answer : peer.Of<vt::AnswerMessage>())
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

TEST_F(ServerRules, ACreationThatCannotBeHearsTheReasonOfWhoWouldMakeIt) {
    m_access.unprovidable.insert(S("/S/no"));
    m_access.uncreatable.insert(S("/S/no"));
    RawPeer& peer = Subscribed("/");
    peer.Send(Create(1, 1, "/S/no"));
    Run();
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 1);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].result, EResult::Denied);
    EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].reason, S("nothing comes here"));
}

/// What is there or is made there, what is asked for, and what becomes of it.
struct OtherKind {
    const char* name;
    const char* path;
    vt::EItemKind asked;
    const char* reason;
};

class OtherKinds : public ServerRules, public testing::WithParamInterface<OtherKind> {};

TEST_P(OtherKinds, AreNotTakenForWhatWasAskedFor) {
    Add<Text>("/S", "text");
    m_tree.ProvideNode(S("/S/node"));
    m_access.onProvide = [this](const QString& path) {
        if (path == S("/S/made")) m_tree.ProvideNode(path);
    };
    RawPeer& peer = Subscribed();
    vt::CreateMessage create = Create(1, 1, GetParam().path);
    create.item.kind = GetParam().asked;
    if (create.item.kind == vt::EItemKind::Text) create.item.content = S("new");
    if (create.item.kind == vt::EItemKind::Bool) create.item.content = true;
    peer.Send(create);
    Run();
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 1);
    const vt::AnswerMessage answer = peer.Of<vt::AnswerMessage>()[0];
    EXPECT_EQ(answer.reason, S(GetParam().reason));
    EXPECT_EQ(answer.result, answer.reason.isEmpty() ? EResult::Done : EResult::Denied);
    EXPECT_EQ(Item("/S/text") != nullptr && !Item("/S/text")->IsNode(), true);
}

INSTANTIATE_TEST_SUITE_P(
    All, OtherKinds,
    testing::Values(
        OtherKind{"TheSame", "/S/text", vt::EItemKind::Text, ""},
        OtherKind{"TheSameNode", "/S/node", vt::EItemKind::Node, ""},
        OtherKind{"AnotherValue", "/S/text", vt::EItemKind::Bool, "what is there is of type text"},
        OtherKind{"ANodeForAValue", "/S/text", vt::EItemKind::Node, "what is there is of type text"},
        OtherKind{"AValueForANode", "/S/node", vt::EItemKind::Text, "what is there is a node"},
        OtherKind{"MadeByTheServer", "/S/made", vt::EItemKind::Node, ""},
        OtherKind{"AValueWhereTheServerMakesANode", "/S/made", vt::EItemKind::Text, ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServerRules, ACreationIsAnsweredAfterTheItemWasTold) {
    RawPeer& peer = Subscribed("/");
    peer.Send(Create(1, 1, "/S"));
    Run();
    ASSERT_GE(peer.messages.size(), 2U);
    EXPECT_EQ(TypeOf(peer.messages[peer.messages.size() - 2]), vt::EMessage::Batch);
    EXPECT_EQ(TypeOf(peer.messages.back()), vt::EMessage::Answer);
}

TEST_F(ServerRules, ATextThatIsTooLongIsDeniedWithTheLimitAndTheSessionGoesOn) {
    m_access.maxText = 2000;
    auto* const text = Add<Text>("/S", "text");
    RawPeer& peer = Subscribed();
    const quint32 id = 1;
    struct Row {
        int length;
        EResult result;
        const char* reason;
    };
    const Row rows[] = {
        {1024, EResult::Done, ""},
        {2000, EResult::Done, ""},
        {2001, EResult::Denied, "a text has at most 2000 characters here, this one has 2001"},
        {300'000, EResult::Denied, "a text has at most 2000 characters here, this one has 300000"}};
    for (const Row& row : rows) {
        peer.messages.clear();
        peer.Send(Write(7, 1, id, QString(row.length, QLatin1Char('x'))));
        Run();
        ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 1) << row.length;
        EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].result, row.result) << row.length;
        EXPECT_EQ(peer.Of<vt::AnswerMessage>()[0].reason, S(row.reason));
        EXPECT_LE(text->GetValue().size(), 2000);
    }
    EXPECT_EQ(peer.Count<vt::ByeMessage>(), 0);
}

TEST_F(ServerRules, WhatIsTooLongIsNotCreatedEither) {
    m_access.maxText = 2000;
    Add<Text>("/S", "text");
    RawPeer& peer = Subscribed();
    vt::CreateMessage create = Create(1, 1, "/S/new");
    create.item.kind = vt::EItemKind::Text;
    create.item.content = QString(2001, QLatin1Char('x'));
    peer.Send(create);
    create = Create(2, 1, "/S/list");
    create.item.kind = vt::EItemKind::List;
    create.item.content = QVector<double>(vtlimits::MaxWrittenNumbers + 1);
    peer.Send(create);
    create = Create(3, 1, "/S/selection");
    create.item.kind = vt::EItemKind::Selection;
    create.item.choices.resize(vtlimits::MaxWrittenChoices + 1);
    peer.Send(create);
    Run();
    ASSERT_EQ(peer.Count<vt::AnswerMessage>(), 3);
    for (const vt::AnswerMessage& answer : peer.Of<vt::AnswerMessage>())
        EXPECT_EQ(answer.result, EResult::Denied) << answer.req;
    for (const char* path : {"/S/new", "/S/list", "/S/selection"})
        EXPECT_EQ(m_tree.FindItem(S(path)), nullptr) << path;
}

}  // namespace
