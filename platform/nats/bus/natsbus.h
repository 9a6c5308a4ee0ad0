// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/natsattempt.h>
#include <platform/nats/bus/natsnotices.h>
#include <platform/nats/bus/spentmessages.h>
#include <platform/nats/inatsbus.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <map>
#include <memory>
#include <vector>

namespace nats {

/// A connection by the client library, whose socket our event loop serves: so the main thread reads and
/// writes it, without a thread in between, and what it does not read waits at NATS. Only connecting has a
/// thread, and the few notices that come for nobody's subscription.
class NatsBus final : public QObject, public INatsBus {
  public:
    explicit NatsBus(NatsOptions options);
    ~NatsBus() override;

    void Open(bool isPersistent) override;
    void Persist() override { m_isPersistent = true; }
    void Close() override;
    EState State() const override { return m_state; }
    QString Problem() const override { return m_problem; }
    void AddListener(IListener* listener) override;
    void RemoveListener(IListener* listener) override;
    bool Publish(const QByteArray& subject, std::string_view head, std::string_view body,
                 quint64 watch) override;
    void Flush() override;
    qint64 Unsent() const override;
    qint64 MaxPayload() const override { return m_maxPayload; }
    int Subscribe(const QByteArray& subject, Handler handler) override;
    void Unsubscribe(int subscription) override;
    void Request(const QByteArray& subject, const QByteArray& data, Time timeout,
                 AnswerHandler handler) override;
    bool IsLoopback() const override { return m_isLoopback; }
    bool IsEncrypted() const override { return m_isEncrypted; }
    QString ServerAddress() const override { return m_server.ToText(); }

  private:
    struct Subscription {
        int number;
        QByteArray subject;
        std::shared_ptr<Handler> handler;  ///< null once it has ended; shared with the call under way
        CnatsPointer<natsSubscription> made;
    };
    struct Question {
        AnswerHandler handler;
        std::chrono::milliseconds until;
    };

    void Connect();
    void OnAttempt(NatsAttempt::Outcome& outcome);
    void Start(NatsAttempt::Outcome& outcome);
    bool IsOpen() const { return m_connection != nullptr; }
    void Listen(Subscription& subscription);
    void OnReadable();
    void ReadOn();
    void LeaveTogether();
    bool Give(std::size_t index, const QDeadlineTimer& turn);
    void OnWritable();
    void WriteSome();
    void LookForLoss();
    void IgnoreSocket();
    void Lose(const QString& reason);
    void TryOthersFirst();
    void LetGo();
    void SetState(EState state, const QString& problem);
    void OnNotices();
    void OnNotice(const NatsNotices::Notice& notice);
    void OnTick();
    void AnswerLate();
    void WaitForAnswers(Time now);
    bool PublishTo(const QByteArray& subject, const char* reply, std::string_view data);
    template <class Call>
    void Tell(const Call& call);

    NatsOptions m_options;
    QByteArray m_inbox;
    EState m_state = EState::Closed;
    bool m_isPersistent = false;
    QString m_problem;
    int m_failures = 0;
    std::vector<IListener*> m_listeners;  ///< null: has gone
    std::shared_ptr<NatsAttempt> m_attempt;
    std::shared_ptr<NatsNotices> m_notices;
    std::shared_ptr<NatsSocket> m_socket;
    CnatsPointer<natsConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_reader, m_writer;
    std::vector<Subscription> m_subscriptions;
    int m_lastSubscription = 0;
    std::map<quint64, Question> m_questions;
    quint64 m_lastQuestion = 0;
    SpentMessages m_spent;
    QByteArray m_whole;  ///< a message in two parts, put together
    HostPort m_server;
    qint64 m_maxPayload = 0;
    bool m_isLoopback = false;
    bool m_isEncrypted = false;
    bool m_hasHeard = false;  ///< since the last tick
    int m_silentTicks = 0;
    bool m_isReading = false;
    QDeadlineTimer m_leaveAt;  ///< what is published while reading
    QTimer m_again;            ///< while reading pauses
    QTimer m_flush;            ///< something was published
    QTimer m_loss;             ///< the connection is gone, and that has to be told
    QTimer m_retry;
    QTimer m_late;  ///< somebody has waited long enough for an answer
    QTimer m_tick;
};

}  // namespace nats
