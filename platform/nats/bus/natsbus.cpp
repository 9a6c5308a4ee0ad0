// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/natsbus.h>

#include <platform/app/backoff.h>
#include <platform/app/steadyclock.h>
#include <platform/nats/bus/natsthreads.h>
#include <platform/nats/bus/unread.h>

#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>
#include <QtNetwork/QHostAddress>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace nats {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds TurnTime(1);                                           // then others have their turn
constexpr std::chrono::nanoseconds Company = std::chrono::microseconds(250);  // for which words wait
constexpr int TicksToAsk = 5;    // of silence; then it asks for a word
constexpr int TicksToLose = 15;  // the other end of the line is gone
constexpr int RandomWords = 4;

QByteArray MakeInbox(const NatsOptions& options) {
    std::array<quint32, RandomWords> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    const QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof(words));
    return "_INBOX." + options.Who() + '.' +
           bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

bool IsThisMachine(const QString& host) {
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

}  // namespace

NatsBus::NatsBus(NatsOptions options) : m_options(std::move(options)), m_inbox(MakeInbox(m_options)) {
    for (QTimer* const timer : {&m_again, &m_flush, &m_loss, &m_retry, &m_late})
        timer->setSingleShot(true);
    m_late.setTimerType(Qt::PreciseTimer);
    connect(&m_late, &QTimer::timeout, this, &NatsBus::AnswerLate);
    connect(&m_again, &QTimer::timeout, this, &NatsBus::ReadOn);
    connect(&m_flush, &QTimer::timeout, this, &NatsBus::Flush);
    connect(&m_loss, &QTimer::timeout, this, [this] { Lose(QString()); });
    connect(&m_retry, &QTimer::timeout, this, &NatsBus::Connect);
    connect(&m_tick, &QTimer::timeout, this, &NatsBus::OnTick);
}

NatsBus::~NatsBus() {
    Close();
}

// Its state
// --------------------------------------------------------------------------------------------------

void NatsBus::Open(bool isPersistent) {
    if (m_state != EState::Closed) return;
    m_isPersistent = isPersistent;
    m_state = EState::Connecting;
    m_failures = 0;
    Connect();
}

void NatsBus::Connect() {
    m_notices = std::make_shared<NatsNotices>(this, [this] { OnNotices(); });
    m_attempt = NatsAttempt::Start(m_options, m_notices, this,
                                   [this](NatsAttempt::Outcome& outcome) { OnAttempt(outcome); });
}

void NatsBus::OnAttempt(NatsAttempt::Outcome& outcome) {
    m_attempt.reset();
    if (outcome.connection == nullptr) return Lose(outcome.problem);
    Start(outcome);
}

void NatsBus::Start(NatsAttempt::Outcome& outcome) {
    m_socket = std::move(outcome.socket);
    m_connection = std::move(outcome.connection);
    m_server = outcome.server;
    m_isLoopback = IsThisMachine(m_server.host);
    m_isEncrypted = m_options.isTls;
    m_maxPayload = natsConnection_GetMaxPayload(m_connection.get());
    m_reader = std::make_unique<QSocketNotifier>(m_socket->descriptor, QSocketNotifier::Read);
    m_writer = std::make_unique<QSocketNotifier>(m_socket->descriptor, QSocketNotifier::Write);
    m_writer->setEnabled(false);
    connect(m_reader.get(), &QSocketNotifier::activated, this, &NatsBus::OnReadable);
    connect(m_writer.get(), &QSocketNotifier::activated, this, &NatsBus::OnWritable);
    m_hasHeard = true;
    m_silentTicks = 0;
    m_tick.start(m_options.deadAfter / TicksToLose);
    m_notices->Listen(m_connection.get(), m_inbox);
    for (Subscription& subscription : m_subscriptions)
        Listen(subscription);
    WriteSome();
    m_failures = 0;
    SetState(EState::Open, QString());
}

void NatsBus::Listen(Subscription& subscription) {
    if (subscription.handler == nullptr) return;
    natsSubscription* made = nullptr;
    if (natsConnection_SubscribeSync(&made, m_connection.get(), subscription.subject) != NATS_OK) return;
    subscription.made.reset(made);
    // What is not read waits at NATS, and not here: a read brings no more than its buffer.
    natsSubscription_SetPendingLimits(made, -1, -1);
    m_flush.start(0);
}

void NatsBus::SetState(EState state, const QString& problem) {
    m_state = state;
    m_problem = problem;
    Tell([&](IListener& listener) { listener.OnNatsState(state, problem); });
}

