// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsstation.h>

#include <platform/nats/roads/natsroads.h>
#include <platform/nats/session/natslistener.h>
#include <platform/nats/session/stationclaim.h>
#include <platform/vtclient/vtserver.h>

#include <utility>

namespace nats {

/// What goes with one station.
class NatsStation::Works {
  public:
    Works(VtServer& server, std::shared_ptr<INatsBus> bus, QString station, const Description& description,
          Handler onState)
        : m_server(server),
          m_bus(std::move(bus)),
          m_station(std::move(station)),
          m_onState(std::move(onState)),
          m_roads(m_bus, m_station, NatsRoads::ERole::Server),
          m_claim(m_bus, m_station, description,
                  [this](EState state, const QString& reason) { OnState(state, reason); }) {}

    ~Works() { m_server.SetRoads(nullptr); }
    Works(const Works&) = delete;
    Works& operator=(const Works&) = delete;

    void Start() {
        m_server.SetRoads(&m_roads);
        m_claim.Start();
    }

    Figures GetFigures() const {
        Figures figures;
        figures.isConnected = m_bus->State() == INatsBus::EState::Open;
        if (figures.isConnected) figures.server = m_bus->ServerAddress();
        figures.problem = m_bus->Problem();
        figures.isKept = m_roads.IsKept();
        figures.sessions = m_listener ? m_listener->CountSessions() : 0;
        figures.messages = m_roads.Published();
        figures.bytes = m_roads.PublishedBytes();
        figures.lost = m_roads.Lost();
        figures.unsent = m_bus->Unsent();
        figures.roads = m_server.GetRoadFigures();
        figures.lostSessions = m_lostSessions + (m_listener ? m_listener->CountLost() : 0);
        return figures;
    }

  private:
    void OnState(EState state, const QString& reason) {
        // Where NATS was lost the station is mostly still ours, and so are its sessions.
        if (state == EState::Taken && m_listener) {
            m_lostSessions += m_listener->CountLost() + static_cast<quint64>(m_listener->CountSessions());
            m_listener.reset();
        }
        if (m_listener) m_listener->SetOpen(state == EState::Offering);
        if (state == EState::Offering && !m_listener)
            m_listener = std::make_unique<NatsListener>(
                m_bus, m_station, m_claim.Instance(),
                [this](std::unique_ptr<vt::IChannel> channel) { m_server.Serve(std::move(channel)); });
        m_onState(state, reason);
    }

    VtServer& m_server;
    const std::shared_ptr<INatsBus> m_bus;
    const QString m_station;
    const Handler m_onState;
    NatsRoads m_roads;
    StationClaim m_claim;
    std::unique_ptr<NatsListener> m_listener;
    quint64 m_lostSessions = 0;  ///< of listeners that are gone
};

NatsStation::NatsStation(VtServer& server, std::shared_ptr<INatsBus> bus, const QString& station,
                         const Description& description, Handler onState)
    : m_works(std::make_unique<Works>(server, std::move(bus), station, description, std::move(onState))) {}

NatsStation::~NatsStation() = default;

void NatsStation::Start() {
    m_works->Start();
}

NatsStation::Figures NatsStation::GetFigures() const {
    return m_works->GetFigures();
}

}  // namespace nats
