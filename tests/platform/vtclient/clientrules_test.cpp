// SPDX-License-Identifier: Apache-2.0
// What a client does with what a server sends, where a test plays the server message by message.
#include <tests/platform/vtclient/rawpeer.h>
#include <tests/platform/vtclient/twoends.h>

#include <platform/values/refusals.h>
#include <platform/vtclient/vtlimits.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using values::Value;
using values::ValueNumeric;
using vt::EBye;
using vt::EChange;
using vt::EItemKind;
using vt::EMessage;
using vt::EResult;
using vt::Message;
using vt::TreeChange;
using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

TreeChange AddedNode(quint32 id, quint32 parent, const char* name) {
    TreeChange change;
    change.change = EChange::Added;
    change.id = id;
    change.parent = parent;
    change.name = S(name);
    return change;
}

TreeChange AddedText(quint32 id, quint32 parent, const char* name, const char* content, unsigned flags = 0) {
    TreeChange change = AddedNode(id, parent, name);
    change.item.kind = EItemKind::Text;
    change.item.content = S(content);
    change.item.flags = flags;
    return change;
}

TreeChange Changed(quint32 id, const vt::Content& content) {
    TreeChange change;
    change.id = id;
    change.item.content = content;
    return change;
}

TreeChange Removed(quint32 id) {
    TreeChange change;
    change.change = EChange::Removed;
    change.id = id;
    return change;
}

QByteArray Bytes(const std::vector<TreeChange>& changes) {
    vt::ChangeWriter writer;
    for (const TreeChange& change : changes)
        writer.Write(change);
    return writer.Take();
}

/// Keeps what was refused.
class RefusalRecorder final : public values::IRefusalListener {
  public:
    RefusalRecorder() { values::Refusals::Instance().AddListener(this); }
    ~RefusalRecorder() override { values::Refusals::Instance().RemoveListener(this); }
    void OnRefused(values::TreeItem* /*item*/, const QString& path, const QString& reason) override {
        refusals.push_back(path + QStringLiteral(": ") + reason);
    }

    std::vector<QString> refusals;
};

class ClientRules : public testing::Test {
  protected:
    class Connector final : public vt::IConnector {
      public:
        explicit Connector(ClientRules& rules) : m_rules(rules) {}
        void SetListener(IListener* listener) override { m_rules.m_listener = listener; }
        void Connect() override {
            ++m_rules.m_attempts;
            m_rules.m_isConnecting = true;
        }
        void Abort() override { m_rules.m_isConnecting = false; }

      private:
        ClientRules& m_rules;
    };

    ClientRules() { Start(VtClientOptions()); }
    ~ClientRules() override { m_client.reset(); }