// A reason that is empty is the library's.
void NatsBus::Lose(const QString& reason) {
    QString problem = reason;
    if (problem.isEmpty()) {
        const char* text = nullptr;
        const natsStatus status = natsConnection_GetLastError(m_connection.get(), &text);
        const QString said = status == NATS_OK ? QString() : QStringLiteral(": ") + CnatsText(status, text);
        problem = QStringLiteral("the connection to NATS at %1 is lost%2").arg(m_server.ToText(), said);
    }
    TryOthersFirst();
    LetGo();
    if (!m_isPersistent) return SetState(EState::Closed, problem);
    const milliseconds wait = backoff::WaitAfter(++m_failures, m_options.firstRetry, m_options.longestRetry);
    m_retry.start(backoff::Spread(wait, QRandomGenerator::global()->generateDouble()));
    SetState(EState::Connecting, problem);
}

// A server that was lost may look alive from outside, and would be waited for.
void NatsBus::TryOthersFirst() {
    if (!IsOpen()) return;
    const auto isLost = [this](const HostPort& server) {
        return server.host == m_server.host && server.port == m_server.port;
    };
    std::stable_partition(m_options.servers.begin(), m_options.servers.end(), std::not_fn(isLost));
}

void NatsBus::Close() {
    if (m_state == EState::Closed) return;
    m_retry.stop();
    LetGo();
    m_questions.clear();
    m_state = EState::Closed;
    m_problem.clear();
}

// Closing waits for NATS where something is unsent, so then it happens elsewhere.
void NatsBus::LetGo() {
    for (QTimer* const timer : {&m_again, &m_flush, &m_loss, &m_tick})
        timer->stop();
    if (m_attempt) m_attempt->Abandon();
    m_attempt.reset();
    if (IsOpen() && m_socket->wantsToWrite) natsConnection_ProcessWriteEvent(m_connection.get());
    // What stays unread makes the system forget what is under way. To have the library read it would wait, in
    // TLS, for the rest of a record.
    if (IsOpen() && m_socket->descriptor != -1) DropUnread(m_socket->descriptor);
    IgnoreSocket();
    for (Subscription& subscription : m_subscriptions)
        subscription.made.reset();
    m_spent.Clear();
    if (m_notices) m_notices->Leave();
    m_notices.reset();
    m_maxPayload = 0;
    if (!IsOpen()) return;
    std::shared_ptr<natsConnection> connection(m_connection.release(), CnatsDeleter());
    if (m_socket->wantsToWrite)
        NatsThreads::Instance().Run([connection, socket = m_socket]() mutable { connection.reset(); });
    connection.reset();
    m_socket.reset();
}

void NatsBus::AddListener(IListener* listener) {
    m_listeners.push_back(listener);
}

void NatsBus::RemoveListener(IListener* listener) {
    std::replace(m_listeners.begin(), m_listeners.end(), listener, static_cast<IListener*>(nullptr));
}

template <class Call>
void NatsBus::Tell(const Call& call) {
    const QPointer<NatsBus> self(this);
    for (std::size_t i = 0; self && i < m_listeners.size(); ++i)
        if (m_listeners[i] != nullptr) call(*m_listeners[i]);
    if (!self) return;
    m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), nullptr), m_listeners.end());
}

// Sending
// ----------------------------------------------------------------------------------------------------

bool NatsBus::PublishTo(const QByteArray& subject, const char* reply, std::string_view data) {
    const auto size = static_cast<int>(data.size());
    const natsStatus status =
        reply == nullptr
            ? natsConnection_Publish(m_connection.get(), subject, data.data(), size)
            : natsConnection_PublishRequest(m_connection.get(), subject, reply, data.data(), size);
    if (status == NATS_OK && !m_flush.isActive()) m_flush.start(0);
    return status == NATS_OK;
}

bool NatsBus::Publish(const QByteArray& subject, std::string_view head, std::string_view body,
                      quint64 watch) {
    const auto size = static_cast<qint64>(head.size() + body.size());
    if (m_state != EState::Open || size > m_maxPayload) return false;
    std::string_view whole = body.empty() ? head : body;
    if (!head.empty() && !body.empty()) {
        m_whole.resize(0);
        m_whole.reserve(static_cast<int>(size));
        m_whole.append(head.data(), static_cast<int>(head.size()));
        m_whole.append(body.data(), static_cast<int>(body.size()));
        whole = {m_whole.constData(), static_cast<std::size_t>(size)};
    }
    if (watch == 0) return PublishTo(subject, nullptr, whole);
    return PublishTo(subject, m_inbox + ".u." + QByteArray::number(watch), whole);
}

