// SPDX-License-Identifier: Apache-2.0
#include "lightconnection.h"

#include "../natsoffer.h"
#include "../role.h"

#include <platform/nats/natsbusmaker.h>

#include <QtCore/QTimer>

#include <utility>

namespace bench {

LightConnection::LightConnection(const Setup& setup, IHost& host) : m_setup(setup), m_host(host) {
    nats::NatsOptions options;
    options.servers = {{QStringLiteral("127.0.0.1"), setup.port}};
    QString problem;
    m_bus = nats::MakeBus(options, &problem);
    if (!m_bus) Role::Fail(problem);
    m_bus->AddListener(this);
    m_bus->Open(false);
}

LightConnection::~LightConnection() {
    m_bus->RemoveListener(this);
}

void LightConnection::OnNatsState(nats::INatsBus::EState state, const QString& reason) {
    if (state != nats::INatsBus::EState::Open) Role::Fail(reason);
    m_roads = std::make_unique<nats::NatsRoads>(m_bus, BenchStation(), nats::NatsRoads::ERole::Client);
    OpenNextSoon();  // who begins to listen now would be told of this once more
}

void LightConnection::OpenNextSoon() {
    QTimer::singleShot(0, &m_timers, [this] { OpenNext(); });
}

// One after the other: how a server takes a crowd that comes at once is not measured here.
void LightConnection::OpenNext() {
    if (m_sessions.size() == static_cast<std::size_t>(m_setup.sessions)) return;
    LightSession::Handlers handlers;
    handlers.onWelcome = [this] { OpenNextSoon(); };
    handlers.onRoad = [this](LightSession& session, const QString& road) { Listen(session, road); };
    handlers.onTaken = [this] { m_host.OnTaken(); };
    m_sessions.push_back(std::make_unique<LightSession>(std::make_shared<SharedBus>(m_bus), BenchStation(),
                                                        std::move(handlers),
                                                        m_sessions.empty() ? m_setup.reportPath : QString()));
    m_sessions.back()->Open();
}

void LightConnection::Listen(LightSession& session, const QString& road) {
    m_listening.push_back(&session);
    if (!std::exchange(m_road, road).isEmpty()) return;
    m_roads->Listen(road, this);
}

void LightConnection::OnRoadMessage(const char* data, qint64 size, bool /*isFetched*/) {
    const auto number = vt::NumberOnRoad(data, size);
    if (!number || (m_number != 0 && *number != m_number + 1))
        Role::Fail(QStringLiteral("something else came by the road than number %1").arg(m_number + 1));
    m_number = *number;
    for (LightSession* const session : std::exchange(m_listening, {}))
        session->TellHeard(m_road);
}

void LightConnection::OnRoadInputDone() {
    m_host.OnRoadNumber();
}

}  // namespace bench
