// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/watchedsubtree.h>

#include <platform/vtclient/server/serversession.h>
#include <platform/vtclient/server/watchedsubtrees.h>

#include <algorithm>
#include <utility>

namespace vt {

WatchedSubtree::WatchedSubtree(WatchedSubtrees& all, const QString& path, values::TreeItem* root)
    : m_all(all), m_path(path), m_watcher(root, *this) {}

void WatchedSubtree::Remove(Subscription& subscription) {
    for (auto* const list : {&m_members, &m_riders})
        list->erase(std::remove(list->begin(), list->end(), &subscription), list->end());
}

std::vector<Subscription*> WatchedSubtree::TakeMembers() {
    std::vector<Subscription*> all = std::exchange(m_members, {});
    all.insert(all.end(), m_riders.begin(), m_riders.end());
    m_riders.clear();
    return all;
}

RoadPublisher& WatchedSubtree::ProvideRoad(IRoads& roads) {
    if (!m_road) m_road = std::make_unique<RoadPublisher>(roads, m_all.NewRoadName(), m_all.RoadShare());
    return *m_road;
}

void WatchedSubtree::TakeRoad(Subscription& subscription) {
    Remove(subscription);
    m_riders.push_back(&subscription);
    subscription.road.isTaken = true;
}

void WatchedSubtree::ChangeRoadKey() {
    if (!m_road) return;
    m_road->ChangeKey();
    for (const auto* const list : {&m_members, &m_riders})
        for (Subscription* subscription : *list)
            if (subscription->road.isWanted) subscription->Session().Roads().Tell(*subscription, *m_road);
}

bool WatchedSubtree::IsRoadKnownTo(const ServerSession& session) const {
    const auto isIts = [&session](const Subscription* subscription) {
        return subscription->road.isWanted && &subscription->Session() == &session;
    };
    return m_road && (std::any_of(m_members.begin(), m_members.end(), isIts) ||
                      std::any_of(m_riders.begin(), m_riders.end(), isIts));
}

void WatchedSubtree::MarkRoadIfDue(std::chrono::microseconds now, std::chrono::milliseconds interval) {
    if (!m_road) return;
    const auto isListening = [](const Subscription* member) {
        return member->road.isWanted && !member->road.isHeard && !member->Session().IsEnded();
    };
    const bool isWanted = std::any_of(m_members.begin(), m_members.end(), isListening);
    if (isWanted || !m_riders.empty()) m_road->MarkIfDue(now, interval, isWanted);
}

bool WatchedSubtree::List() {
    return !m_isDead && !std::exchange(m_isListed, true);
}

void WatchedSubtree::OnChanges(TreeWatcher& /*watcher*/) {
    if (List()) m_all.OnChanges(*this);
}

void WatchedSubtree::OnRootGone(TreeWatcher& /*watcher*/) {
    if (!m_isDead) m_all.OnRootGone(*this);
}

bool WatchedSubtree::HasAudience() const {
    return !m_riders.empty() ||
           std::any_of(m_members.begin(), m_members.end(), [](const Subscription* member) {
               return member->IsInStep() && member->Session().MaySendChanges();
           });
}

bool WatchedSubtree::Serve(const TurnBudget& budget, TreeWatcher::Part* part) {
    const bool isTakenIn = m_watcher.TakeIn([&budget] { return budget.IsUp(); });
    while (m_watcher.HasChanges()) {
        m_watcher.NextPart(HasAudience(), part);
        Deliver(*part);
        part->Clear();
        if (budget.IsUp()) return false;
    }
    for (Subscription* member : m_members)
        if (!member->IsInStep()) m_all.ServeLater(member->Session());
    return isTakenIn;
}

void WatchedSubtree::Deliver(const TreeWatcher::Part& part) {
    if (!m_riders.empty() && !part.changes.isEmpty())
        m_road->Publish(part.changes, part.hasMore, m_all.Now());
    for (Subscription* member : m_members) {
        ServerSession& session = member->Session();
        if (member->IsInStep() && session.MaySendChanges()) {
            if (!part.changes.isEmpty()) session.SendChanges(*member, part.changes, part.hasMore);
            member->WentWith(part);
        } else if (!session.IsEnded()) {
            member->Absorb(part);
            session.CheckQueue();
        }
    }
}

}  // namespace vt