    void Start(const VtClientOptions& options) {
        m_client.reset();
        auto loop = std::make_unique<ManualLoop>(m_clock);
        m_loop = loop.get();
        m_client = std::make_unique<vt::VtClient>(S("host"), 1, options, std::make_unique<Connector>(*this),
                                                  std::move(loop));
        m_client->AddObserver(&m_observer);
    }
    /// A wire, up to the client's hello.
    void Connect(bool isLoopback = true, bool isEncrypted = false) {
        m_loop->Run();
        ASSERT_TRUE(m_isConnecting);
        m_isConnecting = false;
        m_wire = std::make_shared<MemoryChannel::Wire>();
        auto channel = std::make_unique<MemoryChannel>(m_wire, true);
        channel->SetPeer(isLoopback, isEncrypted, QString());
        m_end = channel.get();
        m_server = std::make_unique<RawPeer>(m_wire, false);
        m_listener->OnConnected(std::move(channel));
        m_server->Read();
        ASSERT_EQ(m_server->Count(EMessage::Hello), 1);
    }
    void Welcome() {
        Message welcome = Message::Of(EMessage::Welcome);
        welcome.version = vtlimits::ProtocolVersion;
        welcome.session = 5;
        welcome.ping = 5000;
        welcome.dead = 15000;
        Say(welcome);
    }
    void Run() {
        for (int round = 0; round < 1000; ++round) {
            bool hasRun = m_loop->Run();
            if (m_wire && !m_wire->isAGone) hasRun = m_end->Deliver() || hasRun;
            if (m_server) m_server->Read();
            if (!hasRun) return;
        }
        FAIL() << "it never comes to rest";
    }
    void Say(const Message& message, const std::vector<TreeChange>& changes = {}) {
        m_server->Send(message, Bytes(changes));
        Run();
    }
    Message About(EMessage type, quint64 seq) {
        Message message = Message::Of(type);
        message.sub = m_sub;
        message.seq = seq;
        return message;
    }
    void Batch(quint64 seq, const std::vector<TreeChange>& changes, bool more = false) {
        Message batch = About(EMessage::Batch, seq);
        batch.more = more;
        Say(batch, changes);
    }
    void Fail(const char* reason) {
        ASSERT_EQ(m_server->Count(EMessage::Bye), 1) << "the client goes on";
        EXPECT_EQ(m_server->Of(EMessage::Bye)[0].reason, S(reason));
        EXPECT_FALSE(m_client->IsConnected());
    }
    /// Mirrors /S at /L: a node with the text "t" (id 1).
    void Establish() {
        m_tic = m_client->AddTic(S("/L,/S"), "");
        Connect();
        Welcome();
        ASSERT_EQ(m_server->Count(EMessage::Subscribe), 1);
        m_sub = m_server->Of(EMessage::Subscribe)[0].sub;
        Message subscribed = About(EMessage::Subscribed, 0);
        subscribed.prefixes = QStringList(S("/S"));
        Say(subscribed);
        Say(About(EMessage::Snapshot, 1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "one")});
        Say(About(EMessage::End, 2));
        ASSERT_TRUE(m_tic->IsEstablished());
        m_observer.Clear();
    }
    void Answer(quint32 req, EResult result, const char* reason = "", const vt::Content& content = {}) {
        Message answer = Message::Of(EMessage::Answer);
        answer.req = req;
        answer.result = result;
        answer.reason = S(reason);
        answer.item.content = content;
        Say(answer);
    }
    Text* T() { return dynamic_cast<Text*>(m_tree.FindItem(S("/L/t"))); }

    values::Tree m_tree;
    ManualClock m_clock;
    RecordingObserver m_observer;
    std::unique_ptr<vt::VtClient> m_client;
    ManualLoop* m_loop = nullptr;
    vt::IConnector::IListener* m_listener = nullptr;
    int m_attempts = 0;
    bool m_isConnecting = false;
    std::shared_ptr<MemoryChannel::Wire> m_wire;
    MemoryChannel* m_end = nullptr;
    std::unique_ptr<RawPeer> m_server;
    IVtTic* m_tic = nullptr;
    quint32 m_sub = 0;
};

TEST_F(ClientRules, FailuresAreRetriedWithGrowingPausesForever) {
    m_loop->Run();
    std::vector<int> pauses;
    for (int i = 0; i < 12; ++i) {
        m_listener->OnConnectFailed(S("nobody there"));
        const int before = m_attempts;
        int pause = 0;
        for (; m_attempts == before && pause < 20000; pause += 100) {
            m_clock.Pass(100);
            m_loop->Run();
        }
        pauses.push_back(pause);
    }
    EXPECT_THAT(pauses, ElementsAre(100, 200, 400, 800, 1600, 3200, 6400, 10000, 10000, 10000, 10000, 10000));
    EXPECT_EQ(m_client->GetLastError(), S("nobody there"));
    EXPECT_TRUE(m_observer.Events().empty());
}

TEST_F(ClientRules, AWelcomeMakesThePausesShortAgain) {
    m_loop->Run();
    for (int i = 0; i < 5; ++i) {
        m_listener->OnConnectFailed(S("nobody there"));
        m_clock.Pass(10000);
        m_loop->Run();
    }
    Connect();
    Welcome();
    EXPECT_EQ(m_client->GetLastError(), QString());
    EXPECT_FALSE(m_client->IsRefused());
    m_wire->isOpen = false;
    Run();
    EXPECT_EQ(m_client->GetLastError(), S("the wire was cut"));
    const int before = m_attempts;
    m_clock.Pass(100);
    Run();
    EXPECT_EQ(m_attempts, before + 1);
}

TEST_F(ClientRules, ARefusalIsTheReasonWhyThereIsNoConnection) {
    Connect();
    Message bye = Message::Of(EMessage::Bye);
    bye.code = EBye::NotAdmitted;
    bye.reason = S("the token is wrong");
    Say(bye);
    EXPECT_EQ(m_client->GetLastError(), S("the server refuses: the token is wrong"));
    EXPECT_TRUE(m_client->IsRefused());
    EXPECT_TRUE(m_observer.Events().empty());
    m_clock.Pass(100);
    Run();
    EXPECT_TRUE(m_isConnecting);
}

