// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/sessionroads.h>

#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/server/serversession.h>
#include <platform/vtclient/server/subscription.h>
#include <platform/vtclient/wire/messagewriter.h>

#include <utility>

namespace vt {

SessionRoads::SessionRoads(ServerHub& hub, ServerSession& session, const Subscriptions& subscriptions)
    : m_hub(hub), m_session(session), m_subscriptions(subscriptions) {}

Subscription* SessionRoads::Find(quint32 sub) const {
    const auto found = m_subscriptions.find(sub);
    return found == m_subscriptions.end() ? nullptr : found->second.get();
}

void SessionRoads::Join(quint32 sub) {
    Subscription* const subscription = Find(sub);
    if (subscription == nullptr || m_hub.Roads() == nullptr || subscription->road.isTaken) return;
    subscription->road.isWanted = true;
    Offer(*subscription);
}

void SessionRoads::Offer(Subscription& subscription) {
    if (subscription.road.isWanted && m_hub.Roads() != nullptr)
        m_hub.Subtrees().OfferRoad(subscription, *m_hub.Roads());
}

void SessionRoads::Tell(const Subscription& subscription, const RoadPublisher& road) {
    RoadMessage message;
    if (road.Describe(subscription.Number(), &message)) m_session.SendBytes(Encode(message));
}

// It may be of a road that was, before the item went and came back.
void SessionRoads::Heard(quint32 sub, const QString& road) {
    Subscription* const subscription = Find(sub);
    if (subscription == nullptr || subscription->road.isTaken) return;
    const RoadPublisher* const offered = m_hub.Subtrees().RoadOfferedTo(*subscription);
    if (offered == nullptr || offered->Name() != road) return;
    subscription->road.isHeard = m_mayTake = true;
    m_hub.ServeLater(m_session);
}

void SessionRoads::Take() {
    if (!m_mayTake) return;
    m_mayTake = false;
    for (const auto& [sub, subscription] : m_subscriptions) {
        Subscription::Road& road = subscription->road;
        const RoadPublisher* const offered = m_hub.Subtrees().RoadOfferedTo(*subscription);
        if (!road.isHeard || road.isTaken || offered == nullptr) continue;
        if (!subscription->IsInStep()) {
            m_mayTake = true;
            continue;
        }
        m_hub.Subtrees().TakeRoad(*subscription);
        SendPosition(*subscription, offered->Number());
    }
}

void SessionRoads::Leave(quint32 sub) {
    Subscription* const subscription = Find(sub);
    if (subscription == nullptr) return;
    const bool wasTaken = subscription->road.isTaken;
    subscription->road.isWanted = subscription->road.isHeard = false;
    if (wasTaken) m_hub.Subtrees().LeaveRoad(*subscription);
}

void SessionRoads::Again(quint32 sub, quint64 from, quint64 to) {
    Subscription* const subscription = Find(sub);
    if (subscription == nullptr) return;
    if (RoadPublisher* const road = m_hub.Subtrees().RoadOf(*subscription))
        road->SayAgain(from, to, m_hub.Now());
}

void SessionRoads::TellPosition(Subscription& subscription) {
    const RoadPublisher* const road = m_hub.Subtrees().RoadOf(subscription);
    if (road != nullptr && subscription.road.told != road->Number())
        SendPosition(subscription, road->Number());
}

void SessionRoads::TellPosition(quint32 sub) {
    if (Subscription* const subscription = Find(sub)) TellPosition(*subscription);
}

void SessionRoads::SendPosition(Subscription& subscription, quint64 number) {
    subscription.road.told = number;
    m_session.SendBytes(Encode(AtMessage{subscription.Number(), number}));
}

}  // namespace vt
