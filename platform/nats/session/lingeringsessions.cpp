// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/lingeringsessions.h>

#include <platform/nats/session/natssession.h>

#include <QtCore/QTimer>

#include <algorithm>
#include <utility>

namespace nats {

LingeringSessions& LingeringSessions::Instance() {
    static auto& sessions = *new LingeringSessions;  // never destroyed: what goes later may still end one
    return sessions;
}

bool LingeringSessions::Keep(const std::shared_ptr<NatsSession>& session) {
    qint64 bytes = session->Waiting();
    for (const auto& kept : m_sessions)
        bytes += kept->Waiting();
    if (m_sessions.size() >= NatsSession::MaxLingering || bytes > NatsSession::MaxLingeringBytes)
        return false;
    if (!m_applicationEnd)
        m_applicationEnd.emplace([this] {
            std::exchange(m_sessions, {}).clear();
            m_applicationEnd.reset();
        });
    m_sessions.push_back(session);
    LookLater(session.get(), session->ConsumedByPeer(), 1);
    return true;
}

// Who reads on has the rest of it, even over a slow way.
void LingeringSessions::LookLater(NatsSession* session, quint64 consumed, int looks) {
    QTimer::singleShot(NatsSession::LingerTime, session, [this, session, consumed, looks] {
        const quint64 now = session->ConsumedByPeer();
        if (now == consumed || looks >= NatsSession::MostLingerTimes)
            return session->Lose(QStringLiteral("the peer does not read"));
        LookLater(session, now, looks + 1);
    });
}

void LingeringSessions::Release(const std::shared_ptr<NatsSession>& session) {
    m_sessions.erase(std::remove(m_sessions.begin(), m_sessions.end(), session), m_sessions.end());
}

}  // namespace nats
