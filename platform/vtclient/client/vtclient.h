// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/client/treemirror.h>
#include <platform/vtclient/iconnector.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/wire/message.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vt {

class VtTic;

/// The client without its sockets: connects through a connector, keeps the session, and feeds a mirror per
/// pair of paths. Main thread.
class VtClient final : public IVtClient,
                       public ITurnTaker,
                       private IChannelListener,
                       private IConnector::IListener,
                       private TreeMirror::IHost {
  public:
    VtClient(QString address, int port, VtClientOptions options, std::unique_ptr<IConnector> connector,
             std::unique_ptr<IEventLoop> loop);
    ~VtClient() override;
    VtClient(const VtClient&) = delete;
    VtClient& operator=(const VtClient&) = delete;

    /// Tells that the client goes, and ends everything. What is left can be destroyed when IsIdle().
    void Shutdown();
    /// Whether no call of this object is under way.
    bool IsIdle() const { return m_depth == 0; }

    bool IsConnected() const override { return m_state == EState::Connected; }
    bool AreAllTicsEstablished() const override;
    QString GetServerAddress() const override { return m_address; }
    int GetServerPort() const override { return m_port; }
    IVtTic* AddTic(const QString& spec, const char* options) override;
    void RemoveTic(IVtTic* tic) override;
    void ReleaseNode(values::Node* node) override;
    QString GetLastError() const override { return m_lastError; }
    bool IsRefused() const override { return m_isRefused; }
    bool IsEncrypted() const override { return IsConnected() && m_channel->IsEncrypted(); }
    bool HasUnansweredWrites() const override;
    QString GetServerApplication() const override { return m_serverApplication; }
    std::optional<std::chrono::microseconds> GetLatency() const override { return m_latency; }

    void OnTurn() override;
    void OnDeadline() override;

  private:
    enum class EState { Idle, Connecting, Greeting, Connected, Waiting, Ended };

    /// A mirror, what the server knows it as, and the tics that share it.
    struct Link {
        std::unique_ptr<TreeMirror> mirror;
        quint32 sub = 0;  ///< 0: not subscribed
        quint64 sequence = 0;
        bool isReceiving = false;  ///< subscribed was answered
        bool wasEstablished = false;
        bool isAbsent = false;
        std::vector<VtTic*> tics;
    };
    /// While it lives the client must not be destroyed: a call of it is under way.
    class Busy {
      public:
        explicit Busy(VtClient& client) : m_client(client) { ++client.m_depth; }
        ~Busy() { --m_client.m_depth; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

      private:
        VtClient& m_client;
    };

    void OnMessage(const char* data, qint64 size) override;
    void OnInputDone() override;
    void OnClosed(const QString& reason) override;
    void OnConnected(std::unique_ptr<IChannel> channel) override;
    void OnConnectFailed(const QString& reason) override;
    void OnEdits(TreeMirror& mirror) override;
    quint32 SendWrite(TreeMirror& mirror, WriteMessage* write) override;
    quint32 SendCreation(TreeMirror& mirror, Message* create, const values::TreeItem& item) override;
    void OnRootDeleted(TreeMirror& mirror) override;

    void StartConnecting();
    void Retry(const QString& reason);
    void EndSession(const QString& reason);
    void Fail(EBye code, const QString& reason);
    void OnWelcome(const Message& message);
    bool Handle(MessageReader& reader, EMessage type, qint64 size);
    bool HandleFrequent(MessageReader& reader, EMessage type, qint64 size);
    void Dispatch(const Message& message, qint64 size);
    Link* LinkOfMessage(quint32 sub);
    void OnChanges(MessageReader& reader, const ChangesHead& head);
    void OnEnd(Link& link, const Message& message);
    bool ApplyChanges(Link& link, MessageReader& reader, const ChangesHead& head, QString* error);
    void OnApplied(const Link& link, bool isGood, const QString& error);
    void OnSubscribed(Link& link, const Message& message);
    void OnAbsent(Link& link, const Message& message);
    void OnAnswer(const AnswerMessage& answer);
    void OnPong(const Message& message);
    bool IsNextInSequence(Link& link, quint64 sequence);
    void Subscribe(Link& link);
    void Unsubscribe(Link& link);
    void Resubscribe(Link& link);
    void CountForAck(qint64 size);
    void Send(const Message& message);
    void SendBytes(std::string_view bytes);
    quint32 SendRequest(Link& link, std::string_view bytes);
    void FlushOutput();
    void RequestTurn();
    void TellEstablished();
    void SetAbsent(Link& link, bool isAbsent);
    void TellTics(const Link& link);
    void TellAnswered();
    void SetNextDeadline();
    // Whoever is told may add and remove tics. A link that was dropped meanwhile lasts until the next turn.
    template <class Visit>
    void ForEachLink(const Visit& visit) {
        std::vector<Link*> links;
        for (const auto& link : m_links)
            links.push_back(link.get());
        for (Link* link : links)
            if (HasLink(link)) visit(*link);
    }
    bool HasLink(const Link* link) const;
    Link* FindLink(quint32 sub);
    Link* FindLink(const TreeMirror& mirror);
    Link* LinkFor(const QString& localPath, const QString& remotePath);
    void DropLink(Link* link);

    QString m_address;
    int m_port;
    VtClientOptions m_options;
    std::unique_ptr<IConnector> m_connector;
    std::unique_ptr<IEventLoop> m_loop;
    EState m_state = EState::Idle;
    QString m_lastError;
    bool m_isRefused = false;
    QString m_serverApplication;
    int m_session = 0;
    std::optional<std::chrono::microseconds> m_latency;
    int m_failures = 0;
    std::chrono::milliseconds m_pingInterval{};  ///< the server's
    std::chrono::milliseconds m_deadAfter{};
    std::chrono::microseconds m_lastReceived{};
    std::chrono::microseconds m_lastPing{};
    std::chrono::microseconds m_stateDeadline{};  ///< when connecting ends, or waiting
    std::unique_ptr<IChannel> m_channel;
    std::vector<std::unique_ptr<Link>> m_links;
    std::vector<std::unique_ptr<VtTic>> m_tics;
    std::vector<VtTic*> m_ticsToTell;  ///< established from their first moment on
    std::unordered_map<quint32, Link*> m_requests;
    quint32 m_lastSub = 0;
    quint32 m_lastRequest = 0;
    quint64 m_received = 0;  ///< messages to be acknowledged, of the session
    int m_unackedMessages = 0;
    qint64 m_unackedBytes = 0;
    bool m_hasOutput = false;
    bool m_hasReleased = false;  ///< what tics are to be told of
    bool m_hadUnanswered = false;
    bool m_isTurnRequested = false;
    int m_depth = 0;
    std::vector<std::unique_ptr<Link>> m_deadLinks;         ///< may be telling right now
    std::vector<std::unique_ptr<IChannel>> m_deadChannels;  ///< likewise
};

}  // namespace vt
