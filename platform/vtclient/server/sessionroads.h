// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <map>
#include <memory>

namespace vt {

class RoadPublisher;
class ServerHub;
class ServerSession;
class Subscription;

/// What the client of one session is told of shared roads: which there are and their keys, when it is told by
/// one, and how far that one was when the session says something that has its place in the order of changes.
class SessionRoads {
  public:
    using Subscriptions = std::map<quint32, std::unique_ptr<Subscription>>;

    /// All three outlive this.
    SessionRoads(ServerHub& hub, ServerSession& session, const Subscriptions& subscriptions);

    // What the client says.
    void Join(quint32 sub);
    void Heard(quint32 sub, const QString& road);
    void Leave(quint32 sub);
    /// Says once more on the road what has come by it under these numbers, as far as that is kept.
    void Again(quint32 sub, quint64 from, quint64 to);

    /// Offers the road of what is subscribed, if the client can follow one and there is any.
    void Offer(Subscription& subscription);
    /// Tells the road, and the key of what it says from now on.
    void Tell(const Subscription& subscription, const RoadPublisher& road);
    /// Subscriptions that lack nothing, and whose road the client has heard, are told by that from now on.
    void Take();
    /// What the session says next of the subscription comes after all that its road has said, if it is on
    /// one.
    void TellPosition(Subscription& subscription);
    void TellPosition(quint32 sub);

  private:
    Subscription* Find(quint32 sub) const;
    void SendPosition(Subscription& subscription, quint64 number);

    ServerHub& m_hub;
    ServerSession& m_session;
    const Subscriptions& m_subscriptions;
    bool m_mayTake = false;  ///< some road was heard and is not taken
};

}  // namespace vt
