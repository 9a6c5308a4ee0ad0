// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/clientsession.h>

#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>
#include <platform/vtclient/client/clientlink.h>
#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/messagereader.h>
#include <platform/vtclient/wire/messagewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <type_traits>
#include <utility>

namespace vt {

using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;

ClientSession::IHost::~IHost() = default;

ClientSession::ClientSession(std::unique_ptr<IChannel> channel, const VtClientOptions& options,
                             IEventLoop& loop, microseconds greetedBy, CallDepth& depth, TurnRequest& turn,
                             IHost& host)
    : m_channel(std::move(channel)),
      m_options(options),
      m_loop(loop),
      m_greetedBy(greetedBy),
      m_depth(depth),
      m_turn(turn),
      m_host(host),
      m_lastReceived(loop.Now()),
      m_roads(m_channel->Roads()) {
    m_channel->SetListener(this);
}

ClientSession::~ClientSession() {
    m_channel->SetListener(nullptr);
}

// The connection -------------------------------------------------------------------------------------------

void ClientSession::Greet(const QString& address) {
    HelloMessage hello;
    hello.version = vtlimits::ProtocolVersion;
    hello.application = CfgCenter::GetAppName().left(vtlimits::MaxHelloText);
    hello.machine = VornOS::Create()->GetMachineName().left(vtlimits::MaxHelloText);
    const bool isSafe = m_channel->IsEncrypted() || m_channel->IsLoopback();
    if (isSafe) {
        hello.user = m_options.user.left(vtlimits::MaxHelloText);
        hello.token = m_options.token.left(vtlimits::MaxHelloText);
    } else if (!m_options.token.isEmpty()) {
        TraceClient(
            QStringLiteral("The token is not sent to %1: the connection is not encrypted").arg(address));
    }
    Send(hello);
    Flush();
}

microseconds ClientSession::Deadline() const {
    if (!IsConnected()) return m_greetedBy;
    microseconds deadline = std::min(m_lastPing + m_pingInterval, m_lastReceived + m_deadAfter);
    if (m_roads == nullptr) return deadline;
    for (const auto& [sub, link] : m_subscriptions)
        if (const auto road = link->RoadDeadline()) deadline = std::min(deadline, *road);
    return deadline;
}

std::optional<microseconds> ClientSession::Silence() const {
    if (!IsConnected() || !m_unanswered) return std::nullopt;
    return m_loop.Now() - std::max(*m_unanswered, m_lastReceived);
}

void ClientSession::OnDeadline() {
    const microseconds now = m_loop.Now();
    if (m_state == EState::Greeting && now >= m_greetedBy) {
        Fail(EBye::Silence, QStringLiteral("no welcome within %1 ms").arg(m_options.connectTimeout.count()));
    } else if (IsConnected() && now - m_lastReceived >= m_deadAfter) {
        Fail(EBye::Silence, QStringLiteral("nothing heard for %1 ms")
                                .arg(duration_cast<milliseconds>(now - m_lastReceived).count()));
    } else if (IsConnected() && now - m_lastPing >= m_pingInterval) {
        m_lastPing = now;
        if (!m_unanswered) m_unanswered = now;
        Send(PingMessage{static_cast<quint64>(now.count())});
        Flush();
    }
    if (m_roads == nullptr) return;
    ForEachLink([](ClientLink& link) { link.OnRoadDue(); });
    Flush();
}

void ClientSession::OnClosed(const QString& reason) {
    const CallDepth::Call call(m_depth);
    m_isClosing = true;
    m_holder = nullptr;
    HandleHeld();
    if (m_state == EState::Ended) return;
    if (m_channel->IsOpen()) return Fail(EBye::Limit, reason);  // it was the server that broke a rule
    if (m_state != EState::Greeting) return End(reason);
    const QString hint = m_channel->IsEncrypted() ? QString() : QStringLiteral(" (does it want TLS?)");
    End(QStringLiteral("%1 before it welcomed us%2").arg(reason, hint));
}

void ClientSession::SendBye(EBye code, const QString& reason) {
    Send(ByeMessage{code, reason});
}

// The server broke a rule, or is silent.
void ClientSession::Fail(EBye code, const QString& reason) {
    if (m_state == EState::Ended) return;
    SendBye(code, reason);
    End(reason);
}

void ClientSession::End(const QString& reason, std::optional<bool> isRefused) {
    if (m_state == EState::Ended) return;
    const bool wasConnected = IsConnected();
    m_state = EState::Ended;
    m_channel->Close();
    m_channel->SetListener(nullptr);
    m_host.OnSessionEnded({reason, wasConnected, isRefused});
}

void ClientSession::Close() {
    if (m_state == EState::Ended) return;
    if (m_channel->IsOpen()) SendBye(EBye::ClientEnds, QStringLiteral("the client ends"));
    m_state = EState::Ended;
    m_channel->Close();
    m_channel->SetListener(nullptr);
}

// What comes -----------------------------------------------------------------------------------------------

void ClientSession::OnMessage(const char* data, qint64 size) {
    const CallDepth::Call call(m_depth);
    m_lastReceived = m_loop.Now();
    const bool isWaiting = m_holder != nullptr || m_pauses != 0 || m_isHandlingHeld || !m_held.IsEmpty();
    if (!isWaiting) return Handle(data, size);
    if (!m_held.Keep(data, size))
        Fail(EBye::Limit, QStringLiteral("more than %1 bytes wait for a shared road").arg(vtlimits::MaxHeld));
}

// Whoever is told may lead to more that comes, which is handled here too.
void ClientSession::HandleHeld() {
    if (m_isHandlingHeld) return;
    m_isHandlingHeld = true;
    while (m_state != EState::Ended && m_holder == nullptr && m_pauses == 0 && !m_held.IsEmpty()) {
        const QByteArray message = m_held.Take();
        Handle(message.constData(), message.size());
    }
    m_isHandlingHeld = false;
}

void ClientSession::GoOn(const ClientLink& link) {
    if (m_holder != &link) return;
    m_holder = nullptr;
    HandleHeld();
}

void ClientSession::GoOnLater(const ClientLink& link) {
    if (m_holder != &link) return;
    m_holder = nullptr;
    m_turn.Make();
}

void ClientSession::OnTurn() {
    if (m_roads == nullptr || !m_depth.IsOutermost()) return;
    HandleHeld();
    ForEachLink([](ClientLink& link) { link.OnRoadTurn(); });
}

// Whoever is told meanwhile may end some of them.
template <class Visit>
void ClientSession::ForEachLink(const Visit& visit) {
    std::vector<quint32> subs;
    for (const auto& subscription : m_subscriptions)
        subs.push_back(subscription.first);
    for (const quint32 sub : subs) {
        const auto found = m_subscriptions.find(sub);
        if (found != m_subscriptions.end()) visit(*found->second);
    }
}

std::optional<RoadFollower::Place> ClientSession::Roads() {
    if (m_roads == nullptr) return std::nullopt;
    return RoadFollower::Place{*m_roads, m_loop, m_depth, m_turn, m_deadAfter};
}

void ClientSession::Handle(const char* data, qint64 size) {
    MessageReader reader(data, size);
    const Arrival arrival{reader, size};
    if (!reader.Read([this, &arrival](const auto& message) { Receive(message, arrival); }))
        Fail(QStringLiteral("malformed message: %1").arg(reader.Error()));
}

void ClientSession::OnInputDone() {
    const CallDepth::Call call(m_depth);
    m_host.OnInputHandled();
}

template <class M>
void ClientSession::Receive(const M& message, const Arrival& arrival) {
    constexpr bool IsWelcome = std::is_same_v<M, WelcomeMessage>;
    constexpr bool IsFirst = IsWelcome || std::is_same_v<M, ByeMessage>;
    if (m_state == EState::Greeting && !IsFirst)
        return Fail(QStringLiteral("the first message of a server must be a welcome"));
    if constexpr (IsSentBy<M>(ESender::Server))
        if (!IsWelcome || m_state == EState::Greeting) return On(message, arrival);
    Fail(QStringLiteral("a message that only a client sends"));
}

void ClientSession::On(const WelcomeMessage& welcome, const Arrival& /*arrival*/) {
    if (welcome.version != vtlimits::ProtocolVersion)
        return Fail(EBye::Version, QStringLiteral("the server speaks version %1").arg(welcome.version));
    m_channel->SetMaxMessage(vtlimits::MaxFrame);
    m_state = EState::Connected;
    m_number = welcome.session;
    m_serverApplication = welcome.application;
    m_epoch = welcome.epoch;
    // The more patient of the two, but the ping must come before the server's patience ends.
    m_deadAfter = std::max(m_options.deadAfter, welcome.ping);
    m_pingInterval = std::max(milliseconds(1), std::min(m_options.pingInterval, welcome.dead / 3));
    m_lastPing = m_loop.Now() - m_pingInterval;  // one at once, to know the latency
    m_host.OnWelcome();
}

void ClientSession::On(const ByeMessage& bye, const Arrival& /*arrival*/) {
    const bool isRefused = bye.code == EBye::NotAdmitted || bye.code == EBye::Version;
    End(QStringLiteral("the server refuses: %1").arg(bye.reason), isRefused);
}

void ClientSession::On(const PingMessage& ping, const Arrival& /*arrival*/) {
    Send(PongMessage{ping.number});
}

void ClientSession::On(const PongMessage& pong, const Arrival& /*arrival*/) {
    const microseconds sent(static_cast<qint64>(pong.number));
    const microseconds now = m_loop.Now();
    if (sent <= now && now - sent <= m_deadAfter) m_latency = now - sent;
    if (!m_unanswered || sent < *m_unanswered) return;
    // Those sent since then still wait; when the first of them was sent is known well enough.
    m_unanswered =
        sent < m_lastPing ? std::optional(std::min(sent + m_pingInterval, m_lastPing)) : std::nullopt;
}

void ClientSession::On(const SubscribedMessage& subscribed, const Arrival& /*arrival*/) {
    if (ClientLink* const link = FindLink(subscribed.sub)) link->OnSubscribed(subscribed.prefixes);
}

void ClientSession::On(const AbsentMessage& absent, const Arrival& /*arrival*/) {
    if (ClientLink* const link = FindLink(absent.sub)) link->OnAbsent(absent.reason);
}

void ClientSession::On(const SnapshotMessage& snapshot, const Arrival& arrival) {
    CountForAck(arrival.size);
    if (ClientLink* const link = FindLink(snapshot.sub)) link->OnChanges(arrival.reader, snapshot.seq, true);
}

void ClientSession::On(const BatchMessage& batch, const Arrival& arrival) {
    CountForAck(arrival.size);
    if (ClientLink* const link = FindLink(batch.sub)) link->OnChanges(arrival.reader, batch.seq, batch.more);
}

void ClientSession::On(const EndMessage& end, const Arrival& arrival) {
    CountForAck(arrival.size);
    if (ClientLink* const link = FindLink(end.sub)) link->OnEnd(end.seq);
}

void ClientSession::On(const AnswerMessage& answer, const Arrival& /*arrival*/) {
    const auto request = m_requests.find(answer.req);
    if (request == m_requests.end()) return Fail(QStringLiteral("an answer to no request"));
    ClientLink* const link = request->second;
    m_requests.erase(request);
    if (link != nullptr) link->OnAnswer(answer);
}

void ClientSession::On(const RecalledMessage& recalled, const Arrival& /*arrival*/) {
    const auto found = m_recalls.find(recalled.req);
    if (found == m_recalls.end()) return Fail(QStringLiteral("an answer to no question"));
    const IVtHistory::Answer answer = std::move(found->second);
    m_recalls.erase(found);
    VtHistoryPage page{recalled.reason, recalled.texts, recalled.next};
    if (recalled.result == EResult::Done)
        page.refusal.clear();
    else if (page.refusal.isEmpty())
        page.refusal = QStringLiteral("the server does not say why");
    answer(page);
}

void ClientSession::On(const RoadMessage& road, const Arrival& /*arrival*/) {
    if (ClientLink* const link = FindLink(road.sub)) link->OnRoad(road.road, road.key, road.secret);
}

// What the session says next comes after that, and waits.
void ClientSession::On(const AtMessage& at, const Arrival& /*arrival*/) {
    ClientLink* const link = FindLink(at.sub);
    if (link != nullptr && !link->OnAt(at.number) && !m_isClosing) m_holder = link;
}

// Null if it was ended meanwhile, or never was, which ends the session.
ClientLink* ClientSession::FindLink(quint32 sub) {
    const auto found = m_subscriptions.find(sub);
    if (found != m_subscriptions.end()) return found->second;
    if (sub == 0 || sub > m_lastSub) Fail(QStringLiteral("an unknown subscription %1").arg(sub));
    return nullptr;
}

// What goes ------------------------------------------------------------------------------------------------

quint32 ClientSession::Subscribe(ClientLink& link, const QString& path, bool isLook) {
    m_subscriptions[++m_lastSub] = &link;
    Send(SubscribeMessage{m_lastSub, path, isLook});
    return m_lastSub;
}

void ClientSession::Unsubscribe(quint32 sub) {
    Drop(sub);
    Send(UnsubscribeMessage{sub});
}

void ClientSession::Join(quint32 sub) {
    Send(JoinMessage{sub});
}

void ClientSession::TellHeard(quint32 sub, const QString& road) {
    Send(HeardMessage{sub, road});
}

void ClientSession::LeaveRoad(quint32 sub) {
    Send(LeaveMessage{sub});
}

void ClientSession::AskAgain(quint32 sub, quint64 from, quint64 to) {
    Send(AgainMessage{sub, from, to});
}

quint32 ClientSession::SendWrite(ClientLink& link, quint32 sub, WriteMessage* write) {
    write->req = m_lastRequest + 1;
    write->sub = sub;
    const std::string_view bytes = Encode(*write);
    return bytes.size() > vtlimits::MaxFrame ? 0 : SendRequest(link, bytes);
}

quint32 ClientSession::SendCreation(ClientLink& link, quint32 sub, CreateMessage* create,
                                    const values::TreeItem& item) {
    create->req = m_lastRequest + 1;
    create->sub = sub;
    DescribeItem(item, &create->item);
    if (create->path.size() > vtlimits::MaxPathLength) return 0;
    const std::string_view bytes = Encode(*create);
    return bytes.size() > vtlimits::MaxFrame ? 0 : SendRequest(link, bytes);
}

quint32 ClientSession::SendRequest(ClientLink& link, std::string_view bytes) {
    m_requests[++m_lastRequest] = &link;
    SendBytes(bytes);
    return m_lastRequest;
}

void ClientSession::Recall(const QString& path, quint64 before, quint64 count,
                           const IVtHistory::Answer& answer) {
    m_recalls[++m_lastRequest] = answer;
    Send(RecallMessage{m_lastRequest, path, before, count});
}

std::vector<IVtHistory::Answer> ClientSession::TakeRecalls() {
    std::vector<IVtHistory::Answer> answers;
    for (auto& recall : std::exchange(m_recalls, {}))
        answers.push_back(std::move(recall.second));
    return answers;
}

void ClientSession::Forget(const ClientLink& link) {
    for (auto& request : m_requests)
        if (request.second == &link) request.second = nullptr;
}

void ClientSession::CountForAck(qint64 size) {
    ++m_received;
    ++m_unackedMessages;
    m_unackedBytes += size;
}

void ClientSession::Flush() {
    const bool isDue =
        m_unackedMessages >= vtlimits::AckAfterMessages || m_unackedBytes >= vtlimits::AckAfterBytes;
    if (IsConnected() && isDue) {
        SendBytes(Encode(AckMessage{m_received}));
        m_unackedMessages = 0;
        m_unackedBytes = 0;
    }
    if (m_hasOutput) m_channel->Flush();
    m_hasOutput = false;
}

template <class M>
void ClientSession::Send(const M& message) {
    SendBytes(Encode(message));
}

void ClientSession::SendBytes(std::string_view bytes) {
    if (m_state == EState::Ended) return;
    m_channel->SendInParts(bytes, QByteArray(), {});
    if (!m_hasOutput && m_depth.IsIdle()) m_turn.Make();
    m_hasOutput = true;
}

}  // namespace vt
