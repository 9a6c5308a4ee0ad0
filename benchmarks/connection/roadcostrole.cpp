// SPDX-License-Identifier: Apache-2.0
#include "roadcostrole.h"

#include <algorithm>

namespace bench {

RoadCostServer::RoadCostServer(const Settings& settings)
    : RoadRole(settings),
      m_end(MakeServerEnd()),
      m_heard(static_cast<std::size_t>(GetSetup().clients), -1),
      m_reportEvery(settings.Int(QStringLiteral("report"))),
      m_interval(settings.Int(QStringLiteral("interval"))),
      m_pacedTurns(settings.Int(QStringLiteral("paced"))),
      m_floodTurns(settings.Int(QStringLiteral("flood"))),
      m_farthestAhead(settings.Int(QStringLiteral("ahead"))) {
    m_end->onReport = [this](int client, int number) { TakeReport(client, number); };
    m_nextTurn.setTimerType(Qt::PreciseTimer);
    connect(&m_nextTurn, &QTimer::timeout, this, &RoadCostServer::OnTurn);
}

void RoadCostServer::TakeReport(int client, int number) {
    int& heard = m_heard.at(static_cast<std::size_t>(client));
    heard = std::max(heard, number);
    const bool areAllThere = *std::min_element(m_heard.begin(), m_heard.end()) >= 0;
    if (m_stage == EStage::Gathering && areAllThere) OnAllThere();
    if (m_stage == EStage::Flooding && !m_nextTurn.isActive() && !IsFarAhead()) m_nextTurn.start(0);
    GoOnIfHeard();
}

// What clients cost that are merely there: their pings, and looking after their sessions.
void RoadCostServer::OnAllThere() {
    m_stage = EStage::Resting;
    m_watch.Start();
    QTimer::singleShot(GetSettings().Int(QStringLiteral("rest")), this, [this] {
        m_loadAtRest = m_watch.BusySeconds() / m_watch.Seconds();
        StartTurns(EStage::Pacing, m_pacedTurns, m_interval);
    });
}

void RoadCostServer::StartTurns(EStage stage, int turns, int interval) {
    m_stage = stage;
    m_turn = 0;
    m_turns = turns;
    m_numberAtStart = static_cast<int>(m_end->Published());
    m_watch.Start();
    m_nextTurn.start(interval);
}

bool RoadCostServer::IsFarAhead() const {
    const int slowest = *std::min_element(m_heard.begin(), m_heard.end());
    return m_numberAtStart + m_turn - slowest > m_farthestAhead;
}

void RoadCostServer::OnTurn() {
    if (m_turn == m_turns) return EndTurns();
    if (m_stage == EStage::Flooding && IsFarAhead()) return m_nextTurn.stop();
    for (int index = 0; index < GetSetup().values; ++index)
        m_end->Set(index, m_content++);
    m_end->Send();
    ++m_turn;
}

void RoadCostServer::EndTurns() {
    m_nextTurn.stop();
    const double changes = static_cast<double>(m_turns) * GetSetup().values;
    const Cost cost = {changes, m_watch.Seconds(), m_watch.BusySeconds()};
    (m_stage == EStage::Pacing ? m_paced : m_flood) = cost;
    m_stage = m_stage == EStage::Pacing ? EStage::Draining : EStage::Ending;
    GoOnIfHeard();
}

bool RoadCostServer::IsAllHeard() const {
    const int due = static_cast<int>(m_end->Published()) / m_reportEvery * m_reportEvery;
    return *std::min_element(m_heard.begin(), m_heard.end()) >= due;
}

void RoadCostServer::GoOnIfHeard() {
    if (m_stage == EStage::Draining && IsAllHeard()) StartTurns(EStage::Flooding, m_floodTurns, 0);
    if (m_stage == EStage::Ending && IsAllHeard()) Tell();
}

void RoadCostServer::Tell() {
    m_stage = EStage::Over;
    TellResult(Settings()
                   .Set(QStringLiteral("rest"), m_loadAtRest)
                   .Set(QStringLiteral("pace"), m_paced.changes / m_paced.seconds)
                   .Set(QStringLiteral("pacedcpu"), m_paced.PerMillion(0.0))
                   .Set(QStringLiteral("pacednet"), m_paced.PerMillion(m_loadAtRest))
                   .Set(QStringLiteral("rate"), m_flood.changes / m_flood.seconds)
                   .Set(QStringLiteral("floodcpu"), m_flood.PerMillion(0.0))
                   .Set(QStringLiteral("floodnet"), m_flood.PerMillion(m_loadAtRest)));
}

}  // namespace bench
