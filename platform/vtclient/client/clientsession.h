// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/client/calldepth.h>
#include <platform/vtclient/client/heldmessages.h>
#include <platform/vtclient/client/roadfollower.h>
#include <platform/vtclient/client/turnrequest.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/ivthistory.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/wire/messages.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace values {
class TreeItem;
}

namespace vt {

class ClientLink;
class MessageReader;

/// The client's end of one connection, from its channel to the loss of it: greets, keeps it alive, gives what
/// comes to the links that it is about, acknowledges it, and sends what they say. Main thread.
///
/// Whoever is told meanwhile may end it: it is destroyed only when no call of it is under way.
class ClientSession final : private IChannelListener {
  public:
    /// How a session ended.
    struct Ending {
        QString reason;  ///< one line
        bool wasConnected = false;
        std::optional<bool>
            isRefused;  ///< whether the server will not change its mind by itself, if it said why
    };
    class IHost {
      public:
        virtual ~IHost();
        /// The server has welcomed this client.
        virtual void OnWelcome() = 0;
        virtual void OnSessionEnded(const Ending& ending) = 0;
        /// What came was handled: now is the time to send what follows from it, and to flush.
        virtual void OnInputHandled() = 0;
        /// Deadline() may be sooner than it was.
        virtual void OnDeadlineMoved() = 0;
    };

    /// The welcome must have come by \a greetedBy. All that is passed by reference outlives the session.
    ClientSession(std::unique_ptr<IChannel> channel, const VtClientOptions& options, IEventLoop& loop,
                  std::chrono::microseconds greetedBy, CallDepth& depth, TurnRequest& turn, IHost& host);
    ~ClientSession() override;
    ClientSession(const ClientSession&) = delete;
    ClientSession& operator=(const ClientSession&) = delete;

    /// Says hello to \a address, which is for people.
    void Greet(const QString& address);
    /// Welcomed, and not over.
    bool IsConnected() const { return m_state == EState::Connected; }
    bool IsEncrypted() const { return m_channel->IsEncrypted(); }
    int Number() const { return m_number; }
    const QString& ServerApplication() const { return m_serverApplication; }
    /// The round trip of the last ping.
    std::optional<std::chrono::microseconds> Latency() const { return m_latency; }

    /// How long nothing was heard although a ping waits for its answer; none while none waits.
    std::optional<std::chrono::microseconds> Silence() const;

    /// \return the number of the subscription, under which \a link is told what comes of it.
    quint32 Subscribe(ClientLink& link, const QString& path, bool isLook);
    void Unsubscribe(quint32 sub);
    /// Where the server's shared roads are; none if the transport brings none.
    std::optional<RoadFollower::Place> Roads();
    void Join(quint32 sub);
    void TellHeard(quint32 sub, const QString& road);
    void LeaveRoad(quint32 sub);
    void AskAgain(quint32 sub, quint64 from, quint64 to);
    /// What came in the session may be handled, as far as it waited for the road of \a link: now, or in the
    /// next turn.
    void GoOn(const ClientLink& link);
    void GoOnLater(const ClientLink& link);
    /// Lets what comes in the session wait while this is there: something is under way that must not meet it.
    class Pause {
      public:
        explicit Pause(ClientSession& session) : m_session(session) { ++m_session.m_pauses; }
        ~Pause() {
            if (--m_session.m_pauses == 0 && !m_session.m_held.IsEmpty()) m_session.m_turn.Make();
        }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

      private:
        ClientSession& m_session;
    };
    void OnRoadHandled() { m_host.OnInputHandled(); }
    void OnRoadDeadline() { m_host.OnDeadlineMoved(); }
    /// The server has ended the subscription.
    void Drop(quint32 sub) { m_subscriptions.erase(sub); }
    /// Each completes the message by request and subscription. \return the number of the request, whose
    /// answer \a link is told; 0, and nothing sent, if no server would accept it: too large.
    quint32 SendWrite(ClientLink& link, quint32 sub, WriteMessage* write);
    quint32 SendCreation(ClientLink& link, quint32 sub, CreateMessage* create, const values::TreeItem& item);
    /// Tells \a link, which ends, no answer any more.
    void Forget(const ClientLink& link);
    /// Asks the history; \a answer is told once, unless TakeRecalls() takes it away.
    void Recall(const QString& path, quint64 before, quint64 count, const IVtHistory::Answer& answer);
    /// Those that were not answered, which nobody is told any more.
    std::vector<IVtHistory::Answer> TakeRecalls();
    /// The server's, as it said.
    quint64 Epoch() const { return m_epoch; }
    /// The server broke a rule: says so, and ends.
    void Fail(const QString& reason) { Fail(EBye::Malformed, reason); }
    /// Ends without telling the host, after a farewell.
    void Close();

