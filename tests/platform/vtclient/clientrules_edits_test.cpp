// SPDX-License-Identifier: Apache-2.0
// What becomes of edits and creations of a client.
#include <tests/platform/vtclient/clientrules.h>

namespace {

using namespace clientrules;

TEST_F(ClientRules, WritesOfOneValueCoalesceWhileOneIsUnanswered) {
    Establish();
    for (const char* content : {"a", "b", "c"}) {
        T()->SetValue(S(content));
        Run();
    }
    ASSERT_EQ(m_server->Count<vt::WriteMessage>(), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of<vt::WriteMessage>()[0].content), S("a"));
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Done);
    ASSERT_EQ(m_server->Count<vt::WriteMessage>(), 2);
    EXPECT_EQ(std::get<QString>(m_server->Of<vt::WriteMessage>()[1].content), S("c"));
    EXPECT_EQ(T()->GetValue(), S("c"));
    EXPECT_TRUE(m_client->HasUnansweredWrites());
    Answer(m_server->Of<vt::WriteMessage>()[1].req, EResult::Done);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

TEST_F(ClientRules, EditsOfOneTurnAreOneWriteAndOneThatIsTakenBackIsNone) {
    Establish();
    T()->SetValue(S("a"));
    T()->SetValue(S("b"));
    Run();
    ASSERT_EQ(m_server->Count<vt::WriteMessage>(), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of<vt::WriteMessage>()[0].content), S("b"));
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Done);
    T()->SetValue(S("c"));
    T()->SetValue(S("b"));
    Run();
    EXPECT_EQ(m_server->Count<vt::WriteMessage>(), 1);
}

TEST_F(ClientRules, OlderServerContentIsNotShownWhileAWriteIsUnanswered) {
    Establish();
    T()->SetValue(S("mine"));
    Run();
    Batch(3, {Changed(1, S("older"))});
    EXPECT_EQ(T()->GetValue(), S("mine"));
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Done);
    EXPECT_EQ(T()->GetValue(), S("mine"));
    Batch(4, {Changed(1, S("newer"))});
    EXPECT_EQ(T()->GetValue(), S("newer"));
}

TEST_F(ClientRules, ADeniedWriteShowsTheServersContentAndSaysWhy) {
    RefusalRecorder recorder;
    Establish();
    T()->SetValue(S("mine"));
    Run();
    Batch(3, {Changed(1, S("theirs"))});
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Denied, "needs MayBIT");
    EXPECT_EQ(T()->GetValue(), S("theirs"));
    EXPECT_THAT(recorder.refusals, ElementsAre(S("/S/t: needs MayBIT")));
}

TEST_F(ClientRules, AClampedWriteShowsWhatHolds) {
    Establish();
    T()->SetValue(S("mine"));
    Run();
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Clamped, "", S("held"));
    EXPECT_EQ(T()->GetValue(), S("held"));
}

TEST_F(ClientRules, AWriteWithoutAConnectionIsRefusedHere) {
    RefusalRecorder recorder;
    Establish();
    m_wire->isOpen = false;
    Run();
    T()->SetValue(S("mine"));
    EXPECT_EQ(T()->GetValue(), S("one"));
    EXPECT_THAT(recorder.refusals, ElementsAre(S("/S/t: there is no connection to the server")));
}

TEST_F(ClientRules, AWriteWhoseAnswerIsLostIsTakenBack) {
    RefusalRecorder recorder;
    Establish();
    T()->SetValue(S("mine"));
    Run();
    m_wire->isOpen = false;
    Run();
    EXPECT_EQ(T()->GetValue(), S("one"));
    EXPECT_THAT(recorder.refusals,
                ElementsAre(S("/S/t: the connection was lost before the server answered")));
    EXPECT_FALSE(m_client->HasUnansweredWrites());
}

