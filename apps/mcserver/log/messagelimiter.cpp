// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/messagelimiter.h>

#include <platform/app/steadyclock.h>

#include <QtCore/QtGlobal>

#include <iterator>
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

std::list<MessageLimiter::Last>::iterator MessageLimiter::Find(const QString& text) {
    const auto found = m_byText.constFind(text);
    if (found != m_byText.constEnd()) return *found;
    if (m_byText.size() >= MaxRemembered) {
        m_byText.remove(m_last.front().text);
        m_last.pop_front();
    }
    m_last.emplace_back();
    m_last.back().text = text;
    return *m_byText.insert(text, std::prev(m_last.end()));
}

std::optional<QString> MessageLimiter::Pass(const QString& text, Time now) {
    const std::list<Last>::iterator last = Find(text);
    if (last->isWritten && now - last->time < RepeatAfter) {
        ++last->leftOut;
        return std::nullopt;
    }
    m_last.splice(m_last.end(), m_last, last);
    last->isWritten = true;
    last->time = now;
    const int leftOut = std::exchange(last->leftOut, 0);
    if (leftOut == 0) return text;
    return QStringLiteral("%1 (%2 times more before)").arg(text, QString::number(leftOut));
}

void MessageLimiter::Install() {
    if (!qEnvironmentVariableIsSet("MCS_TRACE")) g_write = qInstallMessageHandler(WriteLimited);
}
