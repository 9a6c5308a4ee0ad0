// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/vtclient/channel/freedmemory.h>
#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/channel/waitingroom.h>
#include <platform/vtclient/ichannel.h>
#include <platform/vtclient/ivtaccess.h>
#include <platform/vtclient/ivthistory.h>
#include <platform/vtclient/server/serversession.h>
#include <platform/vtclient/server/sessionbudget.h>
#include <platform/vtclient/server/watchedsubtrees.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QString>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace vt {

/// The server without its sockets: the sessions, over whatever channels it is given, and their turns. Main
/// thread.
///
/// In one turn of the event loop each watched subtree's changes are written once, for all sessions that are
/// in step, and then those that are not get some of what they lack, in rotation, until the turn's time is up.
class ServerHub final : public ITurnTaker, public IObserver {
  public:
    struct Settings {
        QString application;
        std::chrono::milliseconds pingInterval{5000};
        std::chrono::milliseconds deadAfter{15'000};
        int maxPending = vtlimits::MaxPendingConnections;  ///< who have not said hello
        int maxSessions = vtlimits::MaxSessions;
        qint64 memoryBytes = vtlimits::DefaultMemory;  ///< that sessions may make it hold
        std::function<void()> giveBack = GiveFreedMemoryBack;
        IVtHistory* history = nullptr;  ///< outlives the hub; null: nothing is kept
        IRoads* roads = nullptr;        ///< outlives their use; null: all are told in their sessions
        std::size_t roadMemory = vtlimits::MaxRoadMemory;  ///< bytes, to be said once more
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
    /// Ends one, which opens nothing of what comes by shared roads from now on.
    void EndSession(int session, const QString& reason);
    /// Whoever is no client any more opens nothing of what comes by shared roads from now on.
    void ChangeRoadKeys() { m_subtrees.ChangeRoadKeys(nullptr); }
    std::vector<VtPeer> GetPeers() const;
    int CountSessions() const { return static_cast<int>(m_sessions.size()); }
    /// Bytes that the sessions make it hold, as far as they were counted.
    qint64 HeldBytes() const { return m_budget.Held(); }
    int CountWatchers() const { return m_subtrees.Count(); }

    /// Other roads, or none, from now on: those who follow one begin anew.
    void SetRoads(IRoads* roads);

    void OnTurn() override;
    void OnDeadline() override;
    void Update(Observable* source, TChangeCode code) override;

    // For sessions and what they have subscribed.
    IVtAccess& Access() const { return m_access; }
    IVtHistory* History() const { return m_settings.history; }
    IRoads* Roads() const { return m_settings.roads; }
    std::size_t RoadMemoryBytes() const { return m_settings.roadMemory; }
    const QString& Application() const { return m_settings.application; }
    std::chrono::milliseconds PingInterval() const { return m_settings.pingInterval; }
    std::chrono::milliseconds DeadAfter() const { return m_settings.deadAfter; }
    quint64 Epoch() const { return m_epoch; }
    /// When the turn, the message or the channel came that is being handled.
    std::chrono::microseconds Now() const { return m_now; }
    WatchedSubtrees& Subtrees() { return m_subtrees; }
    void RequestTurn();
    void ServeLater(ServerSession& session);
    void FlushLater(ServerSession& session);
    void OnAdmitted(ServerSession& session);
    void OnSessionEnded(ServerSession& session);
    /// \a session holds \a bytes now. If that is too much for all, those who hold most end.
    void Charge(ServerSession& session, qint64 bytes) {
        if (m_budget.Charge(&session.taken, bytes)) RelieveMemory();
    }
    /// Makes a place for  peer, who may come in, if need be at the cost of who has more than its share. Else
    /// why there is none.
    QString MakePlace(const VtPeer& peer);
    /// Messages are handled; what they lead to is sent when that is done.
    void OnInput() {
        m_isInInput = true;
        m_now = m_loop.Now();
    }
    void OnInputDone();

  private:
    Q_NEVER_INLINE void RelieveMemory();
    ServerSession* FindHeaviest() const;
    int CountAdmitted() const;
    int CountOf(const VtPeer& peer) const;
    ServerSession* FindBeyond(int share) const;
    QString UserOf(const VtPeer& peer) const;
    void GiveMemoryBack();
    bool ServeBacklogs(const TurnBudget& budget);
    void FlushChanges();
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
    bool m_hasEnded = false;  ///< some session
    bool m_isRelieving = false;
    SessionBudget m_budget;  ///< outlives the sessions, too
    std::chrono::microseconds m_gaveBackAt;
    WatchedSubtrees m_subtrees;  ///< outlives the sessions, which leave them
    std::vector<std::unique_ptr<ServerSession>> m_sessions;
    WaitingRoom<ServerSession> m_waitingRoom;  ///< those that have not said hello
    std::deque<ServerSession*> m_toServe;      ///< those that are listed as that, as are the following
    std::vector<ServerSession*> m_toFlush;
};

}  // namespace vt
