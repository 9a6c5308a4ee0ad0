// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/serversession.h>

#include <platform/app/trace.h>
#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/vtattemptlimiter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/messagereader.h>
#include <platform/vtclient/wire/messagewriter.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <type_traits>

namespace vt {

namespace {

constexpr int MaxTracedName = 80;  // UTF-16 code units: why the session ends comes behind it

}  // namespace

ServerSession::ServerSession(ServerHub& hub, std::unique_ptr<IChannel> channel, int number)
    : m_hub(hub),
      m_channel(std::move(channel)),
      m_lastReceived(hub.Now()),
      m_lastSent(hub.Now()),
      m_owingSince(hub.Now()),
      m_recalls(hub, [this](const RecalledMessage& recalled) { Send(recalled); }) {
    m_peer.session = number;
    m_peer.address = m_channel->PeerAddress();
    m_peer.isLoopback = m_channel->IsLoopback();
    m_peer.isEncrypted = m_channel->IsEncrypted();
    m_peer.certificateName = m_channel->CertificateName();
    m_channel->SetListener(this);
}

ServerSession::~ServerSession() {
    Release();
}

void ServerSession::Release() {
    for (auto& subscription : m_subscriptions)
        m_hub.Subtrees().Leave(*subscription.second);
    m_subscriptions.clear();
}

void ServerSession::End(EBye code, const QString& reason) {
    if (m_isEnded) return;
    Send(ByeMessage{code, reason});
    m_isEnded = true;
    m_channel->Close();
    for (auto& subscription : m_subscriptions)
        subscription.second->Forget();
    if (code != EBye::ServerEnds) TraceEnd(reason);
    m_hub.OnSessionEnded(*this);
}

// What is over a bound may be what this client holds, or another.
void ServerSession::CountHeld() {
    if (m_isEnded) return;
    m_unfinished = m_channel->Unfinished();
    auto held = static_cast<std::size_t>(m_unfinished + m_channel->Unsent());
    held += m_lateAnswers.size() * sizeof(m_lateAnswers[0]) + m_recalls.HeldBytes();
    for (const auto& subscription : m_subscriptions)
        held += subscription.second->HeldBytes();
    m_hub.Charge(*this, static_cast<qint64>(held));
}

void ServerSession::TraceEnd(const QString& reason) const {
    const QString who = m_peer.application.isEmpty() ? QStringLiteral("a client") : m_peer.application;
    MCS_TRACE_OF(VtAttemptLimiter::HostOf(m_peer.address),
                 QStringLiteral("Session %1 (%2, %3) ends: %4")
                     .arg(m_peer.session)
                     .arg(who.left(MaxTracedName), m_peer.address, reason));
}

void ServerSession::OnClosed(const QString& reason) {
    if (m_isEnded) return;
    if (m_channel->IsOpen()) return End(EBye::Limit, reason);  // it was the client that broke a rule
    m_isEnded = true;
    TraceEnd(reason);
    m_hub.OnSessionEnded(*this);
}

template <class M>
void ServerSession::Send(const M& message) {
    SendBytes(Encode(message));
}

void ServerSession::SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) {
    if (m_isEnded) return;
    m_channel->SendInParts(head, shared, tail);
    m_lastSent = m_hub.Now();
    m_hub.FlushLater(*this);
}

void ServerSession::Check(std::chrono::microseconds now) {
    if (m_isEnded) return;
    const auto silence = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_lastReceived);
    if (!m_isAdmitted) {
        if (silence >= vtlimits::HelloTimeout) End(EBye::Silence, QStringLiteral("no hello in time"));
        return;
    }
    if (silence >= m_hub.DeadAfter())
        return End(EBye::Silence, QStringLiteral("nothing heard for %1 ms").arg(silence.count()));
    CheckAcknowledging(now);
    if (!m_recalls.IsEmpty()) m_hub.ServeLater(*this);
    m_channel->GiveBackRoom();
    CountHeld();
    if (m_isEnded) return;
    if (now - m_lastSent < m_hub.PingInterval()) return;
    Send(PingMessage{static_cast<quint64>(now.count())});
}

// Slow is who acknowledges late; who owes it and acknowledges nothing takes room that nobody needs.
void ServerSession::CheckAcknowledging(std::chrono::microseconds now) {
    const bool isOwing =
        m_inFlight.size() >= vtlimits::AckAfterMessages || m_inFlightBytes >= vtlimits::AckAfterBytes;
    if (!isOwing || m_acked != m_ackedWhenChecked) m_owingSince = now;
    m_ackedWhenChecked = m_acked;
    m_isStuck = m_owingSince != now;
    const auto patience = std::chrono::duration_cast<std::chrono::seconds>(now - m_owingSince);
    if (patience < vtlimits::AckPatience) return;
    End(EBye::TooSlow, QStringLiteral("nothing acknowledged for %1 s").arg(patience.count()));
}

