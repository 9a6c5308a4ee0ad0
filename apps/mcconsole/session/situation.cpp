// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/situation.h>

#include <apps/mcconsole/session/judgement.h>

#include <platform/widgets/valuetext.h>

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds TickInterval(1000);  // ages are told in seconds
constexpr int MaxPartLength = 40;                        // of a title

/// All stations tick at the same moments, so that a quiet console wakes once for all of them.
std::chrono::milliseconds UntilTick(std::chrono::milliseconds now) {
    return TickInterval - now % TickInterval;
}

bool IsWanted(const Connection& connection) {
    return connection.state != ConsoleSession::EState::Idle;
}

}  // namespace

Situation::Situation(IClock& clock, const QString& basePath, Look look, QObject* parent)
    : QObject(parent),
      m_clock(clock),
      m_basePath(basePath),
      m_look(std::move(look)),
      m_connection(m_look()),
      m_facts([this] { Judge(); }),
      m_timer(clock) {
    m_facts.BindServer(basePath);
    Refresh();
}

void Situation::Refresh() {
    m_connection = m_look();
    m_connection.shownLatency = m_latency.Show(m_connection.latency, m_clock.Now());
    NoteLoss();
    BindMpxOrv();
    Judge();
    if (!IsWanted(m_connection))
        m_timer.Stop();
    else if (!m_timer.IsRunning())
        m_timer.Start(UntilTick(m_clock.Now()), [this] { Tick(); });
}

/// What a server that is frozen said last is as old as its silence when the connection is given up.
void Situation::NoteLoss() {
    const std::chrono::milliseconds now = m_clock.Now();
    if (m_connection.state != ConsoleSession::EState::Lost) {
        m_lostAt.reset();
        m_lostSince = QDateTime();
        m_silentSince.reset();
        if (m_connection.silence) m_silentSince = now - *m_connection.silence;
    } else if (!m_lostAt) {
        m_lostAt = m_silentSince.value_or(now);
        m_lostSince = m_clock.Utc().addMSecs((*m_lostAt - now).count());
    }
}

/// Nobody tells of the round trip, and ages change by themselves.
void Situation::Tick() {
    Refresh();
    Q_EMIT Ticked();
}

/// After a loss the MpxORV that there was is shown, with its age.
void Situation::BindMpxOrv() {
    const bool isKept = m_lostAt && m_connection.mpxOrvPath.isEmpty();
    if (isKept || m_connection.mpxOrvPath == m_mpxOrvPath) return;
    m_mpxOrvPath = m_connection.mpxOrvPath;
    m_facts.BindMpxOrv(m_mpxOrvPath);
}

void Situation::Judge() {
    const std::chrono::milliseconds age = m_lostAt ? m_clock.Now() - *m_lostAt : std::chrono::milliseconds(0);
    m_age = age;
    std::array<SituationItem, std::size(All)> items = {
        judgement::Server(m_facts, m_connection, age), judgement::Device(m_facts),
        judgement::Master(m_facts, m_connection), judgement::Suppression(m_facts),
        judgement::Own(m_facts, m_connection)};
    if (m_lostAt)
        for (auto item = items.begin() + 1; item != items.end(); ++item)
            *item = judgement::Aged(std::move(*item), age);
    const QString title = GetTitle();
    const bool isNews = items != m_items || title != m_title;
    m_items = std::move(items);
    m_title = title;
    if (isNews) Q_EMIT Changed();
    Q_EMIT Looked();
}

bool Situation::IsStale() const {
    return m_connection.state == ConsoleSession::EState::Lost || m_facts.IsStale();
}

QString Situation::Caption(EItem item) {
    switch (item) {
        case EItem::Server:
            return tr("Server");
        case EItem::Device:
            return tr("Device");
        case EItem::Master:
            return tr("Master");
        case EItem::Suppression:
            return tr("Suppression");
        case EItem::Own:
            return tr("My MpxORV");
    }
    Q_UNREACHABLE();
}

ESeverity Situation::GetWorst() const {
    const auto worst =
        std::max_element(m_items.begin(), m_items.end(),
                         [](const auto& one, const auto& other) { return one.severity < other.severity; });
    return worst->severity;
}

QString Situation::GetTitle() const {
    if (!IsWanted(m_connection)) return QString();
    QStringList parts;
    if (!m_mpxOrvPath.isEmpty()) parts += valuetext::Shortened(m_connection.mpxOrvName, MaxPartLength);
    if (const std::optional<double> hz = m_facts.TunedFrequency()) parts += judgement::Frequency(*hz);
    const QString server = judgement::ServerName(m_facts, m_connection);
    switch (m_connection.state) {
        case ConsoleSession::EState::Connecting:
            parts += tr("connecting to %1").arg(server);
            break;
        case ConsoleSession::EState::Lost:
            parts += tr("%1 is lost").arg(server);
            break;
        case ConsoleSession::EState::Connected:
        case ConsoleSession::EState::Idle:
            parts += server;
            break;
    }
    return parts.join(QStringLiteral(" \u00b7 "));
}

const std::vector<double>* Situation::GetUnsupervised() const {
    return m_connection.state == ConsoleSession::EState::Connected
               ? m_facts.List(ServerFacts::EFact::UnsupervisedFrequencies)
               : nullptr;
}
