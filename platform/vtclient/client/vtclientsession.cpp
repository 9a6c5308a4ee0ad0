// SPDX-License-Identifier: Apache-2.0
// The session of a client: messages in and out.
#include <platform/vtclient/client/vtclient.h>

#include <platform/values/refusals.h>
#include <platform/vtclient/client/vtclientdetail.h>
#include <platform/vtclient/client/vttic.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

using vtclientdetail::Trace;

void VtClient::OnMessage(const char* data, qint64 size) {
    const Busy busy(*this);
    m_lastReceived = m_loop->Now();
    MessageReader reader(data, size);
    EMessage type = EMessage::Hello;
    if (!reader.ReadType(&type) || !Handle(reader, type, size))
        Fail(EBye::Malformed, QStringLiteral("malformed message: %1").arg(reader.Error()));
}

// False if it is malformed, but for the changes in it.
bool VtClient::Handle(MessageReader& reader, EMessage type, qint64 size) {
    if (IsConnected() && (CarriesChanges(type) || type == EMessage::Answer))
        return HandleFrequent(reader, type, size);
    Message message = Message::Of(type);
    if (!reader.ReadRest(&message)) return false;
    Dispatch(message, size);
    return true;
}

bool VtClient::HandleFrequent(MessageReader& reader, EMessage type, qint64 size) {
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

void VtClient::Dispatch(const Message& message, qint64 size) {
    if (message.type == EMessage::Bye) {
        m_isRefused = message.code == EBye::NotAdmitted || message.code == EBye::Version;
        return EndSession(QStringLiteral("the server refuses: %1").arg(message.reason));
    }
    if (m_state == EState::Greeting) {
        if (message.type == EMessage::Welcome) return OnWelcome(message);
        return Fail(EBye::Malformed, QStringLiteral("the first message of a server must be a welcome"));
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
            break;
        case EMessage::Subscribed:
        case EMessage::Absent:
            break;
        default:
            return Fail(EBye::Malformed, QStringLiteral("a message that only a client sends"));
    }
    Link* const link = LinkOfMessage(message.sub);
    if (link == nullptr) return;
    if (message.type == EMessage::Subscribed) return OnSubscribed(*link, message);
    if (message.type == EMessage::Absent) return OnAbsent(*link, message);
    OnEnd(*link, message);
}

// Null if it was ended meanwhile, or never was, which ends the session.
VtClient::Link* VtClient::LinkOfMessage(quint32 sub) {
    if (sub != 0 && sub <= m_lastSub) return FindLink(sub);
    Fail(EBye::Malformed, QStringLiteral("an unknown subscription %1").arg(sub));
    return nullptr;
}

void VtClient::OnWelcome(const Message& message) {
    if (message.version != vtlimits::ProtocolVersion)
        return Fail(EBye::Version, QStringLiteral("the server speaks version %1").arg(message.version));
    m_channel->SetMaxMessage(vtlimits::MaxFrame);
    m_state = EState::Connected;
    m_session = message.session;
    m_serverApplication = message.application;
    // The more patient of the two, but the ping must come before the server's patience ends.
    m_deadAfter = std::max(m_options.deadAfter, message.ping);
    m_pingInterval =
        std::max(std::chrono::milliseconds(1), std::min(m_options.pingInterval, message.dead / 3));
    m_failures = 0;
    m_isRefused = false;
    m_lastError.clear();
    m_received = 0;
    m_unackedMessages = 0;
    m_unackedBytes = 0;
    m_lastSub = 0;
    m_lastPing = m_loop->Now() - m_pingInterval;  // one at once, to know the latency
    SetNextDeadline();
    for (const auto& link : m_links)
        if (!link->mirror->IsReleased()) Subscribe(*link);
    NotifyObservers(connectioncode::Connected);
}

void VtClient::OnPong(const Message& message) {
    const std::chrono::microseconds sent(static_cast<qint64>(message.seq));
    const std::chrono::microseconds now = m_loop->Now();
    if (sent <= now && now - sent <= m_deadAfter) m_latency = now - sent;
}

void VtClient::Subscribe(Link& link) {
    link.sub = ++m_lastSub;
    link.sequence = 0;
    link.isReceiving = false;
    Message subscribe = Message::Of(EMessage::Subscribe);
    subscribe.sub = link.sub;
    subscribe.path = link.mirror->RemotePath();
    Send(subscribe);
}

void VtClient::Unsubscribe(Link& link) {
    if (link.sub == 0) return;
    Message unsubscribe = Message::Of(EMessage::Unsubscribe);
    unsubscribe.sub = link.sub;
    link.sub = 0;
    link.isReceiving = false;
    Send(unsubscribe);
}

void VtClient::Resubscribe(Link& link) {
    Unsubscribe(link);
    link.mirror->Lose();
    TellEstablished();
    if (IsConnected() && !link.mirror->IsReleased()) Subscribe(link);
}

void VtClient::OnSubscribed(Link& link, const Message& message) {
    link.sequence = 0;
    link.isReceiving = true;
    SetAbsent(link, false);
    if (link.mirror->IsEstablished()) link.mirror->Lose();
    link.mirror->Start(message.prefixes, m_session);
}

void VtClient::OnAbsent(Link& link, const Message& message) {
    link.isReceiving = false;
    SetAbsent(link, true);
    if (!message.reason.isEmpty()) {
        link.sub = 0;
        link.mirror->Lose();
        values::Refusals::Instance().Report(nullptr, link.mirror->RemotePath(), message.reason);
    } else if (link.mirror->Root() != nullptr) {
        link.mirror->Vanish();
    }
    const bool isTold = link.mirror->IsEstablished() != link.wasEstablished;
    TellEstablished();
    if (!isTold) TellTics(link);
}

bool VtClient::IsNextInSequence(Link& link, quint64 sequence) {
    if (link.isReceiving && sequence == link.sequence + 1) {
        link.sequence = sequence;
        return true;
    }
    Trace(
        QStringLiteral("Changes of '%1' were missed: taking a new snapshot").arg(link.mirror->RemotePath()));
    Resubscribe(link);
    return false;
}

void VtClient::OnChanges(MessageReader& reader, const ChangesHead& head) {
    Link* const link = LinkOfMessage(head.sub);
    if (link == nullptr || !IsNextInSequence(*link, head.seq)) return;
    QString error;
    const bool isGood = ApplyChanges(*link, reader, head, &error);
    OnApplied(*link, isGood, error);
}

void VtClient::OnEnd(Link& link, const Message& message) {
    if (!IsNextInSequence(link, message.seq)) return;
    QString error;
    const bool isGood = link.mirror->IsEstablished() || link.mirror->Finish(&error);
    OnApplied(link, isGood, error);
}

void VtClient::OnApplied(const Link& link, bool isGood, const QString& error) {
    if (!isGood)
        return Fail(EBye::Malformed,
                    QStringLiteral("changes of '%1': %2").arg(link.mirror->RemotePath(), error));
    if (link.mirror->IsEstablished() != link.wasEstablished) TellEstablished();
}

bool VtClient::ApplyChanges(Link& link, MessageReader& reader, const ChangesHead& head, QString* error) {
    TreeChange change;
    while (reader.NextChange(&change))
        if (!link.mirror->Apply(change, error)) return false;
    *error = reader.Error();
    if (!error->isEmpty()) return false;
    return link.mirror->EndPart(head.type == EMessage::Snapshot || head.more, error);
}

void VtClient::CountForAck(qint64 size) {
    ++m_received;
    ++m_unackedMessages;
    m_unackedBytes += size;
}

void VtClient::OnInputDone() {
    const Busy busy(*this);
    FlushOutput();
}

void VtClient::FlushOutput() {
    if (!m_channel) return;
    const auto hasEdits = [](const std::unique_ptr<Link>& link) { return link->mirror->HasEdits(); };
    if (std::any_of(m_links.begin(), m_links.end(), hasEdits))
        ForEachLink([this](Link& link) {
            if (IsConnected()) link.mirror->SendEdits();
        });
    TellAnswered();  // what was taken back, or need not be sent, is answered
    if (!m_channel) return;
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

void VtClient::Send(const Message& message) {
    const QByteArray bytes = Encode(message);
    SendBytes({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

void VtClient::SendBytes(std::string_view bytes) {
    if (!m_channel) return;
    m_channel->SendInParts(bytes, QByteArray(), {});
    if (!m_hasOutput && m_depth == 0) RequestTurn();
    m_hasOutput = true;
}

void VtClient::RequestTurn() {
    if (m_isTurnRequested || m_state == EState::Ended) return;
    m_isTurnRequested = true;
    m_loop->RequestTurn();
}

void VtClient::OnTurn() {
    const Busy busy(*this);
    m_isTurnRequested = false;
    if (m_depth == 1) {
        m_deadLinks.clear();
        m_deadChannels.clear();
    }
    if (m_state == EState::Idle) StartConnecting();
    if (std::exchange(m_hasReleased, false)) TellEstablished();
    const std::vector<VtTic*> tics = std::move(m_ticsToTell);
    m_ticsToTell.clear();
    for (VtTic* tic : tics) {
        const auto isTic = [tic](const auto& other) { return other.get() == tic; };
        if (std::any_of(m_tics.begin(), m_tics.end(), isTic) && tic->IsEstablished())
            tic->NotifyObservers(connectioncode::TicsChanged);
    }
    if (!tics.empty()) NotifyObservers(connectioncode::TicsChanged);
    FlushOutput();
}

// Requests --------------------------------------------------------------------------------------------------

void VtClient::OnEdits(TreeMirror& /*mirror*/) {
    m_hadUnanswered = true;
    // While input is handled it is sent at the end of that.
    if (m_depth == 0) RequestTurn();
}

quint32 VtClient::SendWrite(TreeMirror& mirror, WriteMessage* write) {
    Link* const link = FindLink(mirror);
    write->req = m_lastRequest + 1;
    write->sub = link->sub;
    const std::string_view bytes = Encode(*write);
    return bytes.size() > vtlimits::MaxFrame ? 0 : SendRequest(*link, bytes);
}

quint32 VtClient::SendCreation(TreeMirror& mirror, Message* create, const values::TreeItem& item) {
    Link* const link = FindLink(mirror);
    create->req = m_lastRequest + 1;
    create->sub = link->sub;
    DescribeItem(item, &create->item);
    const QByteArray bytes = Encode(*create);
    const bool isTooLarge = static_cast<quint32>(bytes.size()) > vtlimits::MaxFrame ||
                            create->path.size() > vtlimits::MaxPathLength;
    return isTooLarge ? 0 : SendRequest(*link, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

quint32 VtClient::SendRequest(Link& link, std::string_view bytes) {
    m_requests[++m_lastRequest] = &link;
    m_hadUnanswered = true;
    SendBytes(bytes);
    return m_lastRequest;
}

void VtClient::OnAnswer(const AnswerMessage& answer) {
    const auto request = m_requests.find(answer.req);
    if (request == m_requests.end()) return Fail(EBye::Malformed, QStringLiteral("an answer to no request"));
    Link* const link = request->second;
    m_requests.erase(request);
    link->mirror->OnAnswer(answer);
    TellAnswered();
}

bool VtClient::HasUnansweredWrites() const {
    return std::any_of(m_links.begin(), m_links.end(),
                       [](const auto& link) { return link->mirror->HasUnanswered(); });
}

void VtClient::TellAnswered() {
    if (!m_hadUnanswered || HasUnansweredWrites()) return;
    m_hadUnanswered = false;
    NotifyObservers(connectioncode::WritesAnswered);
}

void VtClient::OnRootDeleted(TreeMirror& mirror) {
    Link* const link = FindLink(mirror);
    if (link == nullptr) return;
    Unsubscribe(*link);
    RequestTurn();
    TellEstablished();
}

}  // namespace vt
