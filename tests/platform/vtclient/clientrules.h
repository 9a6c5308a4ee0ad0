// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/vtclient/rawpeer.h>
#include <tests/platform/vtclient/twoends.h>

#include <platform/values/refusals.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <gmock/gmock.h>

/// What the tests of a client share, in which a test plays the server message by message.
namespace clientrules {

using testing::ElementsAre;
using values::Value;
using values::ValueNumeric;
using vt::EBye;
using vt::EChange;
using vt::EItemKind;
using vt::EResult;
using vt::Message;
using vt::TreeChange;
using Text = Value<QString>;

inline QString S(const char* text) {
    return QString::fromUtf8(text);
}

inline TreeChange AddedNode(quint32 id, quint32 parent, const char* name) {
    TreeChange change;
    change.change = EChange::Added;
    change.id = id;
    change.parent = parent;
    change.name = S(name);
    return change;
}

inline TreeChange AddedText(quint32 id, quint32 parent, const char* name, const char* content,
                            unsigned flags = 0) {
    TreeChange change = AddedNode(id, parent, name);
    change.item.kind = EItemKind::Text;
    change.item.content = S(content);
    change.item.flags = flags;
    return change;
}

inline TreeChange Changed(quint32 id, const vt::Content& content) {
    TreeChange change;
    change.id = id;
    change.item.content = content;
    return change;
}

inline TreeChange Removed(quint32 id) {
    TreeChange change;
    change.change = EChange::Removed;
    change.id = id;
    return change;
}

inline QByteArray Bytes(const std::vector<TreeChange>& changes) {
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
        ASSERT_EQ(m_server->Count<vt::HelloMessage>(), 1);
    }
    void Welcome() {
        vt::WelcomeMessage welcome;
        welcome.version = vtlimits::ProtocolVersion;
        welcome.session = 5;
        welcome.ping = std::chrono::milliseconds(5000);
        welcome.dead = std::chrono::milliseconds(15000);
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
    /// A message about the subscription.
    template <class M>
    M About() {
        M message;
        message.sub = m_sub;
        return message;
    }
    template <class M>
    M About(quint64 seq) {
        M message = About<M>();
        message.seq = seq;
        return message;
    }
    void Batch(quint64 seq, const std::vector<TreeChange>& changes, bool more = false) {
        vt::BatchMessage batch = About<vt::BatchMessage>(seq);
        batch.more = more;
        Say(batch, changes);
    }
    void Fail(const char* reason) {
        ASSERT_EQ(m_server->Count<vt::ByeMessage>(), 1) << "the client goes on";
        EXPECT_EQ(m_server->Of<vt::ByeMessage>()[0].reason, S(reason));
        EXPECT_FALSE(m_client->IsConnected());
    }
    /// Mirrors /S at /L: a node with the text "t" (id 1).
    void Establish() {
        m_tic = m_client->AddTic(S("/L,/S"), "");
        Connect();
        Welcome();
        ASSERT_EQ(m_server->Count<vt::SubscribeMessage>(), 1);
        m_sub = m_server->Of<vt::SubscribeMessage>()[0].sub;
        vt::SubscribedMessage subscribed = About<vt::SubscribedMessage>();
        subscribed.prefixes = QStringList(S("/S"));
        Say(subscribed);
        Say(About<vt::SnapshotMessage>(1), {AddedNode(0, 0, "S"), AddedText(1, 0, "t", "one")});
        Say(About<vt::EndMessage>(2));
        ASSERT_TRUE(m_tic->IsEstablished());
        m_observer.Clear();
    }
    void Answer(quint32 req, EResult result, const char* reason = "", const vt::Content& content = {}) {
        vt::AnswerMessage answer;
        answer.req = req;
        answer.result = result;
        answer.reason = S(reason);
        answer.content = content;
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

}  // namespace clientrules
