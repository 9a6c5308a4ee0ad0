// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <utility>

ServerLog::ServerLog(MCSStatus& status, IClock& clock, Sink sink)
    : m_status(status),
      m_clock(clock),
      m_sink(std::move(sink)),
      m_limiter(clock, [this](const QString& text) { Write(text); }) {}

void ServerLog::Write(const QString& text) {
    if (m_sink) m_sink(text);
    const QString time = m_clock.TimeOfDay().toString(QStringLiteral("HH:mm:ss"));
    if (auto* const message = m_status.GetLogMessageValue())
        message->SetValue(time + QLatin1Char(' ') + text, nullptr);
}

QString ServerLog::ByActor(const QString& what) const {
    if (m_actor.isEmpty()) return QString();
    const QString doing = what.isEmpty() ? QString() : what + QLatin1Char(' ');
    return QStringLiteral(", %1by %2").arg(doing, m_actor);
}

void ServerLog::WriteFrom(const QString& source, const QString& text) {
    if (const std::optional<QString> line = m_limiter.Pass(source, text)) Write(*line);
}