void ServerSession::OnMessage(const char* data, qint64 size) {
    if (m_isEnded) return;
    ++m_messagesUnderWay;
    Handle(data, size);
    --m_messagesUnderWay;
    if (m_isEnded) m_hub.OnSessionEnded(*this);
}

void ServerSession::Handle(const char* data, qint64 size) {
    m_hub.OnInput();
    m_lastReceived = m_hub.Now();
    MessageReader reader(data, size);
    if (!reader.Read([this](const auto& message) { Receive(message); }))
        return End(EBye::Malformed, QStringLiteral("malformed message: %1").arg(reader.Error()));
    if (m_isEnded) return;
    const qint64 unsent = m_channel->Unsent();
    if (unsent > vtlimits::MaxUnsent)
        return End(EBye::TooSlow, QStringLiteral("the client sends but does not read"));
    if (unsent > vtlimits::UnsentToNote) CountHeld();
}

void ServerSession::OnInputDone() {
    if (m_channel->Unfinished() != m_unfinished) CountHeld();
    m_hub.OnInputDone();
}

template <class M>
void ServerSession::Receive(const M& message) {
    constexpr bool IsHello = std::is_same_v<M, HelloMessage>;
    if (!m_isAdmitted) {
        if constexpr (IsHello) return On(message);
        return End(EBye::Malformed, QStringLiteral("the first message must be a hello"));
    }
    if constexpr (!IsHello && IsSentBy<M>(ESender::Client)) return On(message);
    End(EBye::Malformed, QStringLiteral("a message that only a server sends, or a second hello"));
}

void ServerSession::On(const ByeMessage& /*bye*/) {
    m_isEnded = true;
    m_channel->Close();
    m_hub.OnSessionEnded(*this);
}

void ServerSession::On(const PingMessage& ping) {
    Send(PongMessage{ping.number});
}

void ServerSession::On(const HelloMessage& hello) {
    if (hello.version != vtlimits::ProtocolVersion)
        return End(EBye::Version, QStringLiteral("this server speaks version %1 of the protocol, not %2")
                                      .arg(vtlimits::ProtocolVersion)
                                      .arg(hello.version));
    m_peer.application = hello.application;
    m_peer.machine = hello.machine;
    QString reason;
    if (!m_hub.Access().Admit(m_peer, hello.user, hello.token, &reason))
        return End(EBye::NotAdmitted, reason);
    if (m_isEnded) return;
    reason = m_hub.MakePlace(m_peer);
    if (!reason.isEmpty()) return End(EBye::Limit, reason);
    m_isAdmitted = true;
    m_channel->SetMaxMessage(vtlimits::MaxFrame);
    WelcomeMessage welcome;
    welcome.version = vtlimits::ProtocolVersion;
    welcome.application = m_hub.Application().left(vtlimits::MaxHelloText);
    welcome.session = m_peer.session;
    welcome.epoch = m_hub.Epoch();
    welcome.ping = m_hub.PingInterval();
    welcome.dead = m_hub.DeadAfter();
    Send(welcome);
    m_hub.OnAdmitted(*this);
}

void ServerSession::On(const SubscribeMessage& subscribe) {
    if (subscribe.sub == 0 || subscribe.sub > 0x7fffffffU || m_subscriptions.count(subscribe.sub) != 0)
        return End(EBye::Malformed,
                   QStringLiteral("%1 is no free number of a subscription").arg(subscribe.sub));
    if (m_subscriptions.size() >= vtlimits::MaxSubscriptions)
        return End(EBye::Limit, QStringLiteral("more than %1 subscriptions").arg(vtlimits::MaxSubscriptions));
    if (!subscribe.path.startsWith(QLatin1Char('/')))
        return End(EBye::Malformed, QStringLiteral("'%1' is no absolute path").arg(subscribe.path));
    auto subscription =
        std::make_unique<Subscription>(*this, subscribe.sub, NormalisedPath(subscribe.path), subscribe.look);
    if (!m_hub.Access().MayRead(m_peer, subscription->Path()))
        return TellAbsent(
            *subscription,
            QStringLiteral("'%1' may not be read by '%2'").arg(subscription->Path(), m_peer.user));
    const QString reason =
        subscribe.look ? QString() : m_hub.Access().ProvideNode(m_peer, subscription->Path());
    if (m_isEnded) return;
    if (!reason.isEmpty() && values::Tree::Instance()->FindItem(subscription->Path()) == nullptr)
        return TellAbsent(*subscription, reason);
    Subscription& added = *(m_subscriptions[subscribe.sub] = std::move(subscription));
    m_hub.Subtrees().Join(added);
    CountHeld();
}

