// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <functional>
#include <string_view>

namespace nats {

/// A message as it came. Valid during the call.
struct NatsMessage {
    std::string_view subject;
    std::string_view data;
    std::string_view reply;  ///< the subject under which an answer is wanted; empty: none
};

/// What became of a request.
struct NatsAnswer {
    QString problem;  ///< why there is no answer, in one line; empty if there is one
    QByteArray data;
    bool isUnheard = false;  ///< nobody listens to such questions
};

/// One connection to NATS. Main thread: everything is told from the event loop, never from within a call to
/// this, and nothing here waits. Reading yields to others after 1 ms; who does not read lets NATS wait.
///
/// Subjects are those of NATS: parts of letters, digits, "-", "_", "$" with "." between; in a subscription
/// also "*" for one part and ">" for all that follow.
class MCS_NATS_EXPORT INatsBus {
  public:
    enum class EState {
        Closed,      ///< not asked to connect, or not any more
        Connecting,  ///< or waiting to try again
        Open
    };
    using Handler = std::function<void(const NatsMessage& message)>;
    using AnswerHandler = std::function<void(const NatsAnswer& answer)>;
    using Time = std::chrono::milliseconds;

    /// Hears of the connection. It may add and remove listeners, and let go of the bus.
    class MCS_NATS_EXPORT IListener {
      public:
        virtual ~IListener();
        /// The state is another one, or an attempt to connect has failed. \a reason is why it is not open, in
        /// one line. Messages that were under way when the connection was lost may be lost.
        virtual void OnNatsState(EState state, const QString& reason) = 0;
        /// NATS refused something, or gave up something: no permission for a subject, a consumer too slow.
        virtual void OnNatsComplaint(const QString& /*complaint*/) {}
        /// Nobody listened to what was published with \a watch.
        virtual void OnNatsUnheard(quint64 /*watch*/) {}
        /// What was published has left, so that there is room for more.
        virtual void OnNatsWritable() {}
    };

    /// Above this publishers had better wait for OnNatsWritable(). In bytes.
    static constexpr qint64 EnoughUnsent = 128 << 10;

    virtual ~INatsBus();

    /// Starts to connect. With \a isPersistent it tries again whenever that fails and after every loss, until
    /// it is closed; without, the first failure or loss closes it.
    virtual void Open(bool isPersistent) = 0;
    /// From now on it tries again after every loss.
    virtual void Persist() = 0;
    /// Sends what the system takes at once, and closes. The listeners are not told.
    virtual void Close() = 0;
    virtual EState State() const = 0;  ///< As the listeners were told last.
    /// Why it is not open, in one line; empty while it is.
    virtual QString Problem() const = 0;
    virtual void AddListener(IListener* listener) = 0;     ///< Not owned; once each.
    virtual void RemoveListener(IListener* listener) = 0;  ///< May be called while listeners are told.

    /// Publishes \a head and \a body as one message. It leaves with Flush(), or when the event loop comes
    /// round. With a \a watch other than 0 the listeners hear of it if nobody listened.
    /// \return false, and nothing is published, while it is not open or for a message beyond MaxPayload().
    virtual bool Publish(const QByteArray& subject, std::string_view head, std::string_view body = {},
                         quint64 watch = 0) = 0;
    virtual void Flush() = 0;  ///< Sends what was published, as far as the system takes it.
    /// Bytes that were published and that the system has not taken yet.
    virtual qint64 Unsent() const = 0;
    /// How many bytes a message may have; 0 while not open.
    virtual qint64 MaxPayload() const = 0;

    /// Listens to \a subject from now on, also over later connections. Messages of one subscription come in
    /// order, those of several in any. \return its number, not 0.
    virtual int Subscribe(const QByteArray& subject, Handler handler) = 0;
    virtual void Unsubscribe(int subscription) = 0;  ///< at once; an unknown number does nothing
    /// Publishes a question; \a handler is called once, from the event loop, with the first answer or with
    /// the reason why there is none within \a timeout. Not called if the bus goes.
    virtual void Request(const QByteArray& subject, const QByteArray& data, Time timeout,
                         AnswerHandler handler) = 0;

    /// Whether the server of NATS that it is connected to is on this machine, and speaks TLS with us.
    virtual bool IsLoopback() const = 0;
    virtual bool IsEncrypted() const = 0;       ///< Whether it is encrypted with TLS.
    virtual QString ServerAddress() const = 0;  ///< of that server, for people
};

}  // namespace nats
