// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/messagelimiter.h>

#include <platform/app/steadyclock.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

QtMessageHandler g_write = nullptr;

void WriteLimited(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    // Never destroyed: messages come to the very end.
    static auto& mutex = *new std::mutex;
    static auto& limiter = *new MessageLimiter;
    std::optional<QString> line;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        line = limiter.Pass(text, steadyclock::Now<MessageLimiter::Time>());
    }
    if (line) g_write(type, context, *line);
}

}  // namespace

std::optional<QString> MessageLimiter::Pass(const QString& text, Time now) {
    const auto found = m_last.find(text);
    if (found != m_last.end() && now - found->time < RepeatAfter) {
        ++found->leftOut;
        return std::nullopt;
    }
    if (found == m_last.end() && m_last.size() >= MaxRemembered)
        m_last.erase(std::min_element(m_last.begin(), m_last.end(),
                                      [](const Last& a, const Last& b) { return a.time < b.time; }));
    Last& last = m_last[text];
    last.time = now;
    const int leftOut = std::exchange(last.leftOut, 0);
    if (leftOut == 0) return text;
    return QStringLiteral("%1 (%2 times more before)").arg(text, QString::number(leftOut));
}

void MessageLimiter::Install() {
    if (!qEnvironmentVariableIsSet("MCS_TRACE")) g_write = qInstallMessageHandler(WriteLimited);
}
