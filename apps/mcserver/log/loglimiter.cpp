// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/loglimiter.h>

#include <apps/common/codedtext.h>

#include <algorithm>
#include <iterator>
#include <utility>

LogLimiter::LogLimiter(IClock& clock, Tell tell, const Rates& rates)
    : m_clock(clock), m_tell(std::move(tell)), m_rates(rates), m_telling(clock) {}

// Strangers come under as many names as they like, so nothing here looks at all of them.
LogLimiter::Sources::iterator LogLimiter::Find(const QString& name) {
    const auto found = m_byName.constFind(name);
    if (found != m_byName.constEnd()) return *found;
    if (m_byName.size() >= MaxSources) ForgetQuietest();
    m_silent.emplace_back();
    const auto source = std::prev(m_silent.end());
    source->name = name;
    m_byName.insert(name, source);
    return source;
}

void LogLimiter::ForgetQuietest() {
    Sources& sources = m_silent.empty() ? m_heard : m_silent;
    m_byName.remove(sources.front().name);
    sources.pop_front();
}

std::optional<QString> LogLimiter::Pass(const QString& source, const QString& text) {
    const std::optional<LeftOut> leftOut = Admit(source, text);
    if (!leftOut) return std::nullopt;
    if (leftOut->lines == 0) return text;
    return CodedText(ECode::LinesLeftOut, {text, CodedText::Number(leftOut->lines)}).ToEnglish();
}

std::optional<LogLimiter::LeftOut> LogLimiter::Admit(const QString& name, const QString& text, ELine line) {
    const Time now = m_clock.Now();
    const Sources::iterator found = Find(name);
    Source& source = *found;
    const bool isRepeated = text == source.lastText && now - source.lastTime < RepeatAfter;
    const Time fullAt = std::max(now, source.fullAt) + m_rates.lineInterval;
    const Time allFullAt = std::max(now, m_fullAt) + m_rates.totalInterval;
    const bool isTooMuch = fullAt > now + m_rates.burst * m_rates.lineInterval ||
                           allFullAt > now + m_rates.totalBurst * m_rates.totalInterval;
    if (isRepeated || isTooMuch) {
        LeaveOut(source, line);
        return std::nullopt;
    }
    m_heard.splice(m_heard.end(), std::exchange(source.isHeard, true) ? m_heard : m_silent, found);
    m_fullAt = allFullAt;
    source.fullAt = fullAt;
    source.lastTime = now;
    source.lastText = text;
    const LeftOut leftOut = std::exchange(source.leftOut, {});
    m_leftOut.lines -= leftOut.lines;
    if (m_leftOut.lines == 0) m_leftOut.hasNews = false;
    return leftOut;
}

void LogLimiter::LeaveOut(Source& source, ELine line) {
    for (LeftOut* const leftOut : {&source.leftOut, &m_leftOut}) {
        ++leftOut->lines;
        leftOut->hasNews |= line == ELine::News;
    }
    if (!m_telling.IsRunning()) m_telling.Start(TellAfter, [this] { TellLeftOut(); });
}

void LogLimiter::TellLeftOut() {
    m_telling.Stop();
    const LeftOut leftOut = std::exchange(m_leftOut, {});
    if (leftOut.lines == 0) return;
    QString whose;
    qint64 most = 0;
    for (const Sources::iterator& source : qAsConst(m_byName)) {
        const qint64 own = std::exchange(source->leftOut, {}).lines;
        if (own < most) continue;
        most = own;
        whose = source->name;
    }
    m_tell(leftOut, whose);
}

QString LogLimiter::LeftOutText(qint64 leftOut, const QString& whose) {
    return CodedText(ECode::LeftOut, {CodedText::Number(leftOut), whose}).ToEnglish();
}
