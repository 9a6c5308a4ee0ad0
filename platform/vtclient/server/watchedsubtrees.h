// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/server/watchedsubtree.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <chrono>
#include <deque>
#include <memory>
#include <vector>

namespace values {
class TreeItem;
}  // namespace values

namespace vt {

class ServerHub;
class ServerSession;

/// All subtrees that anybody has subscribed, one for each path however many subscribed it, and the
/// subscriptions of items that are absent.
class WatchedSubtrees {
  public:
    /// \a hub has the turns, and outlives this.
    explicit WatchedSubtrees(ServerHub& hub);
    WatchedSubtrees(const WatchedSubtrees&) = delete;
    WatchedSubtrees& operator=(const WatchedSubtrees&) = delete;

    void Join(Subscription& subscription);
    void Leave(Subscription& subscription);
    int Count() const { return m_byPath.size(); }

    /// What is waited for may be there: the next turn looks. False if nobody waits.
    bool RetryLater();
    void RetryWaiting();
    /// Delivers the changes of all. False if some are left when the budget is up.
    bool Serve(const TurnBudget& budget);
    /// Destroys what nobody follows any more. At the end of a turn: before that it may be what called us.
    void DestroyDead() { m_dead.clear(); }
    /// Whether there is something for another turn.
    bool HasWork() const { return m_isToRetry || !m_changed.empty() || !m_dead.empty(); }

    /// \a subscription, which has an item, is offered the shared road of it.
    void OfferRoad(Subscription& subscription, IRoads& roads);
    /// \a subscription, which is in step and has heard the road, is told by it from now on.
    void TakeRoad(Subscription& subscription);
    /// \a subscription starts anew, in its session.
    void LeaveRoad(Subscription& subscription);
    /// The road by which \a subscription is told; null if that is done in its session.
    RoadPublisher* RoadOf(const Subscription& subscription) const;
    /// The road that \a subscription may take; null if there is none.
    RoadPublisher* RoadOfferedTo(const Subscription& subscription) const;
    /// All roads have new keys; or those of which \a session knows one.
    void ChangeRoadKeys(const ServerSession* session);
    /// The bus of all roads is another one, or there is none.
    void EndRoads();
    VtRoadFigures RoadFigures() const;
    void MarkRoads(std::chrono::microseconds now, std::chrono::milliseconds interval);

    // For those watched.
    QString NewRoadName();
    RoadMemory::Share& RoadShare() { return m_roadShare; }
    std::chrono::microseconds Now() const;
    void OnChanges(WatchedSubtree& subtree);
    void OnRootGone(WatchedSubtree& subtree);
    void ServeLater(ServerSession& session);

  private:
    void Watch(Subscription& subscription, values::TreeItem* item);
    void Unwatch(WatchedSubtree& subtree);
    void Restart(WatchedSubtree& subtree, Subscription& subscription);
    WatchedSubtree* Find(const Subscription& subscription) const;

    ServerHub& m_hub;
    RoadMemory::Share m_roadShare;  ///< outlives the subtrees
    QHash<QString, std::shared_ptr<WatchedSubtree>> m_byPath;
    std::deque<std::shared_ptr<WatchedSubtree>> m_changed;
    std::vector<std::shared_ptr<WatchedSubtree>> m_dead;
    std::vector<Subscription*> m_waiting;  ///< their items are absent
    bool m_isToRetry = false;
    quint64 m_roads = 0;         ///< how many there were
    quint64 m_takenRoads = 0;    ///< so often one was taken
    quint64 m_givenUpRoads = 0;  ///< and left
    TreeWatcher::Part m_part;    ///< that is being delivered, kept for its room
};

}  // namespace vt