void NatsBus::Flush() {
    m_flush.stop();
    if (IsOpen()) WriteSome();
}

void NatsBus::WriteSome() {
    if (m_socket->wantsToWrite) natsConnection_ProcessWriteEvent(m_connection.get());
    LookForLoss();
    if (m_writer) m_writer->setEnabled(m_socket->wantsToWrite);
}

void NatsBus::OnWritable() {
    WriteSome();
    if (IsOpen() && Unsent() < EnoughUnsent) Tell([](IListener& listener) { listener.OnNatsWritable(); });
}

qint64 NatsBus::Unsent() const {
    return IsOpen() ? std::max(0, natsConnection_Buffered(m_connection.get())) : 0;
}

// It is told later: this may be in the middle of a call from outside.
void NatsBus::LookForLoss() {
    if (m_socket->descriptor != -1) return;
    IgnoreSocket();
    m_loss.start(0);
}

// One of the notifiers may be what called us.
void NatsBus::IgnoreSocket() {
    for (QSocketNotifier* const notifier : {m_reader.release(), m_writer.release()}) {
        if (notifier == nullptr) continue;
        notifier->setEnabled(false);
        notifier->disconnect(this);
        notifier->deleteLater();
    }
}

// Listening
// --------------------------------------------------------------------------------------------------

int NatsBus::Subscribe(const QByteArray& subject, Handler handler) {
    m_subscriptions.push_back(
        {++m_lastSubscription, subject, std::make_shared<Handler>(std::move(handler)), nullptr});
    if (IsOpen()) Listen(m_subscriptions.back());
    return m_lastSubscription;
}

// A list that is walked over keeps its places.
void NatsBus::Unsubscribe(int number) {
    for (Subscription& subscription : m_subscriptions) {
        if (subscription.number != number) continue;
        subscription.handler.reset();
        subscription.made.reset();
        if (IsOpen() && !m_flush.isActive()) m_flush.start(0);
    }
}

void NatsBus::OnReadable() {
    m_hasHeard = true;
    if (m_again.isActive() || m_isReading) return;
    natsConnection_ProcessReadEvent(m_connection.get());
    ReadOn();
}

// Gives what has been read, for no longer than a turn; nothing more is read meanwhile. What was published
// before leaves first.
void NatsBus::ReadOn() {
    if (m_isReading || !IsOpen()) return;
    if (m_flush.isActive()) Flush();
    m_isReading = true;
    const QPointer<NatsBus> self(this);
    const std::shared_ptr<NatsSocket> socket = m_socket;
    const QDeadlineTimer turn(TurnTime, Qt::PreciseTimer);
    m_leaveAt.setPreciseRemainingTime(0, Company.count(), Qt::PreciseTimer);
    bool isDone = true;
    for (std::size_t i = 0; isDone && i < m_subscriptions.size(); ++i) {
        isDone = Give(i, turn);
        if (!self) return;
    }
    m_isReading = false;
    if (m_socket != socket) return;  // closed, or another connection by now
    if (m_flush.isActive()) Flush();
    const auto isOver = [](const Subscription& subscription) { return subscription.handler == nullptr; };
    m_subscriptions.erase(std::remove_if(m_subscriptions.begin(), m_subscriptions.end(), isOver),
                          m_subscriptions.end());
    if (!isDone) m_again.start(0);
    if (m_reader) m_reader->setEnabled(isDone);
    LookForLoss();
}

/// What waits for one subscription. False if the time is up, or the connection gone.
bool NatsBus::Give(std::size_t index, const QDeadlineTimer& turn) {
    const QPointer<NatsBus> self(this);
    const std::shared_ptr<NatsSocket> socket = m_socket;
    for (;;) {
        natsSubscription* const made = m_subscriptions[index].made.get();
        int count = 0;
        if (made == nullptr || natsSubscription_GetPending(made, &count, nullptr) != NATS_OK || count == 0)
            return true;
        if (turn.hasExpired()) return false;
        natsMsg* next = nullptr;
        const natsStatus status = natsSubscription_NextMsg(&next, made, 0);
        if (status == NATS_NO_RESPONDERS) continue;  // who wants to know listens elsewhere
        if (status != NATS_OK) return true;
        CnatsPointer<natsMsg> message(next);
        const char* const reply = natsMsg_GetReply(next);
        const std::shared_ptr<Handler> handler = m_subscriptions[index].handler;
        (*handler)({natsMsg_GetSubject(next),
                    {natsMsg_GetData(next), static_cast<std::size_t>(natsMsg_GetDataLength(next))},
                    reply != nullptr ? std::string_view(reply) : std::string_view()});
        if (!self) return false;
        m_spent.Add(std::move(message));
        if (m_socket != socket) return false;
        LeaveTogether();
    }
}

