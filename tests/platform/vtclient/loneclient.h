// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/client/vtclient.h>
#include <platform/vtclient/wire/changewriter.h>
#include <tests/platform/vtclient/codecprobe.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

/// A client whose server is the test: it says what it likes, and sees what the client says.
class LoneClient : public testing::Test {
  protected:
    class Connector final : public vt::IConnector {
      public:
        void SetListener(IListener* listener) override { m_listener = listener; }
        void Connect() override { isConnecting = true; }
        void Abort() override { isConnecting = false; }
        void Succeed(std::unique_ptr<vt::IChannel> channel) {
            isConnecting = false;
            m_listener->OnConnected(std::move(channel));
        }

        bool isConnecting = false;

      private:
        IListener* m_listener = nullptr;
    };

    LoneClient() {
        auto connector = std::make_unique<Connector>();
        auto loop = std::make_unique<ManualLoop>(m_clock);
        m_connector = connector.get();
        m_loop = loop.get();
        m_client = std::make_unique<vt::VtClient>(QStringLiteral("server"), 7450, VtClientOptions(),
                                                  std::move(connector), std::move(loop));
        m_client->AddObserver(&m_observer);
    }

    /// Accepts the connection that the client wants, and welcomes it.
    void Welcome() {
        m_clock.Pass(std::chrono::seconds(10));
        while (m_loop->Run()) {
        }
        ASSERT_TRUE(m_connector->isConnecting);
        m_wire = std::make_shared<MemoryChannel::Wire>();
        auto channel = std::make_unique<MemoryChannel>(m_wire, true);
        m_channel = channel.get();
        m_connector->Succeed(std::move(channel));
        vt::WelcomeMessage welcome;
        welcome.version = 1;
        welcome.session = 1;
        welcome.ping = std::chrono::milliseconds(5000);
        welcome.dead = std::chrono::milliseconds(15000);
        Say(welcome);
    }
    /// Says \a message and lets the client do whatever follows from it.
    void Say(const vt::Message& message, const QByteArray& changes = QByteArray()) {
        SayBytes(ToBytes(message, changes));
    }
    void SayBytes(const QByteArray& bytes) {
        m_wire->toA.push_back(bytes);
        Settle();
    }
    void Settle() {
        bool hasRun = true;
        for (int round = 0; hasRun; ++round) {
            ASSERT_LT(round, 1000) << "it never comes to rest";
            hasRun = m_loop->Run();
            if (m_wire && !m_wire->isAGone) hasRun = m_channel->Deliver() || hasRun;
        }
    }
    /// What the client has said since this was asked last.
    std::vector<vt::Message> Said() {
        std::vector<vt::Message> said;
        for (const QByteArray& bytes : m_wire->toB) {
            const DecodedMessage decoded = Decode(bytes);
            EXPECT_EQ(decoded.error, QString()) << "a server could not read it";
            said.push_back(decoded.message);
        }
        m_wire->toB.clear();
        return said;
    }
    /// Of those the ones that are such.
    template <class M>
    std::vector<M> Said() {
        return Only<M>(Said());
    }

    /// Subscription \a sub as a whole: a node with \a changes about what is below it.
    void ShowSubtree(quint32 sub, const std::function<void(vt::ChangeWriter&)>& changes) {
        Say(For<vt::SubscribedMessage>(sub));
        ShowSnapshot(sub, changes);
    }
    /// Without what comes before it.
    void ShowSnapshot(quint32 sub, const std::function<void(vt::ChangeWriter&)>& changes) {
        vt::ChangeWriter writer;
        writer.Added(0, 0, values::Node(), vt::EItemKind::Node, 0);
        changes(writer);
        Say(For<vt::SnapshotMessage>(sub, 1), writer.Take());
        Say(For<vt::EndMessage>(sub, 2));
    }
    void ShowChanges(quint32 sub, quint64 sequence, const std::function<void(vt::ChangeWriter&)>& changes) {
        vt::ChangeWriter writer;
        changes(writer);
        Say(For<vt::BatchMessage>(sub, sequence), writer.Take());
    }
    void Answer(quint32 request, vt::EResult result) {
        vt::AnswerMessage answer;
        answer.req = request;
        answer.result = result;
        answer.reason = QStringLiteral("no");
        Say(answer);
    }
    /// A message about subscription \a sub.
    template <class M>
    static M For(quint32 sub) {
        M message;
        message.sub = sub;
        if constexpr (std::is_same_v<M, vt::SubscribedMessage>)
            message.prefixes = QStringList{QStringLiteral("/")};
        return message;
    }
    template <class M>
    static M For(quint32 sub, quint64 sequence) {
        M message = For<M>(sub);
        message.seq = sequence;
        return message;
    }

    IVtTic* AddTic(const char* spec) { return m_client->AddTic(QString::fromUtf8(spec), ""); }
    values::TreeItem* Item(const char* path) { return m_tree.FindItem(QString::fromUtf8(path)); }
    template <class V>
    V* Find(const char* path) {
        return dynamic_cast<V*>(Item(path));
    }

    RecordingObserver m_reaction;  ///< of whatever item a test likes: outlives them all
    values::Tree m_tree;
    ManualClock m_clock;
    RecordingObserver m_observer;  ///< of the client
    std::unique_ptr<vt::VtClient> m_client;
    Connector* m_connector = nullptr;
    ManualLoop* m_loop = nullptr;
    std::shared_ptr<MemoryChannel::Wire> m_wire;
    MemoryChannel* m_channel = nullptr;
};
