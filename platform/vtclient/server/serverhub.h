// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/channel/waitingroom.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/server/serversession.h>
#include <platform/vtclient/server/subscription.h>
#include <platform/vtclient/server/treewatcher.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <deque>
#include <memory>
#include <vector>

namespace vt {

/// The server without its sockets: sessions over whatever channels it is given, and one watcher per subtree
/// that anybody has subscribed. Main thread.
///
/// In one turn of the event loop each watcher's changes are written once, for all sessions that are in step,
/// and then those that are not get some of what they lack, in rotation, until the turn's time is up.
class ServerHub final : public ITurnTaker, public IObserver {
  public:
    struct Settings {
        QString application;
        std::chrono::milliseconds pingInterval{5000};
        std::chrono::milliseconds deadAfter{15'000};
        int maxPending = vtlimits::MaxPendingConnections;  ///< who have not said hello
    };

    /// \a access, \a loop and the tree outlive the hub.
    ServerHub(IVtAccess& access, IEventLoop& loop, const Settings& settings);
    ~ServerHub() override;
    ServerHub(const ServerHub&) = delete;
    ServerHub& operator=(const ServerHub&) = delete;

    /// Starts a session over \a channel.
    void AddChannel(std::unique_ptr<IChannel> channel);
    void EndAll(const QString& reason);
    /// Ends all sessions for good, and tells of each that it has ended. The access object is not asked any
    /// more.
    void Shutdown(const QString& reason);
    /// Whether no call of this object or its sessions is under way.
    bool IsIdle() const;
    void EndSession(int session, const QString& reason);
    std::vector<VtPeer> GetPeers() const;
    int CountSessions() const { return static_cast<int>(m_sessions.size()); }
    int CountWatchers() const { return m_watched.size(); }

    void OnTurn() override;
    void OnDeadline() override;
    void Update(Observable* source, TChangeCode code) override;

    // For sessions.
    IVtAccess& Access() const { return m_access; }
    const QString& Application() const { return m_settings.application; }
    std::chrono::milliseconds PingInterval() const { return m_settings.pingInterval; }
    std::chrono::milliseconds DeadAfter() const { return m_settings.deadAfter; }
    quint64 Epoch() const { return m_epoch; }
    /// When the turn, the message or the channel came that is being handled.
    std::chrono::microseconds Now() const { return m_now; }
    void Join(Subscription& subscription);
    void Leave(Subscription& subscription);
    void ServeLater(ServerSession& session);
    void FlushLater(ServerSession& session);
    void OnAdmitted(ServerSession& session);
    void OnSessionEnded(ServerSession& session);
    /// Whether there is no place for one more client.
    bool IsFull() const;
    /// Messages are handled; what they lead to is sent when that is done.
    void OnInput() {
        m_isInInput = true;
        m_now = m_loop.Now();
    }
    void OnInputDone();

  private:
    /// A watcher and who follows it.
    struct Watched : std::enable_shared_from_this<Watched>, TreeWatcher::IListener {
        explicit Watched(ServerHub& itsHub) : hub(itsHub) {}
        void OnChanges(TreeWatcher& /*watcher*/) override { hub.OnChanges(*this); }
        void OnRootGone(TreeWatcher& /*watcher*/) override { hub.OnRootGone(*this); }

        ServerHub& hub;
        QString path;
        std::unique_ptr<TreeWatcher> watcher;
        std::vector<Subscription*> members;
        bool isChanged = true;  ///< stands among those: nobody need say so while it is being made
        bool isDead = false;
    };

    void OnChanges(Watched& watched);
    void OnRootGone(Watched& watched);
    void RequestTurn();
    void Watch(Subscription& subscription, values::TreeItem* item);
    void Unwatch(const QString& path);
    void RetryWaiting();
    bool ServeWatchers(const TurnBudget& budget);
    bool ServeWatched(Watched& watched, const TurnBudget& budget);
    static void Deliver(Watched& watched, const TreeWatcher::Part& part);
    bool ServeBacklogs(const TurnBudget& budget);
    void FlushChannels();
    void Reap();
    void TellEnded(const std::vector<VtPeer>& peers);
    std::vector<VtPeer> DestroyEnded();

    IVtAccess& m_access;
    IEventLoop& m_loop;
    Settings m_settings;
    quint64 m_epoch;
    int m_lastSession = 0;
    std::chrono::microseconds m_now;
    bool m_isTurnRequested = false;
    bool m_isInTurn = false;
    bool m_isInInput = false;
    bool m_isOver = false;
    bool m_hasStructureChanged = false;
    bool m_hasEnded = false;  ///< some session
    std::vector<std::unique_ptr<ServerSession>> m_sessions;
    WaitingRoom<ServerSession> m_waitingRoom;  ///< those that have not said hello
    QHash<QString, std::shared_ptr<Watched>> m_watched;
    std::deque<std::shared_ptr<Watched>> m_changed;
    std::vector<std::shared_ptr<Watched>> m_dead;  ///< may be telling right now; destroyed when the turn ends
    std::vector<Subscription*> m_waiting;          ///< their items are absent
    std::deque<ServerSession*> m_toServe;          ///< those that are listed as that, as are the following
    std::vector<ServerSession*> m_toFlush;
    TreeWatcher::Part m_part;  ///< that is being delivered, kept for its room
};

}  // namespace vt
