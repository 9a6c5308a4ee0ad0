// SPDX-License-Identifier: Apache-2.0
// What a client does when whoever is told answers by changing what the telling is about.
#include <tests/platform/vtclient/loneclient.h>

#include <platform/vtclient/wire/vtlimits.h>

namespace {

using values::Value;
using vt::ChangeWriter;
using vt::EItemKind;
using vt::EMessage;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

void AddNode(ChangeWriter& writer, quint32 id, quint32 parent, const char* name) {
    values::Node node(S(name));
    writer.Added(id, parent, node, EItemKind::Node, 0);
}

void AddNumber(ChangeWriter& writer, quint32 id, quint32 parent, const char* name, int content) {
    Value<int> number(content);
    number.SetName(S(name));
    writer.Added(id, parent, number, EItemKind::Int, 0);
}

class LoneClientAnswers : public LoneClient {
  protected:
    void React(const char* path, TChangeCode code, const std::function<void()>& reaction) {
        m_reaction.React([this, code, reaction](Observable* /*source*/, TChangeCode told) {
            if (told != code) return;
            const std::function<void()> once = reaction;  // this goes with what comes next
            m_reaction.React(nullptr);
            once();
        });
        Item(path)->GetObservable()->AddObserver(&m_reaction);
    }
    void Lose() {
        m_wire->isOpen = false;
        Settle();
        Said();
    }
};

TEST_F(LoneClientAnswers, WhatWasReleasedIsNotAskedForAfterALoss) {
    IVtTic* const tic = AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) { AddNumber(writer, 1, 0, "n", 5); });
    m_client->ReleaseNode(m_tree.FindNode(S("/L")));
    Lose();
    Welcome();
    EXPECT_TRUE(Said<vt::SubscribeMessage>().empty());
    EXPECT_FALSE(tic->IsEstablished());
    EXPECT_NE(Item("/L/n"), nullptr);
}

TEST_F(LoneClientAnswers, AnAnswerAboutWhatIsMirroredNoMoreIsTakenForOne) {
    IVtTic* const tic = AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) { AddNumber(writer, 1, 0, "n", 5); });
    Find<Value<int>>("/L/n")->SetValue(6);
    Settle();
    const auto writes = Said<vt::WriteMessage>();
    ASSERT_EQ(writes.size(), 1U);
    m_client->RemoveTic(tic);
    Answer(writes.front().req, vt::EResult::Done);
    EXPECT_TRUE(m_client->IsConnected());
    EXPECT_FALSE(m_client->HasUnansweredWrites());
}

TEST_F(LoneClientAnswers, WhatIsAddedWhileTheNodeAboveIsReleasedStaysLocal) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) {
        AddNode(writer, 1, 0, "a");
        AddNumber(writer, 2, 1, "v", 5);
        AddNode(writer, 3, 1, "n");
    });
    React("/L/a/v", changecode::StateChanged, [this] { m_tree.ProvideNode(S("/L/a/n/x")); });
    m_client->ReleaseNode(m_tree.FindNode(S("/L/a")));
    Settle();
    EXPECT_NE(Item("/L/a/n/x"), nullptr);
    EXPECT_TRUE(Said<vt::CreateMessage>().empty());
    EXPECT_FALSE(m_client->HasUnansweredWrites());
}

TEST_F(LoneClientAnswers, WhoHearsThatAnOccurrenceIsTooLargeMayDeleteWhatTheNextIsOf) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) {
        Value<QString> text;
        text.SetName(S("log"));
        writer.Added(1, 0, text, EItemKind::Text, vt::ItemDescription::EveryChange);
    });
    Said();
    auto* const log = Find<Value<QString>>("/L/log");
    log->SetValue(QString(static_cast<int>(vtlimits::MaxFrame), QChar(u'l')));
    log->SetValue(S("short"));
    React("/L/log", changecode::ContentChanged, [this] { m_tree.Delete(Item("/L/log")); });
    Settle();
    EXPECT_TRUE(Said().empty());
    EXPECT_EQ(Item("/L/log"), nullptr);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
}

TEST_F(LoneClientAnswers, WhatIsAddedWhileTheRestOfAnEarlierMirrorGoesIsOffered) {
    auto* const left = new Value<int>(1);
    left->SetName(S("left"));
    ASSERT_TRUE(m_tree.AddValue(S("/L/m"), left));
    left->SetState(values::Stale);
    AddTic("/L,/S");
    React("/L/m/left", changecode::StateChanged, [this] { m_tree.ProvideNode(S("/L/late")); });
    Welcome();
    ShowSubtree(1, [](ChangeWriter& writer) { AddNode(writer, 1, 0, "m"); });
    EXPECT_EQ(Item("/L/m/left"), nullptr);
    const auto creations = Said<vt::CreateMessage>();
    ASSERT_EQ(creations.size(), 1U);
    EXPECT_EQ(creations.front().path, S("/S/late"));
}

TEST_F(LoneClientAnswers, AnEditThatWasTakenBackIsNotWrittenWhenItsValueComesAgain) {
    AddTic("/L,/S");
    Welcome();
    ShowSubtree(1, [](ChangeWriter& /*writer*/) {});
    m_tree.ProvideNode(S("/L/own"));
    Settle();
    const auto created = [](ChangeWriter& writer, int content) {
        AddNode(writer, 2, 0, "own");
        AddNumber(writer, 3, 2, "n", content);
    };
    ShowChanges(1, 3, [&](ChangeWriter& writer) { created(writer, 5); });
    Answer(Said<vt::CreateMessage>().at(0).req, vt::EResult::Done);
    auto* const number = Find<Value<int>>("/L/own/n");
    for (const int edit : {6, 7}) {  // the second while the first is under way
        number->SetValue(edit);
        Settle();
    }
    Lose();
    EXPECT_EQ(number->GetValue(), 5);
    Welcome();
    ShowSubtree(1, [](ChangeWriter& /*writer*/) {});
    const auto again = Said<vt::CreateMessage>();
    ASSERT_EQ(again.size(), 1U);
    ShowChanges(1, 3, [&](ChangeWriter& writer) { created(writer, 9); });
    Answer(again.front().req, vt::EResult::Done);
    EXPECT_EQ(Find<Value<int>>("/L/own/n"), number);
    EXPECT_EQ(number->GetValue(), 9);
    EXPECT_TRUE(Said<vt::WriteMessage>().empty());
}

}  // namespace
