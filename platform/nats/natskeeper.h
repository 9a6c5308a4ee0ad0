// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace nats {

/// A stream of JetStream: keeps for a while what is published under some subjects, the last message of each,
/// and gives it to who asks. Whoever wants to find each of several messages again publishes each under a
/// subject of its own, one that ends with its number. Main thread.
class MCS_NATS_EXPORT NatsKeeper {
  public:
    using Done = std::function<void(const QString& problem)>;
    using Found = std::function<void(const std::optional<QByteArray>& data)>;

    /// What may be kept.
    struct Limits {
        std::chrono::seconds age{600};
        qint64 bytes = 256 << 20;  ///< beyond, the oldest goes
        bool isOnDisk = true;
    };

    /// \a stream is its name: letters, digits, "-" and "_".
    NatsKeeper(std::shared_ptr<INatsBus> bus, QByteArray stream);

    /// Has everything kept that is published under \a subjects, which may hold "*" and ">", from now on, by
    /// three servers of a cluster that has so many, else by one; a stream that is there gets these limits. \a
    /// done is told why that failed, in one line, or nothing.
    void Keep(const QByteArray& subjects, const Limits& limits, const Done& done);
    /// Looks for what was published last under \a subject. \a found is called from the event loop, with
    /// nothing if it is not kept any more, or nobody answers in time.
    void Get(const QByteArray& subject, Found found);

  private:
    static QString ProblemOf(const NatsAnswer& answer);
    void KeepBy(int replicas, const QByteArray& subjects, const Limits& limits,
                const INatsBus::AnswerHandler& done);

    const std::shared_ptr<INatsBus> m_bus;
    const QByteArray m_stream;
};

}  // namespace nats
