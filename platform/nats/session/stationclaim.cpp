// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/stationclaim.h>

#include <platform/app/vornos.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QRandomGenerator>

#include <utility>

namespace nats {

using EState = NatsStation::EState;

StationClaim::StationClaim(std::shared_ptr<INatsBus> bus, const QString& station,
                           const NatsStation::Description& description, NatsStation::Handler onState)
    : m_bus(std::move(bus)),
      m_subjects(station),
      m_onState(std::move(onState)),
      m_describeState(description.state) {
    m_self.station = station;
    m_self.instance = QRandomGenerator::system()->generate64();
    m_self.name = description.name;
    m_self.version = description.version;
    m_self.machine = VornOS::Create()->GetMachineName();
    m_self.process = QCoreApplication::applicationPid();
    m_self.since = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_state == EState::Claiming)
            Win();
        else
            Claim();
    });
    m_showSoon.setSingleShot(true);
    m_showSoon.setInterval(ShowSoonest);
    connect(&m_show, &QTimer::timeout, this, &StationClaim::Show);
    connect(&m_showSoon, &QTimer::timeout, this, &StationClaim::Show);
}

StationClaim::~StationClaim() {
    m_bus->RemoveListener(this);
    m_bus->Unsubscribe(m_claims);
    m_bus->Unsubscribe(m_shown);
    m_bus->Unsubscribe(m_asked);
}

void StationClaim::Start() {
    m_claims = m_bus->Subscribe(m_subjects.Claim(), [this](const NatsMessage& message) { OnClaim(message); });
    m_shown = m_bus->Subscribe(m_subjects.Here(), [this](const NatsMessage& message) { OnShown(message); });
    m_asked = m_bus->Subscribe(Subjects::AskAll(), [this](const NatsMessage&) {
        if (m_state == EState::Offering && !m_showSoon.isActive()) m_showSoon.start();
    });
    m_bus->AddListener(this);
    if (m_bus->State() == INatsBus::EState::Open) return Claim();
    m_bus->Open(true);
}

void StationClaim::SetState(EState state, const QString& reason) {
    m_timer.stop();
    m_show.stop();
    m_state = state;
    if (state == EState::Claiming) m_timer.start(ObjectionTime);
    if (state == EState::Taken) m_timer.start(AskAgain);
    if (state == EState::Offering) m_show.start(ShowEvery);
    m_onState(state, reason);
}

void StationClaim::OnNatsState(INatsBus::EState state, const QString& reason) {
    if (state == INatsBus::EState::Open) return Claim();
    SetState(EState::Connecting, reason);
}

// What NATS does not let us say or hear we cannot offer.
void StationClaim::OnNatsComplaint(const QString& complaint) {
    if (complaint == m_lastComplaint) return;
    m_lastComplaint = complaint;
    m_onState(m_state, QStringLiteral("NATS refuses: %1").arg(complaint));
}

void StationClaim::Claim() {
    SetState(EState::Claiming, QString());
    Say(m_subjects.Claim(), Presence::EWhat::Claims);
}

void StationClaim::Win() {
    SetState(EState::Offering, QString());
    Show();
}

void StationClaim::Yield(const Presence& other) {
    SetState(EState::Taken, QStringLiteral("it is taken by %1").arg(other.ToText()));
}

// Who only asks for it says no more than that: it may yet yield to a third, to whom it would have denied the
// station, and then nobody had it.
void StationClaim::OnClaim(const NatsMessage& message) {
    const std::optional<Presence> other = Presence::Read(message.data);
    if (!other || other->instance == m_self.instance) return;
    const bool isMine =
        m_state == EState::Offering || (m_state == EState::Claiming && m_self.instance < other->instance);
    if (other->what == Presence::EWhat::Claims && isMine)
        return Say(m_subjects.Claim(),
                   m_state == EState::Offering ? Presence::EWhat::Holds : Presence::EWhat::Claims);
    if (m_state == EState::Claiming) Yield(*other);
}

// Two who could not hear each other: after a while they can.
void StationClaim::OnShown(const NatsMessage& message) {
    const std::optional<Presence> other = Presence::Read(message.data);
    if (!other || other->instance == m_self.instance || other->what != Presence::EWhat::Holds) return;
    const bool isTheirs = m_state == EState::Claiming ||
                          (m_state == EState::Offering && std::pair(other->since, other->instance) <
                                                              std::pair(m_self.since, m_self.instance));
    if (isTheirs) return Yield(*other);
    if (m_state == EState::Offering) Show();
}

void StationClaim::Show() {
    if (m_state != EState::Offering) return;
    if (m_describeState) {
        const NatsStation::State state = m_describeState();
        m_self.state = state.text;
        m_self.stateCode = state.code;
    }
    Say(m_subjects.Here(), Presence::EWhat::Holds);
}

void StationClaim::Say(const QByteArray& subject, Presence::EWhat what) {
    m_self.what = what;
    const QByteArray text = m_self.Write();
    m_bus->Publish(subject, {text.constData(), static_cast<std::size_t>(text.size())});
    m_bus->Flush();
}

}  // namespace nats
