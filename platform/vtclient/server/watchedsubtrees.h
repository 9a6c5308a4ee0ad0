// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/server/watchedsubtree.h>

#include <QtCore/QHash>
#include <QtCore/QString>

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
    explicit WatchedSubtrees(ServerHub& hub) : m_hub(hub) {}
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

    // For those watched.
    void OnChanges(WatchedSubtree& subtree);
    void OnRootGone(WatchedSubtree& subtree);
    void ServeLater(ServerSession& session);

  private:
    void Watch(Subscription& subscription, values::TreeItem* item);
    void Unwatch(WatchedSubtree& subtree);

    ServerHub& m_hub;
    QHash<QString, std::shared_ptr<WatchedSubtree>> m_byPath;
    std::deque<std::shared_ptr<WatchedSubtree>> m_changed;
    std::vector<std::shared_ptr<WatchedSubtree>> m_dead;
    std::vector<Subscription*> m_waiting;  ///< their items are absent
    bool m_isToRetry = false;
    TreeWatcher::Part m_part;  ///< that is being delivered, kept for its room
};

}  // namespace vt
