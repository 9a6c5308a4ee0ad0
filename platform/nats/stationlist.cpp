// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/stationlist.h>

#include <platform/nats/natsaddress.h>
#include <platform/nats/session/presence.h>
#include <platform/nats/session/subjects.h>

#include <utility>

namespace nats {

namespace {

constexpr std::size_t MaxListed = 10'000;  // names cost little, but strangers may make up any number

}  // namespace

StationList::StationList(std::shared_ptr<INatsBus> bus, Handler onStation)
    : m_bus(std::move(bus)),
      m_onStation(std::move(onStation)),
      m_subscription(
          m_bus->Subscribe(Subjects::AllHere(), [this](const NatsMessage& message) { OnHere(message); })) {}

StationList::~StationList() {
    m_bus->Unsubscribe(m_subscription);
}

void StationList::Ask() {
    m_bus->Publish(Subjects::AskAll(), {});
    m_bus->Flush();
}

// The subject says which station it is, since that is what accounts of NATS guard.
void StationList::OnHere(const NatsMessage& message) {
    const std::optional<Presence> presence = Presence::Read(message.data);
    if (!presence || presence->what != Presence::EWhat::Holds) return;
    if (!NatsAddress::StationFault(presence->station).isEmpty()) return;
    const QByteArray subject = Subjects(presence->station).Here();
    if (message.subject != std::string_view(subject.constData(), static_cast<std::size_t>(subject.size())))
        return;
    if (m_stations.size() >= MaxListed && m_stations.count(presence->station) == 0) return;
    const StationInfo info{presence->station, presence->name,      presence->version, presence->machine,
                           presence->state,   presence->stateCode, presence->since};
    m_stations[info.station] = info;
    if (m_onStation) m_onStation(info);
}

}  // namespace nats
