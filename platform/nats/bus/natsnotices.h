// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/cnats.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class QObject;

namespace nats {

/// What threads of the client library tell of a connection: complaints of NATS, and what comes under the
/// connection's own inbox, answers and that nobody listened. Bounded; the main thread is woken once for all
/// that is there. Any thread, but for what says otherwise.
class NatsNotices : public std::enable_shared_from_this<NatsNotices> {
  public:
    struct Notice {
        QString complaint;   ///< not empty: the rest does not count
        QByteArray subject;  ///< the rest of it, behind the inbox
        QByteArray data;
        bool isUnheard = false;
        QByteArray status;  ///< of NATS, where it answers itself: "404"
    };

    /// Calls \a onNotices from the event loop of \a receiver's thread when there are some. Main thread.
    NatsNotices(QObject* receiver, std::function<void()> onNotices)
        : m_receiver(receiver), m_onNotices(std::move(onNotices)) {}
    /// From now on nobody is told. Main thread.
    void Leave();
    /// All that there are. Main thread.
    std::vector<Notice> Take();

    /// Hears of complaints of the connection that \a options make. \return what Forget() takes if none comes
    /// about.
    void* Hear(natsOptions* options);
    static void Forget(void* closure);
    /// Listens below \a inbox over \a connection. Main thread.
    natsStatus Listen(natsConnection* connection, const QByteArray& inbox);

  private:
    using Holder = std::shared_ptr<NatsNotices>;

    static void OnError(natsConnection* connection, natsSubscription*, natsStatus status, void* closure);
    static void OnConnectionClosed(natsConnection*, void* closure) { Forget(closure); }
    static void OnMessage(natsConnection*, natsSubscription*, natsMsg* message, void* closure);
    static void OnComplete(void* closure) { Forget(closure); }
    void Add(Notice notice);

    static constexpr std::size_t MaxNotices = 10'000;  ///< beyond, the main thread does not come round

    std::mutex m_mutex;
    QObject* m_receiver;
    std::function<void()> m_onNotices;
    std::vector<Notice> m_notices;
    CnatsPointer<natsSubscription> m_subscription;  ///< of the main thread
    int m_inboxSize = 0;
};

}  // namespace nats