void ServerSession::Subscribe(Subscription& subscription) {
    SubscribedMessage subscribed;
    subscribed.sub = subscription.Number();
    // What is longer than a path may be matches none.
    for (const QString& prefix : m_hub.Access().WritablePrefixes(m_peer))
        if (prefix.size() <= vtlimits::MaxPathLength) subscribed.prefixes.append(prefix);
    Send(subscribed);
}

void ServerSession::TellAbsent(Subscription& subscription, const QString& reason) {
    Send(AbsentMessage{subscription.Number(), reason});
}

void ServerSession::On(const UnsubscribeMessage& unsubscribe) {
    const auto found = m_subscriptions.find(unsubscribe.sub);
    if (found == m_subscriptions.end()) return;  // it may have been denied meanwhile
    const std::unique_ptr<Subscription> subscription = std::move(found->second);
    m_subscriptions.erase(found);
    m_hub.Subtrees().Leave(*subscription);
    for (const QString& path : subscription->Wanted()) {
        if (m_isEnded) return;
        m_hub.Access().NodeReleased(m_peer, path);
    }
    if (!m_isEnded && !subscription->IsLook()) m_hub.Access().NodeReleased(m_peer, subscription->Path());
}

void ServerSession::CountSent(int bytes) {
    m_inFlight.push_back(bytes);
    m_inFlightBytes += bytes;
}

void ServerSession::SendChanges(Subscription& subscription, const QByteArray& changes, bool hasMore) {
    const quint32 sub = subscription.Number();
    const quint64 seq = subscription.NextSequence();
    const std::string_view head = subscription.IsLive() ? EncodeHead(BatchMessage{sub, seq, hasMore})
                                                        : EncodeHead(SnapshotMessage{sub, seq});
    SendInParts(head, changes, ChangesEnd);
    CountSent(changes.size());
}

void ServerSession::SendEnd(Subscription& subscription) {
    Send(EndMessage{subscription.Number(), subscription.NextSequence(), m_hub.Epoch()});
    CountSent(0);
    subscription.SetLive();
}

void ServerSession::On(const AckMessage& ack) {
    if (ack.count < m_acked || ack.count - m_acked > m_inFlight.size())
        return End(EBye::Malformed, QStringLiteral("an acknowledgement of what was not sent"));
    for (; m_acked < ack.count; ++m_acked) {
        m_inFlightBytes -= m_inFlight.front();
        m_inFlight.pop_front();
    }
    m_hub.ServeLater(*this);
}

bool ServerSession::SendBacklogOf(Subscription& subscription, const std::function<bool()>& isTimeUp) {
    const TreeWatcher* const watcher = subscription.Watcher();
    if (watcher == nullptr || watcher->HasChanges() || subscription.IsInStep()) return false;
    subscription.WriteBacklog(&m_writer, isTimeUp);
    const bool hasWritten = m_writer.Size() != 0;
    if (hasWritten) SendChanges(subscription, m_writer.Take(), subscription.LacksStructure());
    if (!subscription.IsLive() && subscription.IsUpToDate() && watcher->IsTakenIn()) SendEnd(subscription);
    return hasWritten;
}

// One message, then the next session: a large first look does not make others wait.
bool ServerSession::SendBacklog(const std::function<bool()>& isTimeUp) {
    auto next = m_subscriptions.lower_bound(m_nextServed);
    for (std::size_t i = 0; i < m_subscriptions.size() && MaySendChanges(); ++i, ++next) {
        if (next == m_subscriptions.end()) next = m_subscriptions.begin();
        if (!SendBacklogOf(*next->second, isTimeUp)) continue;
        m_nextServed = next->first + 1;
        CountHeld();
        return MaySendChanges();
    }
    return false;
}

void ServerSession::CheckQueue() {
    std::size_t queued = 0;
    for (const auto& subscription : m_subscriptions)
        queued += subscription.second->QueuedBytes();
    if (queued > vtlimits::MaxQueuedOccurrences)
        End(EBye::TooSlow,
            QStringLiteral("the client does not keep up: %1 bytes of changes wait").arg(queued));
    CountHeld();
}

