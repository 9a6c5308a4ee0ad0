// SPDX-License-Identifier: Apache-2.0
#include "lightclients.h"

#include <QtCore/QTimer>

#include <algorithm>
#include <limits>
#include <utility>

namespace bench {

LightClients::LightClients(const Settings& settings)
    : Role(settings),
      m_sessions(settings.Int(QStringLiteral("sessions"))),
      m_connectionCount(settings.Int(QStringLiteral("connections"))),
      m_reportEvery(settings.Int(QStringLiteral("report"))),
      m_enough(settings.Int(QStringLiteral("enough"))) {}

void LightClients::Start() {
    const int number = GetSettings().Int(QStringLiteral("first"));
    for (int i = 0; i < m_connectionCount; ++i) {
        LightConnection::Setup setup;
        setup.port = GetSettings().Int(QStringLiteral("port"));
        setup.sessions = m_sessions * (i + 1) / m_connectionCount - m_sessions * i / m_connectionCount;
        if (i == 0) setup.reportPath = QStringLiteral("/Reports/Client%1/Report").arg(number);
        m_connections.push_back(std::make_unique<LightConnection>(setup, *this));
    }
}

void LightClients::OnTaken() {
    if (++m_taken != m_sessions) return;
    QTimer::singleShot(0, this, [this] {
        PlanReport();
        m_connections.front()->Report(0);
    });
}

/// Of the connection that is the last.
int LightClients::Number() const {
    int number = std::numeric_limits<int>::max();
    for (const auto& connection : m_connections)
        number = std::min(number, connection->Number());
    return number;
}

void LightClients::PlanReport() {
    m_nextReport = (Number() / m_reportEvery + 1) * m_reportEvery;
}

void LightClients::OnRoadNumber() {
    if (m_nextReport == 0) return;
    if (Number() >= m_enough && !std::exchange(m_isOver, true)) TellResult(Settings());
    if (Number() < m_nextReport) return;
    PlanReport();
    m_connections.front()->Report(Number());
}

}  // namespace bench