// What handlers publish leaves at once, but for what follows within a moment: each write costs us and NATS as
// much as many messages.
void NatsBus::LeaveTogether() {
    if (!m_flush.isActive() || !m_leaveAt.hasExpired()) return;
    Flush();
    m_leaveAt.setPreciseRemainingTime(0, Company.count(), Qt::PreciseTimer);
}

// Questions, notices, silence
// --------------------------------------------------------------------------------

void NatsBus::Request(const QByteArray& subject, const QByteArray& data, Time timeout,
                      AnswerHandler handler) {
    const quint64 number = ++m_lastQuestion;
    const auto now = steadyclock::Now<milliseconds>();
    const bool isSent = m_state == EState::Open && data.size() <= m_maxPayload &&
                        PublishTo(subject, m_inbox + ".r." + QByteArray::number(number),
                                  {data.constData(), static_cast<std::size_t>(data.size())});
    const Time wait = isSent ? timeout : Time(0);
    m_questions[number] = {std::move(handler), now + wait};
    if (!m_late.isActive() || m_late.remainingTimeAsDuration() > wait) m_late.start(wait);
}

void NatsBus::AnswerLate() {
    const auto now = steadyclock::Now<milliseconds>();
    const QPointer<NatsBus> self(this);
    while (self) {
        const auto late = std::find_if(m_questions.begin(), m_questions.end(),
                                       [now](const auto& question) { return question.second.until <= now; });
        if (late == m_questions.end()) return WaitForAnswers(now);
        const AnswerHandler handler = std::move(late->second.handler);
        m_questions.erase(late);
        handler(
            {m_state == EState::Open ? QStringLiteral("no answer in time") : QStringLiteral("no connection"),
             QByteArray()});
    }
}

// A timer may come before its time: whoever is not late yet is looked at again.
void NatsBus::WaitForAnswers(Time now) {
    if (m_questions.empty()) return;
    const auto earliest =
        std::min_element(m_questions.begin(), m_questions.end(),
                         [](const auto& a, const auto& b) { return a.second.until < b.second.until; });
    m_late.start(earliest->second.until - now);
}

void NatsBus::OnNotices() {
    if (!m_notices) return;
    const QPointer<NatsBus> self(this);
    for (const NatsNotices::Notice& notice : m_notices->Take()) {
        OnNotice(notice);
        if (!self) return;
    }
}

void NatsBus::OnNotice(const NatsNotices::Notice& notice) {
    if (!notice.complaint.isEmpty())
        return Tell([&](IListener& listener) { listener.OnNatsComplaint(notice.complaint); });
    const quint64 number = notice.subject.mid(2).toULongLong();
    if (notice.subject.startsWith("u.") && notice.isUnheard)
        return Tell([&](IListener& listener) { listener.OnNatsUnheard(number); });
    const auto question = m_questions.find(number);
    if (!notice.subject.startsWith("r.") || question == m_questions.end()) return;
    const AnswerHandler handler = std::move(question->second.handler);
    m_questions.erase(question);
    QString problem;
    if (notice.isUnheard)
        problem = QStringLiteral("nobody there answers");
    else if (!notice.status.isEmpty())
        problem = QStringLiteral("NATS answers with status %1").arg(QString::fromLatin1(notice.status));
    handler({problem, notice.data, notice.isUnheard});
}

// NATS sends what we publish to ourselves: who hears not even that has lost it.
void NatsBus::OnTick() {
    m_spent.Clear();
    m_silentTicks = std::exchange(m_hasHeard, false) ? 0 : m_silentTicks + 1;
    if (m_silentTicks >= TicksToLose)
        return Lose(QStringLiteral("nothing heard from NATS at %1 for %2 ms")
                        .arg(m_server.ToText())
                        .arg(m_options.deadAfter.count()));
    if (m_silentTicks >= TicksToAsk) PublishTo(m_inbox + ".s", nullptr, {});
}

}  // namespace nats