// What the road of the subscription has said is before the answer, and the rest behind it.
void ServerSession::SendAnswer(quint32 sub, const AnswerMessage& answer) {
    m_roads.TellPosition(sub);
    SendBytes(Encode(answer));
}

void ServerSession::Answer(const WriteMessage& write, AnswerMessage* answer, EResult result,
                           const QString& reason) {
    answer->result = result;
    answer->reason = reason;
    // The content comes as a change as well, or is described as too large.
    if (answer->IsClamped() && Encode(*answer).size() > vtlimits::MaxFrame) answer->result = EResult::Done;
    SendAnswer(write.sub, *answer);
}

void ServerSession::On(const WriteMessage& write) {
    AnswerMessage answer;
    answer.req = write.req;
    const auto found = m_subscriptions.find(write.sub);
    TreeWatcher* const watcher = found == m_subscriptions.end() ? nullptr : found->second->Watcher();
    values::TreeItem* const item = watcher != nullptr ? watcher->Find(write.id) : nullptr;
    if (item == nullptr) return Answer(write, &answer, EResult::Gone, QStringLiteral("the item has gone"));
    if (item->IsNode())
        return Answer(write, &answer, EResult::Denied, QStringLiteral("a node has no content"));
    const QString path = item->GetPathName();
    QString reason;
    if (!m_hub.Access().MayWrite(m_peer, path, &reason))
        return Answer(write, &answer, EResult::Denied, reason);
    reason = LengthRefusal(write.content, path);
    if (!reason.isEmpty()) return Answer(write, &answer, EResult::Denied, reason);
    Write(write, *watcher, static_cast<values::ValueBase&>(*item), path, &answer);
}

// What a client writes the server keeps, and sends to everybody. Empty if it may be that long.
QString ServerSession::LengthRefusal(const Content& content, const QString& path) const {
    const auto* const numbers = std::get_if<QVector<double>>(&content);
    if (numbers != nullptr && numbers->size() > vtlimits::MaxWrittenNumbers)
        return QStringLiteral("a list has at most %1 numbers, this one has %2")
            .arg(vtlimits::MaxWrittenNumbers)
            .arg(numbers->size());
    const auto* const text = std::get_if<QString>(&content);
    if (text == nullptr || text->size() <= IVtAccess::ShortText) return QString();
    const int most = m_hub.Access().MaxTextLength(m_peer, path);
    if (text->size() <= most) return QString();
    return QStringLiteral("a text has at most %1 characters here, this one has %2")
        .arg(most)
        .arg(text->size());
}

QString ServerSession::LengthRefusal(const ItemDescription& item, const QString& path) const {
    if (item.choices.size() > vtlimits::MaxWrittenChoices)
        return QStringLiteral("a selection has at most %1 items").arg(vtlimits::MaxWrittenChoices);
    for (const Choice& choice : item.choices) {
        const QString refusal = LengthRefusal(choice.text, path);
        if (!refusal.isEmpty()) return refusal;
    }
    return LengthRefusal(item.content, path);
}

void ServerSession::Write(const WriteMessage& write, TreeWatcher& watcher, values::ValueBase& value,
                          const QString& path, AnswerMessage* answer) {
    const EItemKind kind = watcher.KindOfItem(write.id);
    const KindOperations& operations = *Operations(kind);
    Content content;
    if (!operations.take(write.content, &content))
        return Answer(
            write, answer, EResult::Denied,
            QStringLiteral("the content is none of a value of type %1").arg(QLatin1String(operations.name)));
    const ObservableGuard guard(value);
    const TreeWatcher::WriteScope scope(watcher, write.id, m_peer.session);
    if (!operations.write(value, content, nullptr))
        return Answer(write, answer, EResult::Denied,
                      QStringLiteral("the selection has no item with this key"));
    // Whoever was told may have ended the session, or the value.
    if (!m_isEnded) m_hub.Access().ValueWritten(m_peer, path);
    if (!guard.IsAlive()) return Answer(write, answer, EResult::Done);
    answer->content = operations.content(value);
    if (kind == EItemKind::Selection) {
        const auto& selection = static_cast<const values::ValueSelection&>(value);
        const bool isNone = selection.GetCurrentIndex() == values::ValueSelection::NoIndex;
        content = isNone == std::holds_alternative<std::monostate>(content) &&
                          (isNone || std::get<qint64>(content) == selection.GetCurrentKey())
                      ? answer->content
                      : Content(false);
    }
    Answer(write, answer, answer->content == content ? EResult::Done : EResult::Clamped);
}

