// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/loglimiter.h>

#include <algorithm>
#include <utility>

LogLimiter::LogLimiter(IClock& clock, Tell tell, const Rates& rates)
    : m_clock(clock), m_tell(std::move(tell)), m_rates(rates), m_telling(clock) {}

LogLimiter::Source& LogLimiter::Find(const QString& name) {
    if (!m_sources.contains(name) && m_sources.size() >= MaxSources)
        m_sources.erase(
            std::min_element(m_sources.begin(), m_sources.end(),
                             [](const Source& a, const Source& b) { return a.lastTime < b.lastTime; }));
    return m_sources[name];
}

std::optional<QString> LogLimiter::Pass(const QString& name, const QString& text) {
    const Time now = m_clock.Now();
    Source& source = Find(name);
    const bool isRepeated = text == source.lastText && now - source.lastTime < RepeatAfter;
    const Time fullAt = std::max(now, source.fullAt) + m_rates.lineInterval;
    const Time allFullAt = std::max(now, m_fullAt) + m_rates.totalInterval;
    const bool isTooMuch = fullAt > now + m_rates.burst * m_rates.lineInterval ||
                           allFullAt > now + m_rates.totalBurst * m_rates.totalInterval;
    if (isRepeated || isTooMuch) {
        LeaveOut(source);
        return std::nullopt;
    }
    m_fullAt = allFullAt;
    source.fullAt = fullAt;
    source.lastTime = now;
    source.lastText = text;
    const qint64 leftOut = std::exchange(source.leftOut, 0);
    m_leftOut -= leftOut;
    if (leftOut == 0) return text;
    return QStringLiteral("%1 (%2 lines left out before)").arg(text, QString::number(leftOut));
}

void LogLimiter::LeaveOut(Source& source) {
    ++source.leftOut;
    ++m_leftOut;
    if (!m_telling.IsRunning()) m_telling.Start(TellAfter, [this] { TellLeftOut(); });
}

void LogLimiter::TellLeftOut() {
    m_telling.Stop();
    const qint64 leftOut = std::exchange(m_leftOut, 0);
    if (leftOut == 0) return;
    const auto most =
        std::max_element(m_sources.begin(), m_sources.end(),
                         [](const Source& a, const Source& b) { return a.leftOut < b.leftOut; });
    const QString whose = most.key();
    for (Source& source : m_sources)
        source.leftOut = 0;
    m_tell(QStringLiteral("%1 lines left out, most of them of %2").arg(QString::number(leftOut), whose));
}
