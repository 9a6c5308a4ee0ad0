// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/natssession.h>

#include <platform/app/steadyclock.h>
#include <platform/app/trace.h>
#include <platform/nats/session/lingeringsessions.h>
#include <platform/vtclient/ichannel.h>

#include <QtCore/QDeadlineTimer>

#include <algorithm>
#include <utility>

namespace nats {

namespace {

constexpr std::chrono::milliseconds SessionTurn(4);  // then others have theirs
constexpr quint64 TellAfter = NatsSession::Window / 4;
constexpr std::chrono::milliseconds SayAgainInterval(100);  // whoever asks twice has not had the first yet

std::chrono::milliseconds SessionNow() {
    return steadyclock::Now<std::chrono::milliseconds>();
}

quint64 NextWatch() {
    static quint64 last = 0;
    return ++last;
}

}  // namespace

NatsSession::NatsSession(std::shared_ptr<INatsBus> bus, QByteArray peer, const Greeting& greeting,
                         std::unique_ptr<SessionSeal> seal)
    : m_bus(std::move(bus)),
      m_peer(std::move(peer)),
      m_peerWindow(greeting.window),
      m_watch(NextWatch()),
      m_seal(std::move(seal)) {
    m_again.setSingleShot(true);
    m_ask.setInterval(AskInterval);
    connect(&m_ask, &QTimer::timeout, this, &NatsSession::OnAsk);
    connect(&m_again, &QTimer::timeout, this, &NatsSession::ReadOn);
    m_bus->AddListener(this);
}

NatsSession::~NatsSession() {
    m_bus->RemoveListener(this);
}

// Receiving
// --------------------------------------------------------------------------------------------------

void NatsSession::OnPacket(const Packet& packet) {
    if (m_isGone) return;
    const std::optional<std::string_view> body = m_seal->Open(packet);
    if (!body) return OnForged();
    Packet opened = packet;
    opened.body = *body;
    OnTrue(opened);
}

// Who may publish there is for the accounts of NATS; it is no more than noise.
void NatsSession::OnForged() {
    if (std::exchange(m_hasComplained, true)) return;
    MCS_TRACE_OF(QStringLiteral("nats"),
                 QStringLiteral("Somebody else publishes in the session over NATS at %1")
                     .arg(QString::fromLatin1(m_peer)));
}

void NatsSession::OnTrue(const Packet& packet) {
    const auto self = shared_from_this();
    if (!TakeCredit(packet) || !TakeNumber(packet)) return;
    switch (packet.kind) {
        case Packet::EKind::Data:
            TakeData(packet.body);
            break;
        case Packet::EKind::End:
            m_hasEnded = true;
            SendHead(Packet::EKind::Ended);
            if (!m_isOpen) return BeGone();
            ReadOn();
            break;
        case Packet::EKind::Ended:
            if (m_isEndSent) BeGone();
            break;
        case Packet::EKind::Number:
            OnPosition(packet);
            break;
        case Packet::EKind::Refuse:
        case Packet::EKind::Open:
        case Packet::EKind::Accept:
        case Packet::EKind::Credit:
            break;
    }
    if (!m_isGone) SendOn();
}

bool NatsSession::TakeNumber(const Packet& packet) {
    if (packet.kind != Packet::EKind::Data && packet.kind != Packet::EKind::End) {
        const bool isNew = packet.number > m_lastWordReceived;
        if (isNew) m_lastWordReceived = packet.number;
        if (isNew) Calm(&m_silence);
        return isNew;  // what comes twice says nothing new
    }
    const quint64 due = m_lastReceived + 1;
    if (packet.number < due) return false;
    Calm(&m_silence);
    if (packet.number > due) {
        OnMissing(packet.number);
        return false;
    }
    m_lastReceived = due;
    Calm(&m_missing);
    return true;
}

// What came behind it is said once more, too: that is rare, and nothing has to be kept for it.
void NatsSession::OnMissing(quint64 number) {
    if (m_missing || !m_isOpen) return;
    const QString reason = QStringLiteral("a message was lost over NATS (number %1 came, %2 was due)")
                               .arg(number)
                               .arg(m_lastReceived + 1);
    m_missing = Worry{reason, SessionNow() + Patience, false};
    m_ask.start();
    SendPosition(false);
}

void NatsSession::OnPosition(const Packet& packet) {
    const std::optional<Position> position = Position::Read(packet.body);
    if (!position) return;
    if (position->last > m_lastSent)
        return Lose(QStringLiteral("the peer acknowledges what was not sent over NATS"));
    m_sentPackets.DropUpTo(position->last);
    if (m_sentPackets.Count() != 0) SayAgain();
    if (position->isQuestion) SendPosition(false);
}

void NatsSession::SayAgain() {
    const std::chrono::milliseconds now = SessionNow();
    if (now - m_saidAgainAt < SayAgainInterval) return;
    m_saidAgainAt = now;
    for (std::size_t i = 0; i < m_sentPackets.Count(); ++i)
        m_bus->Publish(m_peer, m_sentPackets.Get(i), {}, m_watch);
}

bool NatsSession::TakeCredit(const Packet& packet) {
    if (packet.consumed > m_sent) {
        Lose(QStringLiteral("the peer acknowledges what was not sent over NATS"));
        return false;
    }
    m_peerConsumed = std::max(m_peerConsumed, packet.consumed);
    m_sentPackets.DropConsumed(m_peerConsumed);
    return true;
}

void NatsSession::TakeData(std::string_view body) {
    m_received += body.size();
    if (m_received - m_told > Window)
        return Lose(QStringLiteral("the peer sends more than it may over NATS"));
    if (!m_isOpen || m_isDeaf) return Acknowledge(true);  // nobody reads it any more
    if (m_isReading) {
        m_later.append(body);
        return;
    }
    m_in.Append(body);
    if (!m_again.isActive()) ReadOn();
}

void NatsSession::SetListener(vt::IChannelListener* listener) {
    m_listener = listener;
    // What came before there was somebody to read it, and what the end left.
    if (listener != nullptr) m_again.start(0);
}

// Everything that is there, but for no longer than a turn.
void NatsSession::ReadOn() {
    if (m_isReading || m_isDeaf || !m_isOpen || m_listener == nullptr) return;
    const auto self = shared_from_this();
    m_isReading = true;
    bool isPaused = false;
    GiveFrames(&isPaused);
    m_isReading = false;
    m_in.Tidy();
    if (!m_later.empty()) {
        m_in.Append(std::exchange(m_later, std::string()));
        isPaused = true;
    }
    if (m_isOpen && isPaused) m_again.start(0);
    Acknowledge(!isPaused);
    if (m_listener != nullptr) m_listener->OnInputDone();
    // What came before the end was given.
    if (m_isOpen && m_hasEnded && !isPaused) Fail(QStringLiteral("the peer closed the connection"));
}

bool NatsSession::GiveFrames(bool* isPaused) {
    const QDeadlineTimer turn(SessionTurn, Qt::PreciseTimer);
    quint32 length = 0;
    while (m_isOpen && !m_isDeaf && m_listener != nullptr && m_in.GetLength(&length)) {
        if (turn.hasExpired()) {
            *isPaused = true;
            return true;
        }
        if (length > m_maxMessage || length > MaxMessage) {
            Refuse(length);
            return false;
        }
        if (!m_in.HasFrame()) return true;
        const std::string_view frame = m_in.TakeFrame();
        m_listener->OnMessage(frame.data(), static_cast<qint64>(frame.size()));
    }
    return m_isOpen;
}

// A message that is not complete is not held against the peer: it is bounded, and what is missing has to
// come.
void NatsSession::Acknowledge(bool isAllTaken) {
    const quint64 waiting = isAllTaken ? 0 : m_in.Size();
    m_consumed = std::max(m_consumed, m_received - waiting);
    if (m_consumed - m_told < TellAfter || m_isGone) return;
    SendHead(Packet::EKind::Credit);
}

// The peer speaks the protocol and broke a rule: it may be told so.
void NatsSession::Refuse(quint32 length) {
    m_isDeaf = true;
    m_listener->OnClosed(
        QStringLiteral("a message of %1 bytes, where %2 are allowed").arg(length).arg(m_maxMessage));
    Close();
}

// The end
// ----------------------------------------------------------------------------------------------------

void NatsSession::Fail(const QString& reason) {
    if (!m_isOpen) return;
    const auto self = shared_from_this();
    m_isOpen = false;
    m_wasCut = !m_hasEnded;
    BeGone();
    if (m_listener != nullptr && !m_isDeaf) m_listener->OnClosed(reason);
}

void NatsSession::Lose(const QString& reason) {
    if (!m_isOpen) return BeGone();
    // The peer has said that it ends, which is told when all that came before was given.
    if (!m_hasEnded) Fail(reason);
}

void NatsSession::Doubt(const QString& reason, std::chrono::milliseconds patience) {
    Suspect(reason, patience, true);
}

void NatsSession::Suspect(const QString& reason, std::chrono::milliseconds patience, bool isHearsay) {
    if (m_isGone || (m_isOpen && m_hasEnded)) return;
    if (!m_isOpen) return BeGone();
    const std::chrono::milliseconds until = SessionNow() + patience;
    if (m_silence && m_silence->until <= until) return;
    m_silence = Worry{reason, until, isHearsay};
    m_ask.start();
    Ask();
}

void NatsSession::Ask() {
    if (!m_isGone && m_bus->State() == INatsBus::EState::Open) SendPosition(true);
}

void NatsSession::Calm(std::optional<Worry>* worry) {
    if (!*worry) return;
    const bool wasHearsay = (*worry)->isHearsay;
    worry->reset();
    if (!m_silence && !m_missing) m_ask.stop();
    if (wasHearsay) OnForged();
}

void NatsSession::OnAsk() {
    const std::chrono::milliseconds now = SessionNow();
    for (const std::optional<Worry>* const worry : {&m_silence, &m_missing})
        if (*worry && (*worry)->until <= now) return Lose(QString((*worry)->reason));
    Ask();
}

void NatsSession::BeGone() {
    if (std::exchange(m_isGone, true)) return;
    const auto self = shared_from_this();
    m_again.stop();
    m_ask.stop();
    m_out.Clear();
    m_sentPackets.Clear();
    LingeringSessions::Instance().Release(self);
    if (m_onGone) std::exchange(m_onGone, nullptr)();
}

void NatsSession::Close() {
    if (!m_isOpen) return;
    const auto self = shared_from_this();
    m_isOpen = false;
    m_again.stop();
    SendOn();
    if (m_isGone) return;
    if (m_hasEnded || m_bus->State() != INatsBus::EState::Open || !LingeringSessions::Instance().Keep(self))
        BeGone();
}

void NatsSession::OnNatsState(INatsBus::EState state, const QString& reason) {
    if (state == INatsBus::EState::Closed) return Lose(reason);
    if (state == INatsBus::EState::Connecting) return Suspect(reason, Patience, false);
    // It is back. What was on its way either way is found out by both saying where they are.
    if (const std::optional<Worry> cut = std::exchange(m_silence, std::nullopt))
        Suspect(cut->reason, Patience, false);
    SendOn();
}

void NatsSession::OnNatsUnheard(quint64 watch) {
    if (watch == m_watch) Suspect(QStringLiteral("the peer has left NATS"), m_peerPatience, false);
}

// Sending
// ----------------------------------------------------------------------------------------------------

void NatsSession::Append(std::string_view head, std::string_view middle, std::string_view tail) {
    if (m_isOpen) m_out.Append(head, middle, tail);
}

void NatsSession::Flush() {
    if (m_isOpen) SendOn();
}

void NatsSession::GiveBackRoom() {
    if (!m_isReading) m_in.GiveBackRoom();
    m_out.GiveBackRoom();
    m_sentPackets.GiveBackRoom();
}

void NatsSession::SendOn() {
    if (m_isGone || m_bus->State() != INatsBus::EState::Open) return;
    SendData();
    if (!m_isOpen && m_out.IsEmpty() && !std::exchange(m_isEndSent, true))
        PublishStream(Packet::EKind::End, {}, SentPackets::NeverConsumed);
}

// Many sessions share the bus: what they say leaves together. Flushed only where it has enough already, so
// that whoever waits is told when there is room.
bool NatsSession::HasRoom() {
    if (m_bus->Unsent() >= INatsBus::EnoughUnsent) m_bus->Flush();
    return m_bus->Unsent() < INatsBus::EnoughUnsent;
}

void NatsSession::SendData() {
    const auto around = static_cast<std::size_t>(Packet::HeadSize + SessionSeal::TagSize);
    const std::size_t most =
        std::min<std::size_t>(MaxBody, static_cast<std::size_t>(m_bus->MaxPayload()) - around);
    while (!m_out.IsEmpty() && HasRoom()) {
        const quint64 underWay = m_sent - m_peerConsumed;
        if (underWay >= m_peerWindow) return;
        const std::size_t size =
            std::min({m_out.Size(), most, static_cast<std::size_t>(m_peerWindow - underWay)});
        m_sent += size;
        PublishStream(Packet::EKind::Data, m_out.Take(size), m_sent);
    }
}

// The other end may have to hear it once more, also if NATS does not take it now.
void NatsSession::PublishStream(Packet::EKind kind, std::string_view body, quint64 end) {
    const std::string_view sealed = m_seal->Seal({kind, ++m_lastSent, m_consumed, body});
    m_sentPackets.Add(m_lastSent, sealed, end);
    m_bus->Publish(m_peer, sealed, {}, m_watch);
    m_told = m_consumed;
}

void NatsSession::SendHead(Packet::EKind kind) {
    Publish({kind, ++m_lastWordSent, m_consumed, {}}, kind == Packet::EKind::Ended ? 0 : m_watch);
    m_told = m_consumed;
}

void NatsSession::SendPosition(bool isQuestion) {
    const QByteArray body = Position{m_lastReceived, isQuestion}.Write();
    Publish({Packet::EKind::Number,
             ++m_lastWordSent,
             m_consumed,
             {body.constData(), static_cast<std::size_t>(body.size())}},
            m_watch);
    m_told = m_consumed;
}

bool NatsSession::Publish(const Packet& packet, quint64 watch) {
    return m_bus->Publish(m_peer, m_seal->Seal(packet), {}, watch);
}

}  // namespace nats
