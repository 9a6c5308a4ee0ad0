// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/session.h>

#include <apps/common/safetext.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <algorithm>
#include <chrono>

namespace mctree {

namespace {

/// Refusals that are remembered: more than any command can cause. A server that goes on refusing must not
/// fill the memory.
constexpr std::size_t MostRefusals = 512;

/// The time between two looks at what the client tells no observer: that an attempt to connect was refused,
/// and the latency.
constexpr std::chrono::milliseconds Look(50);

}  // namespace

Session::Session(IVtClient& client) : m_client(*this, &client) {
    values::Refusals::Instance().AddListener(this);
}

Session::~Session() {
    values::Refusals::Instance().RemoveListener(this);
}

Session::EWait Session::WaitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline) {
    QEventLoop* const outer = m_loop;
    EWait result = EWait::Met;
    while (!m_isInterrupted && !condition()) {
        if (deadline.hasExpired()) {
            result = EWait::TimedOut;
            break;
        }
        QEventLoop loop;
        QTimer timer;
        if (!deadline.isForever()) {
            timer.setTimerType(Qt::PreciseTimer);
            QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(deadline.remainingTimeAsDuration());
            timer.start(std::min(left, Look));
        }
        m_loop = &loop;
        loop.exec();
        m_loop = outer;
    }
    return m_isInterrupted ? EWait::Interrupted : result;
}

Outcome Session::Connect(QDeadlineTimer deadline) {
    const EWait wait =
        WaitUntil([this] { return m_client->IsConnected() || m_client->IsRefused(); }, deadline);
    if (m_client->IsConnected()) return Outcome();
    if (wait == EWait::Interrupted) return Interrupted(EExitCode::NoConnection);
    const QString error = m_client->GetLastError();
    return {EExitCode::NoConnection,
            QStringLiteral("no connection to %1:%2: %3")
                .arg(safetext::Escaped(m_client->GetServerAddress()))
                .arg(m_client->GetServerPort())
                .arg(error.isEmpty() ? QStringLiteral("no answer in time") : safetext::Escaped(error))};
}

void Session::Wake() {
    if (m_loop != nullptr) m_loop->quit();
}

void Session::Interrupt() {
    m_isInterrupted = true;
    Wake();
}

bool Session::IsRefused(const values::TreeItem* item, const QString& path, QString* reason) const {
    const auto found = std::find_if(m_refusals.begin(), m_refusals.end(), [&](const Refusal& refusal) {
        return (item != nullptr && refusal.item == item) || refusal.path == path;
    });
    if (found == m_refusals.end()) return false;
    *reason = found->reason;
    return true;
}

Outcome Session::Interrupted(EExitCode code) {
    return {code, QStringLiteral("interrupted")};
}

void Session::Update(Observable*, TChangeCode) {
    Wake();
}

void Session::OnRefused(values::TreeItem* item, const QString& path, const QString& reason) {
    if (m_refusals.size() < MostRefusals) m_refusals.push_back({item, path, reason});
    Wake();
}

}  // namespace mctree
