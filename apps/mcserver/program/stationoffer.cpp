// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/stationoffer.h>

#include <apps/mcserver/log/serverlog.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/nats/natsbusmaker.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

using EState = nats::NatsStation::EState;

namespace {

QString StatusText(QLatin1String key) {
    const QString path = mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), key);
    const auto* const value =
        dynamic_cast<const values::Value<QString>*>(values::Tree::Instance()->FindItem(path));
    return value != nullptr ? value->GetValue() : QString();
}

nats::NatsStation::State DeviceState() {
    return {StatusText(mcskeys::ConnectionState), StatusText(serverkeys::ConnectionStateCode)};
}

}  // namespace

StationOffer::StationOffer(VtServer& server, ServerLog& log) : m_server(server), m_log(log) {}

StationOffer::~StationOffer() = default;

bool StationOffer::Start(const nats::NatsOptions& options, const QString& station, QString* error) {
    m_name = station;
    std::shared_ptr<nats::INatsBus> bus = nats::MakeBus(options, error);
    if (bus == nullptr) return false;
    m_station = std::make_unique<nats::NatsStation>(
        m_server, std::move(bus), station,
        nats::NatsStation::Description{options.name, QCoreApplication::applicationVersion(), DeviceState},
        [this](EState state, const QString& reason) { OnState(state, reason); });
    m_station->Start();
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(Patience);
    const QDeadlineTimer deadline(Patience);
    while (IsUndecided() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (m_state == EState::Taken) {
        *error = QStringLiteral("the station '%1': %2").arg(station, m_problem);
        m_station.reset();
        return false;
    }
    m_isLogging = true;
    Tell();
    m_figures = std::make_unique<StationFigures>(*m_station, m_name);
    return true;
}

bool StationOffer::IsUndecided() const {
    return m_state == EState::Claiming || (m_state == EState::Connecting && m_problem.isEmpty());
}

void StationOffer::Stop() {
    m_figures.reset();
    m_station.reset();
}

void StationOffer::OnState(EState state, const QString& reason) {
    m_state = state;
    if (state == EState::Claiming) return;
    m_problem = reason;
    if (m_isLogging) Tell();
    if (m_figures) m_figures->Tell();
}

// What goes on failing for the same reason is told once.
void StationOffer::Tell() {
    if (m_problem == m_told) return;
    m_told = m_problem;
    if (m_problem.isEmpty())
        m_log.Write({ECode::StationOffered, {m_name}});
    else
        m_log.Write({ECode::StationNotOffered, {m_name, m_problem}});
}
