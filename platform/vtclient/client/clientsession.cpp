// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/clientsession.h>

#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>
#include <platform/vtclient/client/clientlink.h>
#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
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
      m_lastReceived(loop.Now()) {
    m_channel->SetListener(this);
}

ClientSession::~ClientSession() {
    m_channel->SetListener(nullptr);
}

// The connection -------------------------------------------------------------------------------------------

void ClientSession::Greet(const QString& address) {
    Message hello = Message::Of(EMessage::Hello);
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

void ClientSession::OnWelcome(const Message& message) {
    if (message.version != vtlimits::ProtocolVersion)
        return Fail(EBye::Version, QStringLiteral("the server speaks version %1").arg(message.version));
    m_channel->SetMaxMessage(vtlimits::MaxFrame);
    m_state = EState::Connected;
    m_number = message.session;
    m_serverApplication = message.application;
    // The more patient of the two, but the ping must come before the server's patience ends.
    m_deadAfter = std::max(m_options.deadAfter, message.ping);
    m_pingInterval = std::max(milliseconds(1), std::min(m_options.pingInterval, message.dead / 3));
    m_lastPing = m_loop.Now() - m_pingInterval;  // one at once, to know the latency
    m_host.OnWelcome();
}

void ClientSession::OnPong(const Message& message) {
    const microseconds sent(static_cast<qint64>(message.seq));
    const microseconds now = m_loop.Now();
    if (sent <= now && now - sent <= m_deadAfter) m_latency = now - sent;
}

microseconds ClientSession::Deadline() const {
    if (!IsConnected()) return m_greetedBy;
    return std::min(m_lastPing + m_pingInterval, m_lastReceived + m_deadAfter);
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
        Message ping = Message::Of(EMessage::Ping);
        ping.seq = static_cast<quint64>(now.count());
        Send(ping);
        Flush();
    }
}

void ClientSession::OnClosed(const QString& reason) {
    const CallDepth::Call call(m_depth);
    if (m_channel->IsOpen()) return Fail(EBye::Limit, reason);  // it was the server that broke a rule
    if (m_state != EState::Greeting) return End(reason);
    const QString hint = m_channel->IsEncrypted() ? QString() : QStringLiteral(" (does it want TLS?)");
    End(QStringLiteral("%1 before it welcomed us%2").arg(reason, hint));
}

void ClientSession::SendBye(EBye code, const QString& reason) {
    Message bye = Message::Of(EMessage::Bye);
    bye.code = code;
    bye.reason = reason;
    Send(bye);
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
    MessageReader reader(data, size);
    EMessage type = EMessage::Hello;
    if (!reader.ReadType(&type) || !Handle(reader, type, size))
        Fail(QStringLiteral("malformed message: %1").arg(reader.Error()));
}

void ClientSession::OnInputDone() {
    const CallDepth::Call call(m_depth);
    m_host.OnInputHandled();
}

// False if it is malformed, but for the changes in it.
bool ClientSession::Handle(MessageReader& reader, EMessage type, qint64 size) {
    if (IsConnected() && (CarriesChanges(type) || type == EMessage::Answer))
        return HandleFrequent(reader, type, size);
    Message message = Message::Of(type);
    if (!reader.ReadRest(&message)) return false;
    Dispatch(message, size);
    return true;
}

bool ClientSession::HandleFrequent(MessageReader& reader, EMessage type, qint64 size) {
    if (type == EMessage::Answer) {
        AnswerMessage answer;
        if (!reader.ReadRest(&answer)) return false;
        OnAnswer(answer);
    } else {
        ChangesHead head;
        head.type = type;
        if (!reader.ReadRest(&head)) return false;
        CountForAck(size);
        OnChanges(reader, head);
    }
    return true;
}