    /// Acknowledges what is due, and gives the channel what waits for it.
    void Flush();
    /// When OnDeadline() is due.
    std::chrono::microseconds Deadline() const;
    void OnDeadline();
    /// Goes on with what could not be done before.
    void OnTurn();

  private:
    enum class EState { Greeting, Connected, Ended };

    void OnMessage(const char* data, qint64 size) override;
    void OnInputDone() override;
    void OnClosed(const QString& reason) override;

    /// A message, by the reader that is at it: changes that it carries are yet to be read.
    struct Arrival {
        MessageReader& reader;
        qint64 size;
    };
    template <class M>
    void Receive(const M& message, const Arrival& arrival);
    // Whatever a server may send.
    void On(const WelcomeMessage& welcome, const Arrival& arrival);
    void On(const ByeMessage& bye, const Arrival& arrival);
    void On(const SubscribedMessage& subscribed, const Arrival& arrival);
    void On(const SnapshotMessage& snapshot, const Arrival& arrival);
    void On(const EndMessage& end, const Arrival& arrival);
    void On(const BatchMessage& batch, const Arrival& arrival);
    void On(const AbsentMessage& absent, const Arrival& arrival);
    void On(const AnswerMessage& answer, const Arrival& arrival);
    void On(const PingMessage& ping, const Arrival& arrival);
    void On(const PongMessage& pong, const Arrival& arrival);
    void On(const RecalledMessage& recalled, const Arrival& arrival);
    void On(const RoadMessage& road, const Arrival& arrival);
    void On(const AtMessage& at, const Arrival& arrival);
    void Handle(const char* data, qint64 size);
    void HandleHeld();
    template <class Visit>
    void ForEachLink(const Visit& visit);
    ClientLink* FindLink(quint32 sub);
    void CountForAck(qint64 size);
    template <class M>
    void Send(const M& message);
    void SendBytes(std::string_view bytes);
    quint32 SendRequest(ClientLink& link, std::string_view bytes);
    void SendBye(EBye code, const QString& reason);
    void Fail(EBye code, const QString& reason);
    void End(const QString& reason, std::optional<bool> isRefused = std::nullopt);

    std::unique_ptr<IChannel> m_channel;
    const VtClientOptions& m_options;
    IEventLoop& m_loop;
    std::chrono::microseconds m_greetedBy;
    CallDepth& m_depth;
    TurnRequest& m_turn;
    IHost& m_host;
    EState m_state = EState::Greeting;
    int m_number = 0;  ///< the server's for it
    QString m_serverApplication;
    std::optional<std::chrono::microseconds> m_latency;
    std::chrono::milliseconds m_pingInterval{};
    std::chrono::milliseconds m_deadAfter{};
    std::chrono::microseconds m_lastReceived;
    std::chrono::microseconds m_lastPing{};
    std::optional<std::chrono::microseconds> m_unanswered;  ///< when the oldest ping without answer was sent
    std::unordered_map<quint32, ClientLink*> m_subscriptions;
    quint32 m_lastSub = 0;
    std::unordered_map<quint32, ClientLink*> m_requests;  ///< null: the link has ended
    quint32 m_lastRequest = 0;
    std::map<quint32, IVtHistory::Answer> m_recalls;
    IRoads* m_roads;  ///< that the channel brings; null: none
    HeldMessages m_held;
    const ClientLink* m_holder = nullptr;  ///< whose road the session waits for
    int m_pauses = 0;
    bool m_isHandlingHeld = false;
    bool m_isClosing = false;  ///< nothing is waited for any more
    quint64 m_epoch = 0;
    quint64 m_received = 0;  ///< messages to be acknowledged
    int m_unackedMessages = 0;
    qint64 m_unackedBytes = 0;
    bool m_hasOutput = false;
};

}  // namespace vt
