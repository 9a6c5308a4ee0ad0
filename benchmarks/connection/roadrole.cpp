// SPDX-License-Identifier: Apache-2.0
#include "roadrole.h"

namespace bench {

RoadRole::RoadRole(const Settings& settings)
    : Role(settings), m_road(FindRoad(settings.Text(QStringLiteral("road")))) {
    if (!m_road) Fail(QStringLiteral("no such road"));
    m_setup.values = settings.Int(QStringLiteral("values"), 1);
    m_setup.clients = settings.Int(QStringLiteral("clients"), 1);
    m_setup.everyChange = settings.Int(QStringLiteral("everychange")) != 0;
    m_setup.brokerPort = settings.Int(QStringLiteral("broker"));
}

std::unique_ptr<ServerEnd> RoadRole::MakeServerEnd() const {
    std::unique_ptr<ServerEnd> end = m_road->makeServerEnd(m_setup);
    end->onOpen = [](int port) { TellPort(port); };
    return end;
}

std::unique_ptr<ClientEnd> RoadRole::MakeClientEnd(int client) const {
    return m_road->makeClientEnd(m_setup, client, GetSettings().Int(QStringLiteral("port")));
}

}  // namespace bench
