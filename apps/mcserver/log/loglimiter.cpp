// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/loglimiter.h>

#include <algorithm>

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
    const Time fullAt = std::max(now, source.fullAt) + LineInterval;
    const Time allFullAt = std::max(now, m_fullAt) + TotalInterval;
    const bool isTooMuch =
        fullAt > now + Burst * LineInterval || allFullAt > now + TotalBurst * TotalInterval;
    if (isRepeated || isTooMuch) {
        ++source.leftOut;
        return std::nullopt;
    }
    m_fullAt = allFullAt;
    source.fullAt = fullAt;
    source.lastTime = now;
    source.lastText = text;
    const int leftOut = source.leftOut;
    source.leftOut = 0;
    if (leftOut == 0) return text;
    return QStringLiteral("%1 (%2 lines left out before)").arg(text, QString::number(leftOut));
}
