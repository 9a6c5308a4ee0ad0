// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/natslistener.h>

#include <platform/app/trace.h>
#include <platform/nats/session/natschannel.h>
#include <platform/nats/session/natssession.h>

#include <QtCore/QPointer>

#include <chrono>
#include <utility>

namespace nats {

namespace {

constexpr std::chrono::seconds RefusalPeriod(1);
constexpr int ShownOfId = 6;

/// What counts as the host of whom NATS knows as \a who: it is all that tells clients apart.
QString HostOfWho(const QByteArray& who) {
    return QStringLiteral("nats/%1").arg(QString::fromLatin1(who));
}

}  // namespace

NatsListener::NatsListener(std::shared_ptr<INatsBus> bus, const QString& station, quint64 instance,
                           Handler handler)
    : m_bus(std::move(bus)),
      m_subjects(station),
      m_instance(instance),
      m_handler(std::move(handler)),
      m_subscription(
          m_bus->Subscribe(m_subjects.AllUp(), [this](const NatsMessage& message) { OnMessage(message); })) {
    m_second.setSingleShot(true);
    connect(&m_second, &QTimer::timeout, this, [this] { m_refusals = 0; });
    m_nextTurn.setSingleShot(true);
    connect(&m_nextTurn, &QTimer::timeout, this, [this] {
        m_begun = 0;
        BeginSome();
    });
}

NatsListener::~NatsListener() {
    m_bus->Unsubscribe(m_subscription);
    for (const auto& known : std::exchange(m_sessions, {})) {
        const auto session = known.lock();
        if (session == nullptr) continue;
        session->SetGoneHandler(nullptr);
        if (session->IsOpen()) session->Lose(QStringLiteral("the station is not offered at NATS any more"));
    }
}

void NatsListener::SetOpen(bool isOpen) {
    m_isOpen = isOpen;
    if (isOpen) BeginSome();
}

// Each costs as much as many words of a session: who is there already comes first.
void NatsListener::BeginSome() {
    while (m_isOpen && m_begun < BegunPerTurn) {
        const std::optional<Openings::Opening> next = m_openings.Take();
        if (!next) return;
        if (!m_nextTurn.isActive()) m_nextTurn.start(0);
        if (m_sessions.contains(next->name.ToText())) continue;
        ++m_begun;
        Begin(next->name, next->greeting);
    }
}

void NatsListener::OnMessage(const NatsMessage& message) {
    const std::optional<SessionName> name = m_subjects.SessionOf(message.subject);
    const std::optional<Packet> packet = Packet::Read(message.data);
    if (!name || !packet)
        return Complain(name ? name->who : QByteArray("-"),
                        QStringLiteral("what came is no packet of a session"));
    const auto found = m_sessions.constFind(name->ToText());
    const auto session = found == m_sessions.constEnd() ? nullptr : found->lock();
    if (session == nullptr) return OnStranger(*name, *packet);
    if (packet->kind == Packet::EKind::Open)
        return Complain(name->who, QStringLiteral("a session that is there was begun once more"));
    session->OnPacket(*packet);
}

void NatsListener::OnStranger(const SessionName& name, const Packet& packet) {
    if (packet.kind == Packet::EKind::Open) {
        const std::optional<Greeting> greeting = Greeting::Read(packet.body);
        if (!greeting || greeting->window < LeastWindow)
            return Complain(name.who, QStringLiteral("a session was begun with what is no greeting"));
        if (greeting->version != Packet::Version)
            return Refuse(name,
                          QStringLiteral("the station speaks version %1 of the session over NATS, not %2")
                              .arg(Packet::Version)
                              .arg(greeting->version));
        m_openings.Add({name, *greeting});
        return BeginSome();
    }
    // The last words of those that have ended.
    const bool isWord = packet.kind == Packet::EKind::Data || packet.kind == Packet::EKind::Credit ||
                        packet.kind == Packet::EKind::Number;
    if (!isWord || !m_isOpen) return;
    Refuse(name, QStringLiteral("the server knows of no such session: it was restarted, or ended it"));
}

void NatsListener::Begin(const SessionName& name, const Greeting& greeting) {
    auto seal = std::make_unique<SessionSeal>();
    const QByteArray own = seal->PublicKey();
    const std::string_view theirs(greeting.key.constData(), Greeting::KeySize);
    if (!seal->Agree(SessionSeal::ESide::Server, theirs, m_subjects.Up(name)))
        return Complain(name.who, QStringLiteral("a session was begun with what is no key"));
    const auto session =
        std::make_shared<NatsSession>(m_bus, m_subjects.Down(name), greeting, std::move(seal));
    const QByteArray key = name.ToText();
    m_sessions.insert(key, session);
    session->SetGoneHandler([self = QPointer<NatsListener>(this), key, gone = session.get()] {
        if (!self) return;
        self->m_sessions.remove(key);
        if (gone->WasCut()) ++self->m_lost;
    });
    const QByteArray head = Packet{Packet::EKind::Accept, 0, 0, {}}.Head();
    const QByteArray body = Greeting{Packet::Version, NatsSession::Window, m_instance, own}.Write();
    m_bus->Publish(m_subjects.Down(name), {head.constData(), static_cast<std::size_t>(head.size())},
                   {body.constData(), static_cast<std::size_t>(body.size())}, session->Watch());
    // Whose machine it is, and how it speaks to NATS, nobody here knows.
    const QString id = QString::fromLatin1(name.id.left(ShownOfId));
    m_handler(std::make_unique<NatsChannel>(
        session, NatsChannel::Peer{QStringLiteral("%1:%2").arg(HostOfWho(name.who), id), false,
                                   m_bus->IsEncrypted()}));
}

void NatsListener::Refuse(const SessionName& name, const QString& reason) {
    if (!m_second.isActive()) m_second.start(RefusalPeriod);
    if (++m_refusals > MaxRefusals) return;
    const QByteArray head = Packet{Packet::EKind::Refuse, 0, 0, {}}.Head();
    const QByteArray body = reason.toUtf8();
    m_bus->Publish(m_subjects.Down(name), {head.constData(), static_cast<std::size_t>(head.size())},
                   {body.constData(), static_cast<std::size_t>(body.size())});
}

void NatsListener::Complain(const QByteArray& who, const QString& complaint) const {
    MCS_TRACE_OF(HostOfWho(who), QStringLiteral("From %1: %2").arg(HostOfWho(who), complaint));
}

}  // namespace nats
