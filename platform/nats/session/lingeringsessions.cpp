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
    if (m_sessions.size() >= NatsSession::MaxLingering) return false;
    if (!m_applicationEnd)
        m_applicationEnd.emplace([this] {
            std::exchange(m_sessions, {}).clear();
            m_applicationEnd.reset();
        });
    m_sessions.push_back(session);
    NatsSession* const kept = session.get();
    QTimer::singleShot(NatsSession::LingerTime, kept,
                       [kept] { kept->Lose(QStringLiteral("the peer does not read")); });
    return true;
}

void LingeringSessions::Release(const std::shared_ptr<NatsSession>& session) {
    m_sessions.erase(std::remove(m_sessions.begin(), m_sessions.end(), session), m_sessions.end());
}

}  // namespace nats
