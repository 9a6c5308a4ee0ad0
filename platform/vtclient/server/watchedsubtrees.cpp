// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/watchedsubtrees.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/server/serversession.h>

#include <algorithm>
#include <utility>

namespace vt {

WatchedSubtrees::WatchedSubtrees(ServerHub& hub) : m_hub(hub), m_roadShare{hub.RoadMemoryBytes()} {}

void WatchedSubtrees::Join(Subscription& subscription) {
    values::TreeItem* const item = values::Tree::Instance()->FindItem(subscription.Path());
    if (item != nullptr) return Watch(subscription, item);
    m_waiting.push_back(&subscription);
    subscription.Session().TellAbsent(subscription, QString());
}

void WatchedSubtrees::Watch(Subscription& subscription, values::TreeItem* item) {
    std::shared_ptr<WatchedSubtree>& subtree = m_byPath[subscription.Path()];
    if (!subtree) {
        subtree = std::make_shared<WatchedSubtree>(*this, subscription.Path(), item);
        m_changed.push_back(subtree);
    }
    subtree->Add(subscription);
    subscription.Restart(&subtree->Watcher());
    ServerSession& session = subscription.Session();
    session.Subscribe(subscription);
    session.Roads().Offer(subscription);
    ServeLater(session);
}

WatchedSubtree* WatchedSubtrees::Find(const Subscription& subscription) const {
    const auto found = m_byPath.find(subscription.Path());
    return found == m_byPath.end() || subscription.Watcher() == nullptr ? nullptr : found->get();
}

void WatchedSubtrees::OfferRoad(Subscription& subscription, IRoads& roads) {
    WatchedSubtree* const subtree = Find(subscription);
    if (subtree != nullptr) subscription.Session().Roads().Tell(subscription, subtree->ProvideRoad(roads));
}

void WatchedSubtrees::TakeRoad(Subscription& subscription) {
    Find(subscription)->TakeRoad(subscription);
    ++m_takenRoads;
}

void WatchedSubtrees::LeaveRoad(Subscription& subscription) {
    WatchedSubtree* const subtree = Find(subscription);
    if (subtree == nullptr) return;
    ++m_givenUpRoads;
    subtree->Remove(subscription);
    subtree->Add(subscription);
    Restart(*subtree, subscription);
}

RoadPublisher* WatchedSubtrees::RoadOfferedTo(const Subscription& subscription) const {
    WatchedSubtree* const subtree = subscription.road.isWanted ? Find(subscription) : nullptr;
    return subtree != nullptr ? subtree->Road() : nullptr;
}

RoadPublisher* WatchedSubtrees::RoadOf(const Subscription& subscription) const {
    return subscription.road.isTaken ? RoadOfferedTo(subscription) : nullptr;
}

void WatchedSubtrees::ChangeRoadKeys(const ServerSession* session) {
    for (const auto& subtree : m_byPath)
        if (session == nullptr || subtree->IsRoadKnownTo(*session)) subtree->ChangeRoadKey();
}

void WatchedSubtrees::EndRoads() {
    for (const auto& subtree : m_byPath) {
        const std::vector<Subscription*> all = subtree->TakeMembers();
        subtree->EndRoad();
        for (Subscription* const subscription : all) {
            subtree->Add(*subscription);
            if (subscription->road.isTaken) Restart(*subtree, *subscription);
            subscription->road = Subscription::Road{subscription->road.isWanted};
            subscription->Session().Roads().Offer(*subscription);
        }
    }
}

void WatchedSubtrees::Restart(WatchedSubtree& subtree, Subscription& subscription) {
    subscription.Restart(&subtree.Watcher());
    subscription.Session().Subscribe(subscription);
    ServeLater(subscription.Session());
}

void WatchedSubtrees::MarkRoads(std::chrono::microseconds now, std::chrono::milliseconds interval) {
    for (const auto& subtree : m_byPath)
        subtree->MarkRoadIfDue(now, interval);
}

VtRoadFigures WatchedSubtrees::RoadFigures() const {
    VtRoadFigures figures;
    for (const auto& subtree : m_byPath) {
        if (subtree->HasRoad()) ++figures.roads;
        figures.followers += subtree->CountRiders();
    }
    figures.taken = m_takenRoads;
    figures.givenUp = m_givenUpRoads;
    return figures;
}

QString WatchedSubtrees::NewRoadName() {
    return QStringLiteral("%1-%2").arg(m_hub.Epoch(), 0, 16).arg(++m_roads);
}

std::chrono::microseconds WatchedSubtrees::Now() const {
    return m_hub.Now();
}

void WatchedSubtrees::Leave(Subscription& subscription) {
    m_waiting.erase(std::remove(m_waiting.begin(), m_waiting.end(), &subscription), m_waiting.end());
    const auto found = m_byPath.find(subscription.Path());
    if (found == m_byPath.end() || subscription.Watcher() == nullptr) return;
    WatchedSubtree& subtree = **found;
    subtree.Remove(subscription);
    if (!subtree.HasMembers()) Unwatch(subtree);
}

void WatchedSubtrees::Unwatch(WatchedSubtree& subtree) {
    subtree.SetDead();
    m_dead.push_back(m_byPath.take(subtree.Path()));
    m_hub.RequestTurn();
}

void WatchedSubtrees::OnChanges(WatchedSubtree& subtree) {
    m_changed.push_back(subtree.shared_from_this());
    m_hub.RequestTurn();
}

void WatchedSubtrees::OnRootGone(WatchedSubtree& subtree) {
    const std::vector<Subscription*> members = subtree.TakeMembers();
    for (Subscription* member : members)
        member->Session().Roads().TellPosition(*member);  // that it has gone comes after that
    Unwatch(subtree);
    for (Subscription* member : members) {
        member->Restart(nullptr);
        m_waiting.push_back(member);
        member->Session().TellAbsent(*member, QString());
    }
    m_isToRetry = true;  // it may be there again already
}

void WatchedSubtrees::ServeLater(ServerSession& session) {
    m_hub.ServeLater(session);
}

bool WatchedSubtrees::RetryLater() {
    m_isToRetry = m_isToRetry || !m_waiting.empty();
    return m_isToRetry;
}

void WatchedSubtrees::RetryWaiting() {
    if (!std::exchange(m_isToRetry, false)) return;
    for (Subscription* subscription : std::exchange(m_waiting, {})) {
        values::TreeItem* const item = values::Tree::Instance()->FindItem(subscription->Path());
        if (item != nullptr)
            Watch(*subscription, item);
        else
            m_waiting.push_back(subscription);
    }
}

bool WatchedSubtrees::Serve(const TurnBudget& budget) {
    while (!m_changed.empty()) {
        const std::shared_ptr<WatchedSubtree> subtree = m_changed.front();
        m_changed.pop_front();
        subtree->Unlist();
        if (!subtree->HasMembers() || subtree->Serve(budget, &m_part)) continue;
        if (subtree->List()) m_changed.push_back(subtree);
        return false;
    }
    return true;
}

}  // namespace vt
