// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messages.h>

#include <QtCore/QByteArray>

#include <map>
#include <vector>

/// A server as docs/protocol.md has it, as far as it listens: holds every message of a client to the rules,
/// in one session.
class ClientChecker {
  public:
    struct Subscription {
        quint64 sequence = 0;
        quint32 nextId = 0;
    };

    void OnReceived(const QByteArray& bytes);
    /// What was sent to the client, as it came to it.
    void OnSent(const QByteArray& bytes);

    bool IsWelcome() const { return m_isWelcome; }
    bool HasEnded() const { return m_hasEnded; }
    /// Messages that the client has had and not acknowledged.
    quint64 CountOwed() const { return m_toAck - m_acked; }

    std::map<quint32, Subscription> subscriptions;
    std::vector<quint32> requests;  ///< that were not answered
    bool hasRoads = false;

  private:
    // What a client may send once it is welcome.
    void On(const vt::HelloMessage& hello);
    void On(const vt::ByeMessage& /*bye*/) {}
    void On(const vt::SubscribeMessage& subscribe);
    void On(const vt::UnsubscribeMessage& unsubscribe);
    void On(const vt::AckMessage& ack);
    void On(const vt::WriteMessage& write);
    void On(const vt::CreateMessage& create);
    void On(const vt::PingMessage& /*ping*/) {}
    void On(const vt::PongMessage& /*pong*/) {}
    void On(const vt::RecallMessage& /*recall*/) {}
    // Of shared roads, which not every channel brings.
    void On(const vt::JoinMessage& join) { OnRoad(join.sub); }
    void On(const vt::HeardMessage& heard);
    void On(const vt::LeaveMessage& leave) { OnRoad(leave.sub); }
    void On(const vt::AgainMessage& again);
    void OnRequest(quint32 req, quint32 sub);
    void OnRoad(quint32 sub) const;

    bool m_hasHello = false;
    bool m_isWelcome = false;
    bool m_hasEnded = false;
    quint32 m_lastSub = 0;
    quint32 m_lastRequest = 0;
    quint64 m_toAck = 0;
    quint64 m_acked = 0;
};