TEST_F(ClientRules, AConnectionThatIsNotMadeInTimeIsGivenUp) {
    m_loop->Run();
    m_clock.Pass(5000);
    m_loop->Run();
    EXPECT_FALSE(m_isConnecting);
    EXPECT_EQ(m_client->GetLastError(), S("no connection within 5000 ms"));
}

TEST_F(ClientRules, AWelcomeMustComeInTime) {
    Connect();
    m_clock.Pass(5000);
    Run();
    EXPECT_EQ(m_client->GetLastError(), S("no welcome within 5000 ms"));
}

struct TokenRow {
    const char* name;
    bool isLoopback;
    bool isEncrypted;
    const char* token;
};

class Tokens : public ClientRules, public testing::WithParamInterface<TokenRow> {};

TEST_P(Tokens, AreSentWhereNobodyElseReadsThem) {
    VtClientOptions options;
    options.user = S("ann");
    options.token = S("secret");
    Start(options);
    Connect(GetParam().isLoopback, GetParam().isEncrypted);
    EXPECT_EQ(m_server->Of(EMessage::Hello)[0].token, S(GetParam().token));
}

INSTANTIATE_TEST_SUITE_P(All, Tokens,
                         testing::Values(TokenRow{"OnLoopback", true, false, "secret"},
                                         TokenRow{"OverTls", false, true, "secret"},
                                         TokenRow{"NotInTheClear", false, false, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ClientRules, ASilentServerIsPingedAndThenGivenUp) {
    Establish();
    const int pings = m_server->Count(EMessage::Ping);
    m_clock.Pass(5000);
    Run();
    EXPECT_EQ(m_server->Count(EMessage::Ping), pings + 1);
    m_clock.Pass(10000);
    Run();
    EXPECT_FALSE(m_client->IsConnected());
    EXPECT_EQ(m_client->GetLastError(), S("nothing heard for 15000 ms"));
    EXPECT_EQ(T()->GetState(), values::Stale);
}

TEST_F(ClientRules, ThePongTellsTheLatency) {
    Establish();
    m_clock.Pass(5000);
    Run();
    Message pong = Message::Of(EMessage::Pong);
    pong.seq = m_server->Of(EMessage::Ping).back().seq;
    m_clock.Pass(3);
    Say(pong);
    EXPECT_EQ(m_client->GetLatency(), 3000);
}

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
    EXPECT_EQ(m_server->Count(EMessage::Unsubscribe), 1);
    ASSERT_EQ(m_server->Count(EMessage::Subscribe), 2);
    const quint32 before = m_sub;
    m_sub = m_server->Of(EMessage::Subscribe)[1].sub;
    EXPECT_NE(m_sub, before);
    const Text* const kept = T();
    Say(About(EMessage::Subscribed, 0));
    Say(About(EMessage::Snapshot, 1), {AddedNode(0, 0, "S"), AddedText(8, 0, "t", "three")});
    Say(About(EMessage::End, 2));
    EXPECT_TRUE(m_tic->IsEstablished());
    EXPECT_EQ(T(), kept);
    EXPECT_EQ(T()->GetValue(), S("three"));
    EXPECT_EQ(T()->GetState(), values::Valid);
}

TEST_F(ClientRules, ADoubledBatchLeadsToANewSnapshotToo) {
    Establish();
    Batch(3, {Changed(1, S("two"))});
    Batch(3, {Changed(1, S("two"))});
    EXPECT_EQ(m_server->Count(EMessage::Subscribe), 2);
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
    EXPECT_EQ(m_server->Count(EMessage::Ack), 0);
    Batch(8, {Changed(1, S("8"))});
    ASSERT_EQ(m_server->Count(EMessage::Ack), 1);
    EXPECT_EQ(m_server->Of(EMessage::Ack).back().seq, 8U);
}

TEST_F(ClientRules, WritesOfOneValueCoalesceWhileOneIsUnanswered) {
    Establish();
    for (const char* content : {"a", "b", "c"}) {
        T()->SetValue(S(content));
        Run();
    }
    ASSERT_EQ(m_server->Count(EMessage::Write), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of(EMessage::Write)[0].item.content), S("a"));
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Done);
    ASSERT_EQ(m_server->Count(EMessage::Write), 2);
    EXPECT_EQ(std::get<QString>(m_server->Of(EMessage::Write)[1].item.content), S("c"));
    EXPECT_EQ(T()->GetValue(), S("c"));
    EXPECT_TRUE(m_client->HasUnansweredWrites());
    Answer(m_server->Of(EMessage::Write)[1].req, EResult::Done);
    EXPECT_FALSE(m_client->HasUnansweredWrites());
    EXPECT_EQ(m_observer.Count(connectioncode::WritesAnswered), 1);
}

