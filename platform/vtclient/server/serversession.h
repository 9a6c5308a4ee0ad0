// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/server/recalldesk.h>
#include <platform/vtclient/server/sessionbudget.h>
#include <platform/vtclient/server/sessionroads.h>
#include <platform/vtclient/server/subscription.h>
#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace vt {

class ServerHub;

/// The server's end of one connection: what the client says is checked here, and done. Owned by the hub.
class ServerSession final : public IChannelListener {
  public:
    ServerSession(ServerHub& hub, std::unique_ptr<IChannel> channel, int number);
    ~ServerSession() override;
    ServerSession(const ServerSession&) = delete;
    ServerSession& operator=(const ServerSession&) = delete;

    const VtPeer& Peer() const { return m_peer; }
    bool IsAdmitted() const { return m_isAdmitted; }
    bool IsEnded() const { return m_isEnded; }
    /// Whether no message is being handled, of which somebody may have been told.
    bool IsIdle() const { return m_messagesUnderWay == 0; }
    /// Tells the client why, and closes. What it had subscribed ends.
    void End(EBye code, const QString& reason);

    /// Whether another message with changes may be on its way to the client.
    bool MaySendChanges() const {
        return !m_isEnded && m_inFlight.size() < vtlimits::MaxUnackedMessages &&
               m_inFlightBytes < vtlimits::MaxUnackedBytes;
    }
    /// Whether the client owes an acknowledgement and has sent none since the hub looked before.
    bool IsStuck() const { return m_isStuck; }
    void SendChanges(Subscription& subscription, const QByteArray& changes, bool hasMore);
    /// Sends what the subscriptions lack, one message at most. False if there is nothing (more) to send now.
    bool SendBacklog(const std::function<bool()>& isTimeUp);
    /// Answers the creations whose items the client has been told of.
    void SendLateAnswers();
    /// Asks the history what the client wants to know, as far as that is due and nothing else waits.
    void Recall();
    /// Ends the session if what waits for the client has grown beyond its limit.
    void CheckQueue();
    /// The item of \a subscription went, or came.
    void Subscribe(Subscription& subscription);
    void TellAbsent(Subscription& subscription, const QString& reason);
    void Flush() { m_channel->Flush(); }
    /// Sends a message that was written elsewhere.
    void SendBytes(std::string_view message) { SendInParts(message, QByteArray(), {}); }
    SessionRoads& Roads() { return m_roads; }
    /// In which lists of the hub it stands, so that the hub need not look.
    struct Listed {
        bool isToServe = false;
        bool isToFlush = false;
    };
    Listed listed;
    /// What it takes of the server, as the hub counts it.
    SessionBudget::Entry taken;
    /// Pings, and ends the session of a client that is silent. \a now is the hub's.
    void Check(std::chrono::microseconds now);

    void OnMessage(const char* data, qint64 size) override;
    void OnInputDone() override;
    void OnClosed(const QString& reason) override;

  private:
    void Handle(const char* data, qint64 size);
    template <class M>
    void Receive(const M& message);
    // Whatever a client may send.
    void On(const HelloMessage& hello);
    void On(const ByeMessage& bye);
    void On(const SubscribeMessage& subscribe);
    void On(const UnsubscribeMessage& unsubscribe);
    void On(const AckMessage& ack);
    void On(const WriteMessage& write);
    void On(const CreateMessage& create);
    void On(const RecallMessage& recall);
    void On(const PingMessage& ping);
    void On(const PongMessage& /*pong*/) {}
    void On(const JoinMessage& join) { m_roads.Join(join.sub); }
    void On(const HeardMessage& heard) { m_roads.Heard(heard.sub, heard.road); }
    void On(const LeaveMessage& leave) { m_roads.Leave(leave.sub); }
    void On(const AgainMessage& again) { m_roads.Again(again.sub, again.from, again.to); }
    void Write(const WriteMessage& write, TreeWatcher& watcher, values::ValueBase& value, const QString& path,
               AnswerMessage* answer);
    QString Create(const CreateMessage& create, Subscription& subscription);
    QString LengthRefusal(const Content& content, const QString& path) const;
    QString LengthRefusal(const ItemDescription& item, const QString& path) const;
    void Answer(const WriteMessage& write, AnswerMessage* answer, EResult result,
                const QString& reason = QString());
    void SendAnswer(quint32 sub, const AnswerMessage& answer);
    template <class M>
    void Send(const M& message);
    void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail);
    bool SendBacklogOf(Subscription& subscription, const std::function<bool()>& isTimeUp);
    void SendEnd(Subscription& subscription);
    void CountSent(int bytes);
    void CheckAcknowledging(std::chrono::microseconds now);
    void CountHeld();
    void TraceEnd(const QString& reason) const;
    void Release();

    ServerHub& m_hub;
    std::unique_ptr<IChannel> m_channel;
    VtPeer m_peer;
    bool m_isAdmitted = false;
    bool m_isEnded = false;
    int m_messagesUnderWay = 0;
    std::chrono::microseconds m_lastReceived;
    std::chrono::microseconds m_lastSent;
    std::map<quint32, std::unique_ptr<Subscription>> m_subscriptions;
    SessionRoads m_roads{m_hub, *this, m_subscriptions};
    quint32 m_nextServed = 0;    ///< whose backlog is sent next
    std::deque<int> m_inFlight;  ///< sizes of the messages with changes that were not acknowledged
    qint64 m_inFlightBytes = 0;
    quint64 m_acked = 0;
    quint64 m_ackedWhenChecked = 0;
    std::chrono::microseconds m_owingSince{};  ///< an acknowledgement, without any
    bool m_isStuck = false;
    qint64 m_unfinished = 0;  ///< when that was counted last
    std::size_t m_created = 0;
    std::vector<std::pair<quint32, AnswerMessage>> m_lateAnswers;  ///< of creations, by subscription
    RecallDesk m_recalls;
    ChangeWriter m_writer;
};

}  // namespace vt
