// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/vtclient.h>

#include <platform/app/errorhandler.h>
#include <platform/app/vornos.h>
#include <platform/config/cfgcenter.h>
#include <platform/values/node.h>
#include <platform/values/refusals.h>
#include <platform/vtclient/changewriter.h>
#include <platform/vtclient/itemkinds.h>
#include <platform/vtclient/treepath.h>
#include <platform/vtclient/vtlimits.h>
#include <platform/vtclient/vttic.h>

#include <algorithm>

namespace vt {

namespace {

constexpr const wchar_t* SourcePath = L"platform/vtclient/vtclient";
constexpr qint64 Millisecond = 1000;  // µs

void Trace(const QString& message) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(message, SourcePath, __LINE__);
}

}  // namespace

/// While it lives the client must not be destroyed: a call of it is under way.
class VtClient::Busy {
  public:
    explicit Busy(VtClient& client) : m_client(client) { ++client.m_depth; }
    ~Busy() { --m_client.m_depth; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

  private:
    VtClient& m_client;
};

VtClient::VtClient(QString address, int port, VtClientOptions options, std::unique_ptr<IConnector> connector,
                   std::unique_ptr<IEventLoop> loop)
    : m_address(std::move(address)),
      m_port(port),
      m_options(std::move(options)),
      m_connector(std::move(connector)),
      m_loop(std::move(loop)) {
    m_connector->SetListener(this);
    m_loop->SetTaker(this);
    RequestTurn();
}

VtClient::~VtClient() {
    Shutdown();
}

void VtClient::Shutdown() {
    if (m_state == EState::Ended) return;
    const Busy busy(*this);
    NotifyObservers(connectioncode::GoingAway);
    m_connector->Abort();
    if (m_channel && m_channel->IsOpen()) {
        Message bye = Message::Of(EMessage::Bye);
        bye.code = EBye::ClientEnds;
        bye.reason = QStringLiteral("the client ends");
        Send(bye);
    }
    m_state = EState::Ended;
    if (m_channel) {
        m_channel->Close();
        m_channel->SetListener(nullptr);
    }
    while (!m_tics.empty())
        RemoveTic(m_tics.front().get());
    m_loop->SetTaker(nullptr);
    m_loop->SetDeadline(-1);
}

// Connecting ------------------------------------------------------------------------------------------------

void VtClient::StartConnecting() {
    m_state = EState::Connecting;
    m_stateDeadline = m_loop->Now() + m_options.connectTimeout * Millisecond;
    m_connector->Connect();
    SetNextDeadline();
}

void VtClient::OnConnected(std::unique_ptr<IChannel> channel) {
    const Busy busy(*this);
    m_channel = std::move(channel);
    m_channel->SetListener(this);
    m_state = EState::Greeting;
    m_lastReceived = m_loop->Now();
    Message hello = Message::Of(EMessage::Hello);
    hello.version = vtlimits::ProtocolVersion;
    hello.application = CfgCenter::GetAppName().left(vtlimits::MaxHelloText);
    hello.machine = VornOS::Create()->GetMachineName().left(vtlimits::MaxHelloText);
    const bool isSafe = m_channel->IsEncrypted() || m_channel->IsLoopback();
    if (isSafe) {
        hello.user = m_options.user.left(vtlimits::MaxHelloText);
        hello.token = m_options.token.left(vtlimits::MaxHelloText);
    } else if (!m_options.token.isEmpty()) {
        Trace(QStringLiteral("The token is not sent to %1: the connection is not encrypted").arg(m_address));
    }
    Send(hello);
    FlushOutput();
}

void VtClient::OnConnectFailed(const QString& reason) {
    const Busy busy(*this);
    Retry(reason);
}

void VtClient::Retry(const QString& reason) {
    if (m_state == EState::Ended) return;
    if (reason != m_lastError)
        Trace(QStringLiteral("No connection to %1 port %2: %3").arg(m_address).arg(m_port).arg(reason));
    m_lastError = reason;
    m_state = EState::Waiting;
    const int doublings = std::min(m_failures++, 16);
    const qint64 longest =
        std::min<qint64>(qint64{m_options.firstRetry} << doublings, m_options.longestRetry);
    // Half of it by chance, so that the clients of a server that was restarted do not come all at once.
    const auto wait = static_cast<qint64>(static_cast<double>(longest) * (0.5 + 0.5 * m_loop->Random()));
    m_stateDeadline = m_loop->Now() + wait * Millisecond;
    SetNextDeadline();
}

void VtClient::SetNextDeadline() {
    if (m_state == EState::Idle || m_state == EState::Ended) return;
    qint64 next = m_stateDeadline;
    if (m_state == EState::Connected) {
        next =
            std::min(m_lastPing + m_pingInterval * Millisecond, m_lastReceived + m_deadAfter * Millisecond);
    }
    const qint64 wait = std::max<qint64>(0, next - m_loop->Now());
    m_loop->SetDeadline(static_cast<int>((wait + Millisecond - 1) / Millisecond));
}

void VtClient::OnDeadline() {
    const Busy busy(*this);
    const qint64 now = m_loop->Now();
    if (m_state == EState::Waiting && now >= m_stateDeadline) {
        StartConnecting();
    } else if (m_state == EState::Connecting && now >= m_stateDeadline) {
        m_connector->Abort();
        Retry(QStringLiteral("no connection within %1 ms").arg(m_options.connectTimeout));
    } else if (m_state == EState::Greeting && now >= m_stateDeadline) {
        Fail(EBye::Silence, QStringLiteral("no welcome within %1 ms").arg(m_options.connectTimeout));
    } else if (m_state == EState::Connected && now - m_lastReceived >= m_deadAfter * Millisecond) {
        Fail(EBye::Silence,
             QStringLiteral("nothing heard for %1 ms").arg((now - m_lastReceived) / Millisecond));
    } else if (m_state == EState::Connected && now - m_lastPing >= m_pingInterval * Millisecond) {
        m_lastPing = now;
        Message ping = Message::Of(EMessage::Ping);
        ping.seq = static_cast<quint64>(now);
        Send(ping);
        FlushOutput();
    }
    SetNextDeadline();
}

void VtClient::OnClosed(const QString& reason) {
    const Busy busy(*this);
    if (m_channel->IsOpen()) return Fail(EBye::Limit, reason);  // it was the server that broke a rule
    if (m_state != EState::Greeting) return EndSession(reason);
    const QString hint = m_channel->IsEncrypted() ? QString() : QStringLiteral(" (does it want TLS?)");
    EndSession(QStringLiteral("%1 before it welcomed us%2").arg(reason, hint));
}

// The server broke a rule, or is silent.
void VtClient::Fail(EBye code, const QString& reason) {
    if (m_state != EState::Greeting && m_state != EState::Connected) return;
    Message bye = Message::Of(EMessage::Bye);
    bye.code = code;
    bye.reason = reason;
    Send(bye);
    EndSession(reason);
}

void VtClient::EndSession(const QString& reason) {
    if (!m_channel) return;
    const bool wasConnected = IsConnected();
    m_channel->Close();
    m_channel->SetListener(nullptr);
    m_deadChannels.push_back(std::move(m_channel));
    m_serverApplication.clear();
    m_latency = -1;
    m_hasOutput = false;
    m_requests.clear();
    Retry(reason);
    // All is stale before anybody hears of it by other ways.
    ForEachLink([this](Link& link) {
        link.sub = 0;
        link.isReceiving = false;
        SetAbsent(link, false);
        link.mirror->Lose();
    });
    if (wasConnected) NotifyObservers(connectioncode::Disconnected);
    TellEstablished();
    TellAnswered();
    RequestTurn();  // which destroys the channel
}

// The session -----------------------------------------------------------------------------------------------

void VtClient::OnMessage(const char* data, qint64 size) {
    const Busy busy(*this);
    m_lastReceived = m_loop->Now();
    Message message;
    MessageReader reader(data, size);
    if (!reader.ReadHeader(&message))
        return Fail(EBye::Malformed, QStringLiteral("malformed message: %1").arg(reader.Error()));
    Dispatch(reader, message, size);
}

void VtClient::Dispatch(MessageReader& reader, const Message& message, qint64 size) {
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
        case EMessage::Answer:
            return OnAnswer(message);
        case EMessage::Snapshot:
        case EMessage::Batch:
        case EMessage::End:
            CountForAck(size);
            break;
        case EMessage::Subscribed:
        case EMessage::Absent:
            break;
        default:
            return Fail(EBye::Malformed, QStringLiteral("a message that only a client sends"));
    }
    if (message.sub == 0 || message.sub > m_lastSub)
        return Fail(EBye::Malformed, QStringLiteral("an unknown subscription %1").arg(message.sub));
    Link* const link = FindLink(message.sub);
    if (link == nullptr) return;  // ended meanwhile
    if (message.type == EMessage::Subscribed) return OnSubscribed(*link, message);
    if (message.type == EMessage::Absent) return OnAbsent(*link, message);
    OnChanges(*link, reader, message);
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
    m_pingInterval = std::max(1, std::min(m_options.pingInterval, message.dead / 3));
    m_failures = 0;
    m_isRefused = false;
    m_lastError.clear();
    m_received = 0;
    m_unackedMessages = 0;
    m_unackedBytes = 0;
    m_lastSub = 0;
    m_lastPing = m_loop->Now() - m_pingInterval * Millisecond;  // one at once, to know the latency
    SetNextDeadline();
    for (const auto& link : m_links)
        Subscribe(*link);
    NotifyObservers(connectioncode::Connected);
}