TEST_F(ClientRules, EditsOfOneTurnAreOneWriteAndOneThatIsTakenBackIsNone) {
    Establish();
    T()->SetValue(S("a"));
    T()->SetValue(S("b"));
    Run();
    ASSERT_EQ(m_server->Count(EMessage::Write), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of(EMessage::Write)[0].item.content), S("b"));
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Done);
    T()->SetValue(S("c"));
    T()->SetValue(S("b"));
    Run();
    EXPECT_EQ(m_server->Count(EMessage::Write), 1);
}

TEST_F(ClientRules, OlderServerContentIsNotShownWhileAWriteIsUnanswered) {
    Establish();
    T()->SetValue(S("mine"));
    Run();
    Batch(3, {Changed(1, S("older"))});
    EXPECT_EQ(T()->GetValue(), S("mine"));
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Done);
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
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Denied, "needs MayBIT");
    EXPECT_EQ(T()->GetValue(), S("theirs"));
    EXPECT_THAT(recorder.refusals, ElementsAre(S("/S/t: needs MayBIT")));
}

TEST_F(ClientRules, AClampedWriteShowsWhatHolds) {
    Establish();
    T()->SetValue(S("mine"));
    Run();
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Clamped, "", S("held"));
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
    ASSERT_EQ(m_server->Count(EMessage::Write), 2);
    TreeChange own = Changed(2, S("mine"));
    own.change = EChange::Own;
    own.session = 5;
    TreeChange others = own;
    others.session = 6;
    Batch(4, {own, own, others});
    Answer(m_server->Of(EMessage::Write)[0].req, EResult::Done);
    Answer(m_server->Of(EMessage::Write)[1].req, EResult::Done);
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
    ASSERT_EQ(m_server->Count(EMessage::Create), 1);
    EXPECT_EQ(m_server->Of(EMessage::Create)[0].path, S("/S/note"));
    Answer(m_server->Of(EMessage::Create)[0].req, EResult::Denied, "not here");
    note->SetValue(S("still mine"));
    Run();
    EXPECT_EQ(m_server->Count(EMessage::Create), 1);
    EXPECT_EQ(m_server->Count(EMessage::Write), 0);
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
    EXPECT_EQ(std::get<QString>(m_server->Of(EMessage::Create).at(0).item.content), S("first"));
    note->SetValue(S("second"));
    Batch(3, {AddedText(2, 0, "note", "first")});
    EXPECT_EQ(note->GetValue(), S("second"));
    EXPECT_EQ(m_server->Count(EMessage::Write), 0);
    Answer(m_server->Of(EMessage::Create)[0].req, EResult::Done);
    EXPECT_EQ(note->GetValue(), S("second"));
    ASSERT_EQ(m_server->Count(EMessage::Write), 1);
    EXPECT_EQ(std::get<QString>(m_server->Of(EMessage::Write)[0].item.content), S("second"));
}

TEST_F(ClientRules, WhatWasCreatedAndHasGoneAgainGoesHereToo) {
    Establish();
    auto* const note = new Text;
    note->SetName(S("note"));
    m_tree.AddValue(S("/L"), note);
    Run();
    Answer(m_server->Of(EMessage::Create).at(0).req, EResult::Done);
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
    Answer(m_server->Of(EMessage::Create).at(0).req, EResult::Done);
    EXPECT_EQ(note->GetValue(), S("theirs"));
}

TEST_F(ClientRules, AnAnswerToNoRequestEndsTheSession) {
    Establish();
    Answer(99, EResult::Done);
    Fail("an answer to no request");
}

TEST_F(ClientRules, AnAbsentItemTakesItsMirrorAlong) {
    Establish();
    EXPECT_FALSE(m_tic->IsAbsent());
    Say(About(EMessage::Absent, 0));
    EXPECT_EQ(m_tree.FindItem(S("/L")), nullptr);
    EXPECT_FALSE(m_tic->IsEstablished());
    EXPECT_TRUE(m_tic->IsAbsent());
    EXPECT_THAT(m_observer.Codes(), ElementsAre(15));
    EXPECT_TRUE(m_client->IsConnected());
}

