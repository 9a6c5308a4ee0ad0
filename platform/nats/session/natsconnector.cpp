// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/natsconnector.h>

#include <platform/nats/session/natschannel.h>
#include <platform/nats/session/natssession.h>
#include <platform/nats/session/presence.h>

#include <utility>

namespace nats {

namespace {

QString ReasonOf(const Packet& refusal) {
    constexpr int MaxReason = 200;
    return QString::fromUtf8(refusal.body.data(), static_cast<int>(refusal.body.size())).left(MaxReason);
}

}  // namespace

NatsConnector::NatsConnector(BusMaker makeBus, const QString& station, QByteArray who)
    : m_makeBus(std::move(makeBus)), m_station(station), m_subjects(station), m_who(std::move(who)) {}

NatsConnector::~NatsConnector() {
    Abort();
}

void NatsConnector::Connect() {
    Abort();
    QString problem;
    m_bus = m_makeBus(&problem);
    if (m_bus == nullptr) {
        QTimer::singleShot(0, this, [this, problem] { Fail(problem); });
        return;
    }
    m_bus->AddListener(this);
    m_bus->Open(false);
}

void NatsConnector::Abort() {
    if (m_route) m_route->connector = nullptr;
    m_route.reset();
    if (m_bus) m_bus->RemoveListener(this);
    m_bus.reset();
}

void NatsConnector::Fail(const QString& reason) {
    Abort();
    if (m_listener != nullptr) m_listener->OnConnectFailed(reason);
}

void NatsConnector::OnNatsState(INatsBus::EState state, const QString& reason) {
    // The bus calls us: it goes when it has done that.
    const std::shared_ptr<INatsBus> bus = m_bus;
    QTimer::singleShot(0, this, [bus] {});
    if (state == INatsBus::EState::Open) return Knock();
    Fail(reason);
}

void NatsConnector::OnNatsComplaint(const QString& complaint) {
    const std::shared_ptr<INatsBus> bus = m_bus;
    QTimer::singleShot(0, this, [bus] {});
    Fail(QStringLiteral("NATS refuses: %1").arg(complaint));
}

void NatsConnector::OnNatsUnheard(quint64 watch) {
    if (watch != KnockWatch) return;
    const std::shared_ptr<INatsBus> bus = m_bus;
    QTimer::singleShot(0, this, [bus] {});
    Fail(QStringLiteral("nobody offers the station '%1' at NATS").arg(m_station));
}

void NatsConnector::Knock() {
    m_name = SessionName::Draw(m_who);
    m_route = std::make_shared<Route>();
    m_route->connector = this;
    m_bus->Subscribe(m_subjects.Down(m_name),
                     [route = m_route](const NatsMessage& message) { Deliver(*route, message); });
    m_bus->Subscribe(m_subjects.Here(),
                     [route = m_route](const NatsMessage& message) { LookForRestart(*route, message); });
    const QByteArray head = Packet{Packet::EKind::Open, 0, 0, {}}.Head();
    m_seal = std::make_unique<SessionSeal>();
    const QByteArray body = Greeting{Packet::Version, NatsSession::Window, 0, m_seal->PublicKey()}.Write();
    m_bus->Publish(m_subjects.Up(m_name), {head.constData(), static_cast<std::size_t>(head.size())},
                   {body.constData(), static_cast<std::size_t>(body.size())}, KnockWatch);
    m_bus->Flush();
}

void NatsConnector::Deliver(Route& route, const NatsMessage& message) {
    const std::optional<Packet> packet = Packet::Read(message.data);
    if (!packet) return;
    route.hasHeard = true;
    if (const std::shared_ptr<NatsSession> session = route.session.lock()) {
        // A server that knows nothing of the session has no key for it.
        if (packet->kind == Packet::EKind::Refuse) return session->Doubt(ReasonOf(*packet), RefusalPatience);
        return session->OnPacket(*packet);
    }
    if (route.connector != nullptr) route.connector->OnPacket(*packet);
}

// Whoever offers the station since knows nothing of the session.
void NatsConnector::LookForRestart(Route& route, const NatsMessage& message) {
    const std::shared_ptr<NatsSession> session = route.session.lock();
    const std::optional<Presence> presence = Presence::Read(message.data);
    if (!session || !presence) return;
    if (presence->instance == route.instance)
        route.hasHeard = true;
    else
        session->Doubt(QStringLiteral("the server was restarted"), RefusalPatience);
}

void NatsConnector::OnTick(Route& route) {
    const std::shared_ptr<NatsSession> session = route.session.lock();
    if (!session) return route.tick.stop();
    route.silentTicks = std::exchange(route.hasHeard, false) ? 0 : route.silentTicks + 1;
    if (route.silentTicks != 0 && route.silentTicks % TicksToAsk == 0) session->Ask();
}

void NatsConnector::OnPacket(const Packet& packet) {
    const std::shared_ptr<INatsBus> bus = m_bus;
    QTimer::singleShot(0, this, [bus] {});
    if (packet.kind == Packet::EKind::Refuse) return Fail(ReasonOf(packet));
    const std::optional<Greeting> greeting = Greeting::Read(packet.body);
    if (packet.kind == Packet::EKind::Accept && greeting) Accept(*greeting);
}

void NatsConnector::Accept(const Greeting& greeting) {
    if (greeting.version != Packet::Version)
        return Fail(QStringLiteral("the station speaks version %1 of the session over NATS, not %2")
                        .arg(greeting.version)
                        .arg(Packet::Version));
    const QByteArray up = m_subjects.Up(m_name);
    const std::string_view key(greeting.key.constData(), Greeting::KeySize);
    if (!m_seal->Agree(SessionSeal::ESide::Client, key, up))
        return Fail(QStringLiteral("the station sends what is no key"));
    const auto session = std::make_shared<NatsSession>(m_bus, up, greeting, std::move(m_seal));
    m_route->session = session;
    m_route->instance = greeting.instance;
    session->SetPeerPatience(UnheardPatience);
    QObject::connect(&m_route->tick, &QTimer::timeout, [route = m_route.get()] { OnTick(*route); });
    m_route->tick.start(Tick);
    m_bus->Persist();
    // The client can judge its own part of the way, no more.
    const NatsChannel::Peer peer{QStringLiteral("%1/%2").arg(m_bus->ServerAddress(), m_station),
                                 m_bus->IsLoopback(), m_bus->IsEncrypted()};
    auto roads = std::make_unique<NatsRoads>(m_bus, m_station, NatsRoads::ERole::Client);
    Abort();
    auto channel = std::make_unique<NatsChannel>(session, peer, std::move(roads));
    if (m_listener != nullptr) m_listener->OnConnected(std::move(channel));
}

}  // namespace nats
