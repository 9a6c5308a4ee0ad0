// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/reconnector.h>

#include <platform/app/backoff.h>
#include <platform/vtclient/client/clienttrace.h>

#include <utility>

namespace vt {

using std::chrono::milliseconds;

Reconnector::Reconnector(QString server, const VtClientOptions& options,
                         std::unique_ptr<IConnector> connector, IEventLoop& loop)
    : m_server(std::move(server)), m_options(options), m_connector(std::move(connector)), m_loop(loop) {}

void Reconnector::Start() {
    if (m_state == EState::Idle) Connect();
}

// The time is for all of it, the welcome included.
void Reconnector::Connect() {
    m_state = EState::Connecting;
    m_deadline = m_loop.Now() + m_options.connectTimeout;
    m_connector->Connect();
}

void Reconnector::Retry(const QString& reason) {
    if (m_state == EState::Ended) return;
    if (reason != m_lastError) TraceClient(QStringLiteral("No connection to %1: %2").arg(m_server, reason));
    m_lastError = reason;
    m_state = EState::Waiting;
    const milliseconds wait = backoff::WaitAfter(++m_failures, m_options.firstRetry, m_options.longestRetry);
    // Spread, so that the clients of a server that was restarted do not come all at once.
    m_deadline = m_loop.Now() + backoff::Spread(wait, m_loop.Random());
}

void Reconnector::Succeed() {
    m_failures = 0;
    m_lastError.clear();
}

void Reconnector::TryNow() {
    if (m_state == EState::Waiting) Connect();
}

std::optional<std::chrono::microseconds> Reconnector::NextAttempt() const {
    return m_state == EState::Waiting ? std::optional(m_deadline) : std::nullopt;
}

void Reconnector::End() {
    m_connector->Abort();
    m_state = EState::Ended;
}

std::optional<std::chrono::microseconds> Reconnector::Deadline() const {
    if (m_state == EState::Idle || m_state == EState::Ended) return std::nullopt;
    return m_deadline;
}

void Reconnector::OnDeadline() {
    if (m_loop.Now() < m_deadline) return;
    if (m_state == EState::Waiting) {
        Connect();
    } else if (m_state == EState::Connecting) {
        m_connector->Abort();
        Retry(QStringLiteral("no connection within %1 ms").arg(m_options.connectTimeout.count()));
    }
}

}  // namespace vt
