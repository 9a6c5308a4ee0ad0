// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stations/stationfinder.h>

#include <utility>

StationFinder::StationFinder(MakeBus makeBus, QObject* parent)
    : QObject(parent), m_makeBus(std::move(makeBus)) {}

StationFinder::~StationFinder() {
    Stop();
}

void StationFinder::Look(const nats::NatsOptions& options) {
    Stop();
    QString problem;
    m_bus = m_makeBus(options, &problem);
    if (m_bus == nullptr) return Tell(EState::Impossible, problem);
    m_list = std::make_unique<nats::StationList>(
        m_bus, [this](const nats::StationInfo& station) { Q_EMIT Heard(station); });
    m_bus->AddListener(this);
    Tell(EState::Connecting, QString());
    m_bus->Open(true);
}

void StationFinder::Stop() {
    m_list.reset();
    if (m_bus != nullptr) {
        m_bus->RemoveListener(this);
        m_bus->Close();
        m_bus.reset();
    }
    m_state = EState::Idle;
    m_problem.clear();
}

void StationFinder::OnNatsState(nats::INatsBus::EState state, const QString& reason) {
    if (state != nats::INatsBus::EState::Open) return Tell(EState::Connecting, reason);
    m_list->Ask();
    Tell(EState::Open, QString());
}

void StationFinder::OnNatsComplaint(const QString& complaint) {
    Tell(m_state, QStringLiteral("NATS refuses: %1").arg(complaint));
}

void StationFinder::Tell(EState state, const QString& problem) {
    m_state = state;
    m_problem = problem;
    Q_EMIT Changed();
}
