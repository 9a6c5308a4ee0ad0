// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/session.h>

#include <apps/common/safetext.h>
#include <apps/common/serveraddress.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace mctree {

namespace {

/// Refusals that are remembered: more than any command can cause. A server that goes on refusing must not
/// fill the memory.
constexpr std::size_t MostRefusals = 512;

/// The time between two looks at what the client tells no observer: that an attempt to connect was refused,
/// and the latency.
constexpr std::chrono::milliseconds Look(50);
constexpr std::chrono::seconds LongLook(60);

}  // namespace

Session::Session(IVtClient& client, ERetry retry, Tell tell)
    : m_client(*this, &client),
      m_retry(retry),
      m_tell(std::move(tell)),
      m_wasConnected(client.IsConnected()) {
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
    const auto isOver = [this] {
        TellOfTrouble();
        return m_client->IsConnected() || IsPointless();
    };
    // Nobody tells that an attempt failed, so even who waits for ever looks from time to time.
    EWait wait = EWait::TimedOut;
    while (wait == EWait::TimedOut) {
        wait = WaitUntil(isOver, deadline.isForever() ? QDeadlineTimer(LongLook) : deadline);
        if (!deadline.isForever()) break;
    }
    if (m_client->IsConnected()) return Outcome();
    return wait == EWait::Interrupted ? Interrupted(EExitCode::NoConnection) : NoConnection();
}

/// Whether there is no connection, and nothing that may be waited for will make one.
bool Session::IsPointless() const {
    if (m_client->IsConnected()) return false;
    if (m_client->IsRefused()) return true;
    const bool hasFailed = !m_client->GetLastError().isEmpty();
    if (m_retry == ERetry::Never) return hasFailed || m_wasConnected;
    return m_retry == ERetry::AfterLoss && hasFailed && !m_wasConnected;
}

void Session::TellOfTrouble() {
    const bool isTrouble = !m_client->IsConnected() && !m_client->GetLastError().isEmpty();
    if (m_retry != ERetry::Always || m_isTrouble || m_wasConnected || !isTrouble || IsPointless()) return;
    m_isTrouble = true;
    if (m_tell) m_tell(NoConnection().message + QStringLiteral(" (trying on)"));
}

Outcome Session::NoConnection() const {
    const QString error = m_client->GetLastError();
    return {EExitCode::NoConnection, QStringLiteral("no connection to %1: %2")
                                         .arg(Address(), error.isEmpty() ? QStringLiteral("no answer in time")
                                                                         : safetext::Escaped(error))};
}

QString Session::Address() const {
    const QString host = m_client->GetServerAddress();
    const bool isOverNats = host.contains(QLatin1Char('/'));  // a station behind it, as no other host has
    return safetext::Escaped(ServerAddress{host, m_client->GetServerPort(), false, isOverNats}.ToText());
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

void Session::Forget(const values::TreeItem* item, const QString& path) {
    const auto isAbout = [&](const Refusal& refusal) {
        return (item != nullptr && refusal.item == item) || refusal.path == path;
    };
    m_refusals.erase(std::remove_if(m_refusals.begin(), m_refusals.end(), isAbout), m_refusals.end());
}

void Session::Update(Observable*, TChangeCode) {
    m_wasConnected = m_wasConnected || m_client->IsConnected();
    Wake();
}

void Session::OnRefused(values::TreeItem* item, const QString& path, const QString& reason) {
    if (m_refusals.size() < MostRefusals) m_refusals.push_back({item, path, reason});
    Wake();
}

}  // namespace mctree