void ClientSession::Dispatch(const Message& message, qint64 size) {
    if (message.type == EMessage::Bye) {
        const bool isRefused = message.code == EBye::NotAdmitted || message.code == EBye::Version;
        return End(QStringLiteral("the server refuses: %1").arg(message.reason), isRefused);
    }
    if (m_state == EState::Greeting) {
        if (message.type == EMessage::Welcome) return OnWelcome(message);
        return Fail(QStringLiteral("the first message of a server must be a welcome"));
    }
    switch (message.type) {
        case EMessage::Ping: {
            Message pong = Message::Of(EMessage::Pong);
            pong.seq = message.seq;
            return Send(pong);
        }
        case EMessage::Pong:
            return OnPong(message);
        case EMessage::End:
            CountForAck(size);
            return DispatchToLink(message);
        case EMessage::Subscribed:
        case EMessage::Absent:
            return DispatchToLink(message);
        default:
            return Fail(QStringLiteral("a message that only a client sends"));
    }
}

void ClientSession::DispatchToLink(const Message& message) {
    ClientLink* const link = FindLink(message.sub);
    if (link == nullptr) return;
    if (message.type == EMessage::Subscribed)
        link->OnSubscribed(message.prefixes);
    else if (message.type == EMessage::Absent)
        link->OnAbsent(message.reason);
    else
        link->OnEnd(message.seq);
}

void ClientSession::OnChanges(MessageReader& reader, const ChangesHead& head) {
    if (ClientLink* const link = FindLink(head.sub)) link->OnChanges(reader, head);
}

void ClientSession::OnAnswer(const AnswerMessage& answer) {
    const auto request = m_requests.find(answer.req);
    if (request == m_requests.end()) return Fail(QStringLiteral("an answer to no request"));
    ClientLink* const link = request->second;
    m_requests.erase(request);
    if (link != nullptr) link->OnAnswer(answer);
}

// Null if it was ended meanwhile, or never was, which ends the session.
ClientLink* ClientSession::FindLink(quint32 sub) {
    const auto found = m_subscriptions.find(sub);
    if (found != m_subscriptions.end()) return found->second;
    if (sub == 0 || sub > m_lastSub) Fail(QStringLiteral("an unknown subscription %1").arg(sub));
    return nullptr;
}

// What goes ------------------------------------------------------------------------------------------------

quint32 ClientSession::Subscribe(ClientLink& link, const QString& path) {
    m_subscriptions[++m_lastSub] = &link;
    Message subscribe = Message::Of(EMessage::Subscribe);
    subscribe.sub = m_lastSub;
    subscribe.path = path;
    Send(subscribe);
    return m_lastSub;
}

void ClientSession::Unsubscribe(quint32 sub) {
    Drop(sub);
    Message unsubscribe = Message::Of(EMessage::Unsubscribe);
    unsubscribe.sub = sub;
    Send(unsubscribe);
}

quint32 ClientSession::SendWrite(ClientLink& link, quint32 sub, WriteMessage* write) {
    write->req = m_lastRequest + 1;
    write->sub = sub;
    const std::string_view bytes = Encode(*write);
    return bytes.size() > vtlimits::MaxFrame ? 0 : SendRequest(link, bytes);
}

quint32 ClientSession::SendCreation(ClientLink& link, quint32 sub, Message* create,
                                    const values::TreeItem& item) {
    create->req = m_lastRequest + 1;
    create->sub = sub;
    DescribeItem(item, &create->item);
    const QByteArray bytes = Encode(*create);
    const bool isTooLarge = static_cast<quint32>(bytes.size()) > vtlimits::MaxFrame ||
                            create->path.size() > vtlimits::MaxPathLength;
    return isTooLarge ? 0 : SendRequest(link, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

quint32 ClientSession::SendRequest(ClientLink& link, std::string_view bytes) {
    m_requests[++m_lastRequest] = &link;
    SendBytes(bytes);
    return m_lastRequest;
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

void ClientSession::Send(const Message& message) {
    const QByteArray bytes = Encode(message);
    SendBytes({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

void ClientSession::SendBytes(std::string_view bytes) {
    if (m_state == EState::Ended) return;
    m_channel->SendInParts(bytes, QByteArray(), {});
    if (!m_hasOutput && m_depth.IsIdle()) m_turn.Make();
    m_hasOutput = true;
}

}  // namespace vt
