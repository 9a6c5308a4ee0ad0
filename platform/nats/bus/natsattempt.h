// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/cnats.h>
#include <platform/nats/bus/natsnotices.h>
#include <platform/nats/bus/natssocket.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QString>

#include <functional>
#include <memory>
#include <mutex>

class QObject;

namespace nats {

/// Connects to the first server of several that can be reached, in a thread of its own: looking up names and
/// greeting take as long as they take.
class NatsAttempt : public std::enable_shared_from_this<NatsAttempt> {
  public:
    struct Outcome {
        // In this order: a connection tells its socket of its end.
        std::shared_ptr<NatsSocket> socket;
        CnatsPointer<natsConnection> connection;  ///< null: none of the servers
        HostPort server;
        QString problem;
    };
    using Handler = std::function<void(Outcome& outcome)>;

    /// Starts one; \a onDone is called from the event loop of \a receiver's thread. Main thread.
    static std::shared_ptr<NatsAttempt> Start(const NatsOptions& options,
                                              std::shared_ptr<NatsNotices> notices, QObject* receiver,
                                              Handler onDone);
    /// Nobody is told. Main thread.
    void Abandon();

    NatsAttempt(const NatsOptions& options, std::shared_ptr<NatsNotices> notices, QObject* receiver,
                Handler onDone);

  private:
    void Run();
    bool IsAbandoned();
    void TryServer(const HostPort& server, Outcome& outcome);

    const NatsOptions m_options;
    const std::shared_ptr<NatsNotices> m_notices;
    const Handler m_onDone;
    std::mutex m_mutex;
    QObject* m_receiver;  ///< null once abandoned
};

}  // namespace nats