TEST_F(ClientRules, WhatIsAbsentOrDeniedIsToldToItsTicAlone) {
    for (const char* reason : {"", "not for you"}) {
        Start(VtClientOptions());
        m_observer.Clear();
        m_tic = m_client->AddTic(S("/L,/S"), "");
        RecordingObserver tic;
        m_tic->AddObserver(&tic);
        Connect();
        Welcome();
        m_sub = m_server->Of(EMessage::Subscribe).at(0).sub;
        Message absent = About(EMessage::Absent, 0);
        absent.reason = S(reason);
        Say(absent);
        EXPECT_TRUE(m_tic->IsAbsent());
        EXPECT_THAT(tic.Codes(), ElementsAre(15));
        EXPECT_THAT(m_observer.Codes(), ElementsAre(16));
        m_wire->isOpen = false;
        Run();
        EXPECT_FALSE(m_tic->IsAbsent());
        m_tic->DeleteObserver(&tic);
    }
}

TEST_F(ClientRules, WhatVanishesDuringItsSnapshotLeavesNothing) {
    m_tic = m_client->AddTic(S("/L,/S"), "");
    Connect();
    Welcome();
    m_sub = m_server->Of(EMessage::Subscribe).at(0).sub;
    Say(About(EMessage::Subscribed, 0));
    Say(About(EMessage::Snapshot, 1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "one")});
    Say(About(EMessage::Absent, 0));
    EXPECT_EQ(m_tree.FindItem(S("/L")), nullptr);
    Say(About(EMessage::Subscribed, 0));
    Say(About(EMessage::Snapshot, 1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "two")});
    Say(About(EMessage::End, 2));
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

TEST_F(ClientRules, TheTicMayBeRemovedFromWhereverItIsToldOf) {
    Establish();
    m_observer.React([this](Observable*, TChangeCode) {
        if (m_tic != nullptr) m_client->RemoveTic(m_tic);
        m_tic = nullptr;
    });
    Say(About(EMessage::Absent, 0));
    Run();
    EXPECT_TRUE(m_client->AreAllTicsEstablished());
    m_observer.React({});
}

TEST_F(ClientRules, AnObserverOfAMirroredValueMayRemoveTheTic) {
    Establish();
    RecordingObserver value([this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_client->RemoveTic(m_tic);
    });
    T()->AddObserver(&value);
    Batch(3, {Changed(1, S("two")), Changed(1, S("three")), AddedText(2, 0, "u", "")});
    EXPECT_EQ(T()->GetValue(), S("two"));
    EXPECT_EQ(T()->GetState(), values::Stale);
    EXPECT_EQ(m_tree.FindItem(S("/L/u")), nullptr);
    EXPECT_TRUE(m_client->IsConnected());
    EXPECT_EQ(m_server->Count(EMessage::Unsubscribe), 1);
    T()->DeleteObserver(&value);
}

struct SpecRow {
    const char* name;
    const char* spec;
    bool isGood;
};

class TicSpecs : public ClientRules, public testing::WithParamInterface<SpecRow> {};

TEST_P(TicSpecs, AreTwoAbsolutePathsThatMeetNoOtherMirror) {
    ASSERT_NE(m_client->AddTic(S("/L/a,/S/a"), ""), nullptr);
    EXPECT_EQ(m_client->AddTic(S(GetParam().spec), "") != nullptr, GetParam().isGood);
}

INSTANTIATE_TEST_SUITE_P(
    All, TicSpecs,
    testing::Values(SpecRow{"Beside", "/L/b,/S/b", true}, SpecRow{"TheSameAgain", "/L/a,/S/a", true},
                    SpecRow{"TheSameOtherwiseWritten", "//L//a/,/S/a/", true},
                    SpecRow{"TwiceTheRemote", "/L/b,/S/a", true}, SpecRow{"Around", "/L,/S", false},
                    SpecRow{"Within", "/L/a/x,/S/x", false}, SpecRow{"AtTheSamePlace", "/L/a,/S/b", false},
                    SpecRow{"NameThatBeginsAlike", "/L/ab,/S/ab", true}, SpecRow{"Empty", "", false},
                    SpecRow{"OnePath", "/L", false}, SpecRow{"RelativeLocal", "L,/S", false},
                    SpecRow{"RelativeRemote", "/L/c,S", false}, SpecRow{"WithABlank", "/L/c, /S", false}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