void VtClient::OnPong(const Message& message) {
    const qint64 sent = static_cast<qint64>(message.seq);
    const qint64 now = m_loop->Now();
    if (sent <= now && now - sent <= m_deadAfter * Millisecond) m_latency = static_cast<int>(now - sent);
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

void VtClient::OnChanges(Link& link, MessageReader& reader, const Message& message) {
    if (!IsNextInSequence(link, message.seq)) return;
    QString error;
    bool isGood = true;
    if (message.type == EMessage::End)
        isGood = link.mirror->IsEstablished() || link.mirror->Finish(&error);
    else
        isGood = ApplyChanges(link, reader, message, &error);
    if (!isGood)
        return Fail(EBye::Malformed,
                    QStringLiteral("changes of '%1': %2").arg(link.mirror->RemotePath(), error));
    if (link.mirror->IsEstablished() != link.wasEstablished) TellEstablished();
}

bool VtClient::ApplyChanges(Link& link, MessageReader& reader, const Message& message, QString* error) {
    TreeChange change;
    while (reader.NextChange(&change))
        if (!link.mirror->Apply(change, error)) return false;
    *error = reader.Error();
    if (!error->isEmpty()) return false;
    return link.mirror->EndPart(message.type == EMessage::Snapshot || message.more, error);
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
    ForEachLink([this](Link& link) {
        if (IsConnected()) link.mirror->SendEdits();
    });
    TellAnswered();  // what was taken back, or need not be sent, is answered
    if (!m_channel) return;
    const bool isDue =
        m_unackedMessages >= vtlimits::AckAfterMessages || m_unackedBytes >= vtlimits::AckAfterBytes;
    if (IsConnected() && isDue) {
        Message ack = Message::Of(EMessage::Ack);
        ack.seq = m_received;
        Send(ack);
        m_unackedMessages = 0;
        m_unackedBytes = 0;
    }
    if (m_hasOutput) m_channel->Flush();
    m_hasOutput = false;
}

void VtClient::Send(const Message& message) {
    SendBytes(Encode(message));
}

void VtClient::SendBytes(const QByteArray& bytes) {
    if (!m_channel) return;
    m_channel->Send(bytes);
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

quint32 VtClient::SendRequest(TreeMirror& mirror, Message* message, const values::TreeItem* item) {
    Link* const link = FindLink(mirror);
    message->req = m_lastRequest + 1;
    message->sub = link->sub;
    if (item != nullptr) DescribeItem(*item, &message->item);
    const QByteArray bytes = Encode(*message);
    const bool isTooLarge = static_cast<quint32>(bytes.size()) > vtlimits::MaxFrame ||
                            message->path.size() > vtlimits::MaxPathLength;
    if (isTooLarge) return 0;
    m_requests[++m_lastRequest] = link;
    m_hadUnanswered = true;
    SendBytes(bytes);
    return m_lastRequest;
}

void VtClient::OnAnswer(const Message& message) {
    const auto request = m_requests.find(message.req);
    if (request == m_requests.end()) return Fail(EBye::Malformed, QStringLiteral("an answer to no request"));
    Link* const link = request->second;
    m_requests.erase(request);
    link->mirror->OnAnswer(message);
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

// Tics ------------------------------------------------------------------------------------------------------

VtClient::Link* VtClient::FindLink(quint32 sub) {
    const auto hasSub = [sub](const auto& link) { return link->sub == sub; };
    const auto found = std::find_if(m_links.begin(), m_links.end(), hasSub);
    return found != m_links.end() ? found->get() : nullptr;
}

VtClient::Link* VtClient::FindLink(const TreeMirror& mirror) {
    const auto isIts = [&mirror](const auto& link) { return link->mirror.get() == &mirror; };
    const auto found = std::find_if(m_links.begin(), m_links.end(), isIts);
    return found != m_links.end() ? found->get() : nullptr;
}

VtClient::Link* VtClient::LinkFor(const QString& localPath, const QString& remotePath) {
    for (const auto& link : m_links) {
        const TreeMirror& mirror = *link->mirror;
        if (mirror.LocalPath() == localPath && mirror.RemotePath() == remotePath && !mirror.IsReleased())
            return link.get();
        const bool isNested =
            IsAtOrBelow(localPath, mirror.LocalPath()) || IsAtOrBelow(mirror.LocalPath(), localPath);
        if (isNested && !mirror.IsReleased()) {
            Trace(QStringLiteral("'%1' cannot be mirrored at '%2': '%3' is mirrored at '%4'")
                      .arg(remotePath, localPath, mirror.RemotePath(), mirror.LocalPath()));
            return nullptr;
        }
    }
    auto link = std::make_unique<Link>();
    link->mirror =
        std::make_unique<TreeMirror>(localPath, remotePath, static_cast<TreeMirror::IHost&>(*this));
    m_links.push_back(std::move(link));
    if (IsConnected()) Subscribe(*m_links.back());
    return m_links.back().get();
}

IVtTic* VtClient::AddTic(const QString& spec, const char* /*options*/) {
    if (m_state == EState::Ended) return nullptr;
    const int comma = spec.indexOf(QStringLiteral(",/"));
    const QString local = spec.left(comma);
    const QString remote = spec.mid(comma + 1);
    if (comma < 1 || !local.startsWith(QLatin1Char('/')) || remote.size() > vtlimits::MaxPathLength) {
        Trace(QStringLiteral("'%1' is no local path, a comma and a remote path").arg(spec));
        return nullptr;
    }
    Link* const link = LinkFor(NormalisedPath(local), NormalisedPath(remote));
    if (link == nullptr) return nullptr;
    m_tics.push_back(std::make_unique<VtTic>(local, remote, *link->mirror));
    VtTic* const tic = m_tics.back().get();
    link->tics.push_back(tic);
    tic->SetAbsent(link->isAbsent);
    if (link->mirror->IsEstablished()) {
        m_ticsToTell.push_back(tic);
        RequestTurn();
    }
    return tic;
}

void VtClient::RemoveTic(IVtTic* tic) {
    const auto isTic = [tic](const auto& other) { return other.get() == tic; };
    const auto found = std::find_if(m_tics.begin(), m_tics.end(), isTic);
    if (found == m_tics.end()) return;
    const Busy busy(*this);
    const std::unique_ptr<VtTic> removed = std::move(*found);
    m_tics.erase(found);
    for (const auto& link : m_links) {
        auto& tics = link->tics;
        const auto its = std::find(tics.begin(), tics.end(), removed.get());
        if (its == tics.end()) continue;
        tics.erase(its);
        if (tics.empty()) DropLink(link.get());
        break;
    }
    removed->Detach();
    removed->NotifyObservers(connectioncode::GoingAway);
    RequestTurn();
}

void VtClient::DropLink(Link* link) {
    const auto isIt = [link](const auto& other) { return other.get() == link; };
    const auto found = std::find_if(m_links.begin(), m_links.end(), isIt);
    std::unique_ptr<Link> dropped = std::move(*found);
    m_links.erase(found);
    for (auto request = m_requests.begin(); request != m_requests.end();)
        request = request->second == link ? m_requests.erase(request) : std::next(request);
    Unsubscribe(*dropped);
    m_deadLinks.push_back(std::move(dropped));
    m_deadLinks.back()->mirror->Release(nullptr);
}

void VtClient::ReleaseNode(values::Node* node) {
    if (node == nullptr) return;
    const Busy busy(*this);
    ForEachLink([this, node](Link& link) {
        link.mirror->Release(node);
        if (link.mirror->IsReleased()) Unsubscribe(link);
    });
    TellEstablished();
    RequestTurn();
}

bool VtClient::AreAllTicsEstablished() const {
    return IsConnected() &&
           std::all_of(m_tics.begin(), m_tics.end(), [](const auto& tic) { return tic->IsEstablished(); });
}

// Whoever is told may add and remove tics. A link that was dropped meanwhile lasts until the next turn.
template <class Visit>
void VtClient::ForEachLink(const Visit& visit) {
    std::vector<Link*> links;
    for (const auto& link : m_links)
        links.push_back(link.get());
    for (Link* link : links)
        if (HasLink(link)) visit(*link);
}

bool VtClient::HasLink(const Link* link) const {
    return std::any_of(m_links.begin(), m_links.end(),
                       [link](const auto& other) { return other.get() == link; });
}

void VtClient::TellEstablished() {
    bool hasChanged = false;
    ForEachLink([this, &hasChanged](Link& link) {
        if (link.mirror->IsEstablished() == link.wasEstablished) return;
        link.wasEstablished = !link.wasEstablished;
        hasChanged = true;
        TellTics(link);
    });
    if (hasChanged) NotifyObservers(connectioncode::TicsChanged);
}

void VtClient::TellTics(const Link& link) {
    const std::vector<VtTic*> tics = link.tics;
    for (VtTic* tic : tics) {
        const auto isTic = [tic](const auto& other) { return other.get() == tic; };
        if (std::any_of(m_tics.begin(), m_tics.end(), isTic))
            tic->NotifyObservers(connectioncode::TicsChanged);
    }
}

void VtClient::SetAbsent(Link& link, bool isAbsent) {
    link.isAbsent = isAbsent;
    for (VtTic* tic : link.tics)
        tic->SetAbsent(isAbsent);
}

}  // namespace vt
