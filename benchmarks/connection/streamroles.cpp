// SPDX-License-Identifier: Apache-2.0
#include "streamroles.h"

#include <algorithm>
#include <utility>

namespace bench {

namespace {

constexpr int UsualReports = 5000;  // changes from one to the next

}  // namespace

StreamServer::StreamServer(const Settings& settings)
    : RoadRole(settings),
      m_end(MakeServerEnd()),
      m_received(static_cast<std::size_t>(GetSetup().clients), -1),
      m_farthestAhead(settings.Int(QStringLiteral("ahead"))),
      m_warmUp(settings.Int(QStringLiteral("warmup"))),
      m_total(settings.Int(QStringLiteral("total"))),
      m_rest(settings.Int(QStringLiteral("rest"), 0)),
      m_isInSteps(settings.Has(QStringLiteral("steps"))) {
    m_end->onReport = [this](int client, int content) { TakeReport(client, content); };
    connect(&m_nextTurn, &QTimer::timeout, this, &StreamServer::SetAll);
}

void StreamServer::TakeReport(int client, int content) {
    int& received = m_received.at(static_cast<std::size_t>(client));
    const bool wasSlowest = received == m_slowest;
    received = content;
    if (content == m_total && m_busyUntilFirst == 0.0)
        m_busyUntilFirst = m_watch.BusySeconds() - m_busyAtRest * m_watch.Seconds();
    if (!wasSlowest) return;
    const int slowest = *std::min_element(m_received.begin(), m_received.end());
    if (slowest == m_slowest) return;
    m_slowest = slowest;
    if (slowest == 0) return Rest();
    if (slowest == m_total) return TellRate();
    if (slowest == m_warmUp) return StartStage(m_total);
    if (m_sent < m_stageEnd && !m_nextTurn.isActive()) m_nextTurn.start(0);
}

// What clients cost that are merely there.
void StreamServer::Rest() {
    m_watch.Start();
    QTimer::singleShot(m_rest, this, [this] {
        if (m_rest.count() != 0) m_busyAtRest = m_watch.BusySeconds() / m_watch.Seconds();
        StartStage(m_warmUp);
    });
}

void StreamServer::StartStage(int changes) {
    m_stageEnd = changes;
    m_watch.Start();
    m_nextTurn.start(0);
}

void StreamServer::SetAll() {
    const int values = GetSetup().values;
    if (std::exchange(m_isStepUnderWay, false)) {
        TellStep();
        WaitForGo();
    }
    const bool isFarAhead = !m_isInSteps && m_sent + values - m_slowest > m_farthestAhead;
    if (m_sent == m_stageEnd || isFarAhead) return m_nextTurn.stop();
    for (int index = 0; index < values; ++index)
        m_end->Set(index, m_sent++);
    m_end->Send();
    m_isStepUnderWay = m_isInSteps;
}

void StreamServer::TellRate() const {
    const double deliveries = static_cast<double>(m_total - m_warmUp) * GetSetup().clients;
    TellResult(Settings()
                   .Set(QStringLiteral("rate"), deliveries / m_watch.Seconds())
                   .Set(QStringLiteral("cpu"), m_watch.BusySeconds() / deliveries * 1e6)
                   .Set(QStringLiteral("changecpu"), m_busyUntilFirst / (m_total - m_warmUp) * 1e6));
}

StreamClient::StreamClient(const Settings& settings)
    : RoadRole(settings),
      m_followers(static_cast<std::size_t>(settings.Int(QStringLiteral("count")))),
      m_warmUp(settings.Int(QStringLiteral("warmup"))),
      m_total(settings.Int(QStringLiteral("total"))),
      m_reportEvery(settings.Int(QStringLiteral("report"), UsualReports)),
      m_isInSteps(settings.Has(QStringLiteral("steps"))) {}

// One after the other: how a server takes a crowd that comes at once is not measured here.
void StreamClient::OpenNext() {
    if (m_opened == m_followers.size()) return;
    Follower& follower = m_followers[m_opened];
    follower.end = MakeClientEnd(GetSettings().Int(QStringLiteral("first")) + static_cast<int>(m_opened));
    ++m_opened;
    follower.end->onReady = [this, &follower] {
        follower.end->Report(0);
        OpenNext();
    };
    follower.end->onChange = [this, &follower](int index, int content) {
        TakeChange(follower, index, content);
    };
    follower.end->Open();
}

void StreamClient::TakeChange(Follower& follower, int index, int content) {
    if (content != follower.received || index != content % GetSetup().values)
        Fail(QStringLiteral("change %1 of value %2 where %3 was due")
                 .arg(content)
                 .arg(index)
                 .arg(follower.received));
    ++follower.received;
    if (m_isInSteps && follower.received % GetSetup().values == 0) EndStep();
    const bool isStageEnd = follower.received == m_warmUp || follower.received == m_total;
    if (isStageEnd) EndStage(follower.received);
    const bool isReportDue = follower.received % m_reportEvery == 0 && !m_isInSteps;
    if (isStageEnd || isReportDue) follower.end->Report(follower.received);
}

void StreamClient::EndStep() {
    if (++m_atStepEnd < static_cast<int>(m_followers.size())) return;
    m_atStepEnd = 0;
    QTimer::singleShot(0, this, [] { TellStep(); });
}

void StreamClient::EndStage(int received) {
    if (++m_atStageEnd < static_cast<int>(m_followers.size())) return;
    m_atStageEnd = 0;
    const double deliveries =
        static_cast<double>(m_total - m_warmUp) * static_cast<double>(m_followers.size());
    if (received == m_total)
        TellResult(Settings().Set(QStringLiteral("cpu"), m_watch.BusySeconds() / deliveries * 1e6));
    m_watch.Start();
}

}  // namespace bench
