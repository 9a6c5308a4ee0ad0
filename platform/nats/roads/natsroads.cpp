// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/roads/natsroads.h>

#include <platform/app/trace.h>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace nats {

namespace {

// Who keeps may be there later than who carries: nodes that have just met agree on it within seconds.
constexpr std::chrono::seconds KeepAgainAfter(2);
constexpr std::chrono::seconds LongestKeepAgain(30);
constexpr int FailuresToTell = 2;
constexpr qint64 MaxUnsentRoad = 16 << 20;  // what NATS does not take for so long is lost to all

}  // namespace

NatsRoads::NatsRoads(std::shared_ptr<INatsBus> bus, const QString& station, ERole role)
    : m_bus(std::move(bus)),
      m_station(station),
      m_role(role),
      m_root("mcs." + station.toLatin1() + ".road."),
      m_keeper(m_bus, "mcs-roads-" + station.toLatin1()) {
    m_done.setSingleShot(true);
    QObject::connect(&m_done, &QTimer::timeout, &m_done, [this] { TellInputDone(); });
    m_keepAgain.setSingleShot(true);
    QObject::connect(&m_keepAgain, &QTimer::timeout, &m_keepAgain, [this] { HaveKept(); });
    m_bus->AddListener(this);
    OnNatsState(m_bus->State(), QString());
}

NatsRoads::~NatsRoads() {
    m_bus->RemoveListener(this);
    while (!m_listening.empty())
        Unlisten(m_listening.begin()->first);
}

void NatsRoads::OnNatsState(INatsBus::EState state, const QString& /*reason*/) {
    m_keepAgain.stop();
    m_isKept = false;
    if (state == INatsBus::EState::Open && m_role == ERole::Server) HaveKept();
}

void NatsRoads::HaveKept() {
    m_keeper.Keep(m_root + '>', NatsKeeper::Limits(),
                  [this, life = std::weak_ptr(m_life)](const QString& why) {
                      if (!life.expired()) OnKept(why);
                  });
}

void NatsRoads::OnKept(const QString& why) {
    m_isKept = why.isEmpty();
    if (m_isKept) {
        if (m_keepFailures >= FailuresToTell)
            MCS_TRACE(QStringLiteral("NATS keeps what is published for the station '%1'").arg(m_station));
        m_keepFailures = 0;
        return;
    }
    // A connection that is lost asks again by itself when it is back.
    if (m_bus->State() != INatsBus::EState::Open) return;
    ++m_keepFailures;
    m_keepAgain.start(std::min<std::chrono::milliseconds>(KeepAgainAfter * m_keepFailures, LongestKeepAgain));
    if (m_keepFailures != FailuresToTell) return;
    MCS_TRACE(QStringLiteral(
                  "NATS does not keep what is published for the station '%1' (%2): who misses some of it "
                  "takes a new snapshot, and messages and events in between are lost")
                  .arg(m_station, why));
}

bool NatsRoads::Publish(const QString& road, std::string_view message) {
    const auto number = vt::NumberOnRoad(message.data(), static_cast<qint64>(message.size()));
    if (!number) return false;
    if (road != m_road) {
        m_road = road;
        m_subject = SubjectOf(road);
    }
    if (!HasRoom() || !m_bus->Publish(m_subject + QByteArray::number(*number), message)) {
        ++m_lost;
        return false;
    }
    ++m_published;
    m_publishedBytes += message.size();
    return true;
}

// Once it is full much of it has to go before it takes more: what it takes in between is of no use to anybody
// who misses the rest, and each time is told.
bool NatsRoads::HasRoom() {
    const bool wasFull = m_isFull;
    m_isFull = m_bus->Unsent() > (wasFull ? MaxUnsentRoad / 2 : MaxUnsentRoad);
    if (m_isFull != wasFull) TellOfRoom();
    return !m_isFull;
}

void NatsRoads::TellOfRoom() {
    if (m_isFull) {
        m_lostBefore = m_lost;
        MCS_TRACE(QStringLiteral(
                      "NATS does not take what is published for the station '%1' (%2 MiB wait): what "
                      "changes is lost by the roads until it does, and who follows them takes a new snapshot")
                      .arg(m_station)
                      .arg(MaxUnsentRoad >> 20));
        return;
    }
    MCS_TRACE(QStringLiteral("NATS takes again what is published for the station '%1': %2 messages were lost")
                  .arg(m_station)
                  .arg(m_lost - m_lostBefore));
}

int NatsRoads::MaxMessage() const {
    if (m_bus->State() != INatsBus::EState::Open) return vt::MaxRoadMessage;
    return static_cast<int>(std::min<qint64>(m_bus->MaxPayload(), vt::MaxRoadMessage));
}

void NatsRoads::Listen(const QString& road, IRoads::IListener* listener) {
    Unlisten(listener);
    Listening listening;
    listening.subject = SubjectOf(road);
    listening.subscription =
        m_bus->Subscribe(listening.subject + '*',
                         [this, listener](const NatsMessage& message) { OnMessage(listener, message); });
    m_listening[listener] = std::move(listening);
}

void NatsRoads::Unlisten(IRoads::IListener* listener) {
    const auto found = m_listening.find(listener);
    if (found == m_listening.end()) return;
    m_bus->Unsubscribe(found->second.subscription);
    if (found->second.fetched) found->second.fetched->Abort();
    m_listening.erase(found);
}

// Many come in one turn of the bus: what follows from them is sent once, behind them.
void NatsRoads::OnMessage(IRoads::IListener* listener, const NatsMessage& message) {
    const auto found = m_listening.find(listener);
    if (found == m_listening.end()) return;
    found->second.hasInput = true;
    if (!m_done.isActive()) m_done.start(0);
    listener->OnRoadMessage(message.data.data(), static_cast<qint64>(message.data.size()), false);
}

void NatsRoads::TellInputDone() {
    std::vector<IRoads::IListener*> listeners;
    for (auto& [listener, listening] : m_listening)
        if (std::exchange(listening.hasInput, false)) listeners.push_back(listener);
    for (IRoads::IListener* const listener : listeners)
        if (m_listening.count(listener) != 0) listener->OnRoadInputDone();
}

bool NatsRoads::Fetch(IRoads::IListener* listener, quint64 from, quint64 to) {
    const auto found = m_listening.find(listener);
    if (found == m_listening.end()) return false;
    Listening& listening = found->second;
    if (listening.fetched) listening.fetched->Abort();
    listening.fetched = std::make_shared<KeptMessages>(m_keeper, listening.subject, *listener, from, to);
    listening.fetched->Start();
    return true;
}

}  // namespace nats
