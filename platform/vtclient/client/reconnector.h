// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>
#include <platform/vtclient/iconnector.h>
#include <platform/vtclient/vtclientcenter.h>

#include <QtCore/QString>

#include <chrono>
#include <memory>
#include <optional>

namespace vt {

/// Decides when a client tries to reach its server: at once, and again after each failure and each loss, with
/// pauses that grow and are not the same for all clients.
class Reconnector {
  public:
    Reconnector(QString server, const VtClientOptions& options, std::unique_ptr<IConnector> connector,
                IEventLoop& loop);

    void SetListener(IConnector::IListener* listener) { m_connector->SetListener(listener); }
    /// Starts the first attempt, if none was made yet.
    void Start();
    /// There is no connection, or none any more; \a reason is one line. The next attempt follows after a
    /// pause.
    void Retry(const QString& reason);
    /// There is a connection which the server has welcomed.
    void Succeed();
    /// Makes the next attempt now, if it is waited for.
    void TryNow();
    /// When the next attempt is made; none unless it is waited for.
    std::optional<std::chrono::microseconds> NextAttempt() const;
    /// No attempt any more.
    void End();

    /// When OnDeadline() is due; none while there is nothing to be waited for.
    std::optional<std::chrono::microseconds> Deadline() const;
    void OnDeadline();
    /// Why there is no connection; empty before the first attempt has failed, and after one succeeded.
    const QString& LastError() const { return m_lastError; }

  private:
    enum class EState { Idle, Connecting, Waiting, Ended };

    void Connect();

    QString m_server;
    const VtClientOptions& m_options;
    std::unique_ptr<IConnector> m_connector;
    IEventLoop& m_loop;
    EState m_state = EState::Idle;
    QString m_lastError;
    int m_failures = 0;
    std::chrono::microseconds m_deadline{};  ///< when connecting ends, or waiting
};

}  // namespace vt