void ServerSession::On(const CreateMessage& create) {
    const auto found = m_subscriptions.find(create.sub);
    if (found == m_subscriptions.end())
        return SendAnswer(create.sub,
                          {create.req, EResult::Gone, QStringLiteral("the subscription has ended"), {}});
    const QString reason = Create(create, *found->second);
    if (m_isEnded) return;
    CountHeld();
    if (!reason.isEmpty()) return SendAnswer(create.sub, {create.req, EResult::Denied, reason, {}});
    m_lateAnswers.emplace_back(create.sub, AnswerMessage{create.req, EResult::Done, {}, {}});
    m_hub.ServeLater(*this);
}

// After the client was told of the item: so one that is answered and not there has gone again.
void ServerSession::SendLateAnswers() {
    if (m_lateAnswers.empty()) return;
    const auto isDue = [this](const auto& answer) {
        const auto found = m_subscriptions.find(answer.first);
        const Subscription* const subscription =
            found != m_subscriptions.end() ? found->second.get() : nullptr;
        if (subscription == nullptr || subscription->Watcher() == nullptr) return true;
        return !subscription->Watcher()->HasChanges() && !subscription->LacksStructure();
    };
    const auto firstKept = std::stable_partition(m_lateAnswers.begin(), m_lateAnswers.end(), isDue);
    for (auto answer = m_lateAnswers.begin(); answer != firstKept; ++answer)
        SendAnswer(answer->first, answer->second);
    m_lateAnswers.erase(m_lateAnswers.begin(), firstKept);
}

void ServerSession::On(const RecallMessage& recall) {
    if (!recall.path.startsWith(QLatin1Char('/')))
        return End(EBye::Malformed, QStringLiteral("'%1' is no absolute path").arg(recall.path));
    if (m_recalls.Ask(m_peer, recall)) m_hub.ServeLater(*this);
}

// Behind all changes that can be sent, and not while the client has not read what it got.
void ServerSession::Recall() {
    m_recalls.Serve([this] { return !m_isEnded && m_channel->Unsent() < vtlimits::UnsentToNote; });
}

namespace {

// Why \a item, which is there, is not what was asked for; empty if it is.
QString DifferenceOf(const values::TreeItem& item, EItemKind asked) {
    EItemKind kind = EItemKind::Node;
    if (!KindOf(item, &kind)) return QStringLiteral("what is there is of a type that nobody can ask for");
    if (kind == asked) return QString();
    if (kind == EItemKind::Node) return QStringLiteral("what is there is a node");
    return QStringLiteral("what is there is of type %1").arg(QLatin1String(Operations(kind)->name));
}

}  // namespace

// Empty if the item is there afterwards, else why not.
QString ServerSession::Create(const CreateMessage& create, Subscription& subscription) {
    const QString path = NormalisedPath(create.path);
    const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (!IsAtOrBelow(path, subscription.Path()) || names.isEmpty())
        return QStringLiteral("'%1' does not lie in the subscription").arg(path);
    if (names.size() > vtlimits::MaxDepth || names.last().size() > vtlimits::MaxNameLength)
        return QStringLiteral("the path is too deep, or the name too long");
    values::Tree* const tree = values::Tree::Instance();
    QString reason;
    // Nobody provides values. Of a node it is told once, as it is told once that this is over.
    const bool isNode = create.item.kind == EItemKind::Node;
    if (isNode && (subscription.Want(path) || tree->FindItem(path) == nullptr))
        reason = m_hub.Access().ProvideNode(m_peer, path);
    if (m_isEnded) return QString();
    if (const values::TreeItem* const present = tree->FindItem(path))
        return DifferenceOf(*present, create.item.kind);
    if (!reason.isEmpty()) return reason;
    if (!m_hub.Access().MayCreate(m_peer, path, &reason)) return reason;
    reason = LengthRefusal(create.item, path);
    if (!reason.isEmpty()) return reason;
    if (++m_created > vtlimits::MaxCreatedPerSession)
        return QStringLiteral("the session has created %1 items").arg(vtlimits::MaxCreatedPerSession);
    std::unique_ptr<values::TreeItem> item = MakeItem(create.item, names.last());
    const QString parent = path.left(path.size() - names.last().size());
    return tree->AddItem(parent, item) ? QString() : QStringLiteral("a value stands in the way");
}

}  // namespace vt