TEST_F(ClientRules, AnOwnOccurrenceIsShownOnce) {
    Establish();
    Batch(3, {AddedText(2, 0, "log", "", vt::ItemDescription::EveryChange)});
    auto* const log = dynamic_cast<Text*>(m_tree.FindItem(S("/L/log")));
    std::vector<QString> shown;
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) shown.push_back(log->GetValue());
    });
    log->AddObserver(&observer);
    log->SetValue(S("mine"));
    log->SetValue(S("mine"));
    Run();
    ASSERT_EQ(m_server->Count<vt::WriteMessage>(), 2);
    TreeChange own = Changed(2, S("mine"));
    own.change = EChange::Own;
    own.session = 5;
    TreeChange others = own;
    others.session = 6;
    Batch(4, {own, own, others});
    Answer(m_server->Of<vt::WriteMessage>()[0].req, EResult::Done);
    Answer(m_server->Of<vt::WriteMessage>()[1].req, EResult::Done);
    EXPECT_THAT(shown, ElementsAre(S("mine"), S("mine"), S("mine")));
    log->DeleteObserver(&observer);
}

TEST_F(ClientRules, WhatTheServerRefusesToCreateStaysLocalAndIsTracedOnce) {
    Establish();
    const TraceRecorder traces;
    auto* const note = new Text;
    note->SetName(S("note"));
    m_tree.AddValue(S("/L"), note);
    Run();
    ASSERT_EQ(m_server->Count<vt::CreateMessage>(), 1);
    EXPECT_EQ(m_server->Of<vt::CreateMessage>()[0].path, S("/S/note"));
    Answer(m_server->Of<vt::CreateMessage>()[0].req, EResult::Denied, "not here");
    note->SetValue(S("still mine"));
    Run();
    EXPECT_EQ(m_server->Count<vt::CreateMessage>(), 1);
    EXPECT_EQ(m_server->Count<vt::WriteMessage>(), 0);
    EXPECT_EQ(note->GetValue(), S("still mine"));
    EXPECT_EQ(note->GetState(), values::Valid);
    EXPECT_THAT(traces.Messages(),
                ElementsAre(S("'/S/note' is not created at the server and stays local: not here")));
}

TEST_F(ClientRules, AnEditAfterTheCreationWasSentIsWrittenWhenTheItemIsThere) {
    Establish();
    auto* const note = new Text;
    note->SetName(S("note"));
    m_tree.AddValue(S("/L"), note);
    note->SetValue(S("first"));
    Run();
    EXPECT_EQ(std::get<QString>(m_server->Of<vt::CreateMessage>().at(0).item.content), S("first"));
    note->SetValue(S("second"));
    Batch(3, {AddedText(2, 0, "note", "first")});
    EXPECT_EQ(note->GetValue(), S("second"));
    EXPECT_EQ(m_server->Count<vt::WriteMessage>(), 0);
    Answer(m_server->Of<vt::CreateMessage>()[0].req, EResult::Done);
    EXPECT_EQ(note->GetValue(), S("second"));
    ASSERT_EQ(m_server->Count<vt::WriteMessage>(), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of<vt::WriteMessage>()[0].content), S("second"));
}

TEST_F(ClientRules, WhatWasCreatedAndHasGoneAgainGoesHereToo) {
    Establish();
    auto* const note = new Text;
    note->SetName(S("note"));
    m_tree.AddValue(S("/L"), note);
    Run();
    Answer(m_server->Of<vt::CreateMessage>().at(0).req, EResult::Done);
    EXPECT_EQ(m_tree.FindItem(S("/L/note")), nullptr);
}

TEST_F(ClientRules, ContentsThatCameBeforeTheAnswerToACreationAreShownAfterIt) {
    Establish();
    auto* const note = new Text;
    note->SetName(S("note"));
    m_tree.AddValue(S("/L"), note);
    Run();
    Batch(3, {AddedText(2, 0, "note", "")});
    Batch(4, {Changed(2, S("theirs"))});
    Answer(m_server->Of<vt::CreateMessage>().at(0).req, EResult::Done);
    EXPECT_EQ(note->GetValue(), S("theirs"));
}

TEST_F(ClientRules, AnAnswerToNoRequestEndsTheSession) {
    Establish();
    Answer(99, EResult::Done);
    Fail("an answer to no request");
}

}  // namespace
