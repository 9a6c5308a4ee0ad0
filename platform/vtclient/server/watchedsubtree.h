// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/server/roadpublisher.h>
#include <platform/vtclient/server/subscription.h>
#include <platform/vtclient/server/treewatcher.h>

#include <QtCore/QString>

#include <chrono>
#include <memory>
#include <vector>

namespace vt {

class WatchedSubtrees;

/// A subtree that somebody has subscribed: its watcher, and the subscriptions that follow this one.
class WatchedSubtree final : public std::enable_shared_from_this<WatchedSubtree>,
                             private TreeWatcher::IListener {
  public:
    /// \a root is the item at \a path; \a all outlives this.
    WatchedSubtree(WatchedSubtrees& all, const QString& path, values::TreeItem* root);

    const QString& Path() const { return m_path; }
    TreeWatcher& Watcher() { return m_watcher; }

    void Add(Subscription& subscription) { m_members.push_back(&subscription); }
    void Remove(Subscription& subscription);
    bool HasMembers() const { return !m_members.empty() || !m_riders.empty(); }
    /// None is left.
    std::vector<Subscription*> TakeMembers();

    /// The shared road; null: nobody has asked for one.
    RoadPublisher* Road() { return m_road.get(); }
    bool HasRoad() const { return m_road != nullptr; }
    int CountRiders() const { return static_cast<int>(m_riders.size()); }
    RoadPublisher& ProvideRoad(IRoads& roads);
    void EndRoad() { m_road.reset(); }
    /// From now on \a subscription, which is in step, is told of changes by the road alone.
    void TakeRoad(Subscription& subscription);
    /// A new key, which is told to all who know one.
    void ChangeRoadKey();
    /// Whether \a session was told a key.
    bool IsRoadKnownTo(const ServerSession& session) const;
    void MarkRoadIfDue(std::chrono::microseconds now, std::chrono::milliseconds interval);

    /// Delivers what has changed: written once, to all members that are in step, and kept by the others,
    /// whose sessions are served later. False if there is more when the budget is up. \a part is room to work
    /// in.
    bool Serve(const TurnBudget& budget, TreeWatcher::Part* part);
    /// Takes its place among those that have changes. False if it stands there, or nobody follows it any
    /// more.
    bool List();
    void Unlist() { m_isListed = false; }
    void SetDead() { m_isDead = true; }

  private:
    void OnChanges(TreeWatcher& watcher) override;
    void OnRootGone(TreeWatcher& watcher) override;
    bool HasAudience() const;
    void Deliver(const TreeWatcher::Part& part);

    WatchedSubtrees& m_all;
    QString m_path;
    std::vector<Subscription*> m_members;  ///< who are told in their sessions
    std::vector<Subscription*> m_riders;  ///< who are told by the road: no change costs more for each of them
    std::unique_ptr<RoadPublisher> m_road;
    bool m_isListed = true;  ///< among those that have changes, as a new one is
    bool m_isDead = false;
    TreeWatcher m_watcher;  ///< the last member: it tells while it is being made
};

}  // namespace vt
