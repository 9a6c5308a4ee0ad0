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
    m_members.erase(std::remove(m_members.begin(), m_members.end(), &subscription), m_members.end());
}

std::vector<Subscription*> WatchedSubtree::TakeMembers() {
    return std::exchange(m_members, {});
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
    return std::any_of(m_members.begin(), m_members.end(), [](const Subscription* member) {
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
