// SPDX-License-Identifier: Apache-2.0
#include "roundtriproles.h"

#include "statistics.h"

namespace bench {

RoundTripServer::RoundTripServer(const Settings& settings)
    : RoadRole(settings),
      m_end(MakeServerEnd()),
      m_warmUp(settings.Int(QStringLiteral("warmup"))),
      m_count(settings.Int(QStringLiteral("count"))) {
    m_microseconds.reserve(static_cast<std::size_t>(m_count));
    m_end->onReport = [this](int /*client*/, int content) { TakeAnswer(content); };
}

void RoundTripServer::TakeAnswer(int content) {
    const auto now = std::chrono::steady_clock::now();
    if (content != m_sent) Fail(QStringLiteral("answer %1 to question %2").arg(content).arg(m_sent));
    if (m_sent > m_warmUp)
        m_microseconds.push_back(std::chrono::duration<double, std::micro>(now - m_setAt).count());
    if (m_sent == m_warmUp + m_count) return TellTimes();
    ++m_sent;
    m_setAt = std::chrono::steady_clock::now();
    m_end->Set(0, m_sent);
    m_end->Send();
}

void RoundTripServer::TellTimes() const {
    TellResult(Settings()
                   .Set(QStringLiteral("p50"), Quantile(m_microseconds, 0.5))
                   .Set(QStringLiteral("p99"), Quantile(m_microseconds, 0.99)));
}

RoundTripClient::RoundTripClient(const Settings& settings) : RoadRole(settings), m_end(MakeClientEnd(0)) {
    m_end->onReady = [this] {
        TellResult(Settings());  // the server measures
        m_end->Report(0);
    };
    m_end->onChange = [this](int /*index*/, int content) { m_end->Report(content); };
}

}  // namespace bench
