// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/clientlink.h>

#include <platform/values/refusals.h>
#include <platform/vtclient/client/clientsession.h>
#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/client/vttic.h>
#include <platform/vtclient/wire/messagereader.h>

#include <type_traits>
#include <utility>

namespace vt {

ClientLink::IHost::~IHost() = default;

ClientLink::ClientLink(const QString& localPath, const QString& remotePath, bool isLook, IHost& host)
    : m_host(host),
      m_isLook(isLook),
      m_mirror(localPath, remotePath, static_cast<TreeMirror::IHost&>(*this)),
      m_road(static_cast<RoadFollower::IHost&>(*this), m_mirror.RemotePath()) {}

ClientLink::~ClientLink() = default;

bool ClientLink::TakeChange() {
    const bool hasChanged = HasChanged();
    m_wasEstablished = m_mirror.IsEstablished();
    return hasChanged;
}

// What is missed from the moment on in which it was whole last, so long ago.
void ClientLink::Miss(std::chrono::microseconds age) {
    if (!m_mirror.IsEstablished() || m_missesSince.isValid()) return;
    const auto ms = std::chrono::ceil<std::chrono::milliseconds>(age);
    m_missesSince = QDateTime::currentDateTimeUtc().addMSecs(-ms.count());
}

std::optional<VtLoss> ClientLink::TakeLoss() {
    if (!m_mirror.IsEstablished() || !m_missesSince.isValid()) return std::nullopt;
    const VtLoss loss{m_mirror.RemotePath(), m_missesSince, QDateTime::currentDateTimeUtc(),
                      !m_hasMissedSession};
    m_missesSince = QDateTime();
    m_hasMissedSession = false;
    return loss;
}

// The subscription -----------------------------------------------------------------------------------------

void ClientLink::Subscribe(ClientSession& session) {
    m_session = &session;
    m_sequence = 0;
    m_isReceiving = false;
    m_sub = session.Subscribe(*this, m_mirror.RemotePath(), m_isLook);
    if (const auto roads = session.Roads()) m_road.Start(*roads);
}

void ClientLink::Unsubscribe() {
    m_isReceiving = false;
    EndRoad();
    if (m_sub != 0) m_session->Unsubscribe(std::exchange(m_sub, 0));
}

void ClientLink::EndRoad() {
    m_road.Stop();
    if (m_session != nullptr) m_session->GoOnLater(*this);
}

void ClientLink::Lose() {
    Miss(std::chrono::microseconds::zero());
    m_hasMissedSession = m_missesSince.isValid();
    m_road.Lose();
    m_session = nullptr;
    m_sub = 0;
    m_isReceiving = false;
    SetAbsent(false);
    m_mirror.Lose();
}

void ClientLink::SetAbsent(bool isAbsent) {
    m_isAbsent = isAbsent;
    for (VtTic* tic : m_tics)
        tic->SetAbsent(isAbsent);
}

// What comes -----------------------------------------------------------------------------------------------

void ClientLink::OnSubscribed(const QStringList& writable) {
    m_sequence = 0;
    m_road.Rest();
    m_isReceiving = true;
    SetAbsent(false);
    Miss(std::chrono::microseconds::zero());
    if (m_mirror.IsEstablished()) m_mirror.Lose();
    m_mirror.Start(writable, m_session->Number());
}

void ClientLink::OnAbsent(const QString& reason) {
    m_isReceiving = false;
    m_road.Rest();
    SetAbsent(true);
    if (!reason.isEmpty()) {
        EndRoad();
        m_session->Drop(std::exchange(m_sub, 0));
        m_mirror.Lose();
        values::Refusals::Instance().ReportSubtree(m_mirror.LocalPath(), m_mirror.RemotePath(), reason);
    } else if (m_mirror.Root() != nullptr) {
        m_mirror.Vanish();
    }
    const bool isTold = HasChanged();
    m_host.OnEstablished();
    if (!isTold) m_host.OnAbsent(*this);
}

bool ClientLink::IsNext(quint64 sequence) {
    if (m_isReceiving && sequence == m_sequence + 1) {
        m_sequence = sequence;
        return true;
    }
    TraceClient(
        QStringLiteral("Changes of '%1' were missed: taking a new snapshot").arg(m_mirror.RemotePath()));
    Unsubscribe();
    Miss(std::chrono::microseconds::zero());
    m_mirror.Lose();
    m_host.OnEstablished();
    const bool isWanted = m_sub == 0 && !m_mirror.IsReleased();
    if (isWanted && m_session != nullptr && m_session->IsConnected()) Subscribe(*m_session);
    return false;
}

void ClientLink::OnChanges(MessageReader& reader, quint64 sequence, bool hasMore) {
    if (!IsNext(sequence)) return;
    QString error;
    const bool isGood = Apply(reader, hasMore, &error);
    OnApplied(isGood, error);
}

bool ClientLink::Apply(MessageReader& reader, bool hasMore, QString* error) {
    TreeChange change;
    while (reader.NextChange(&change))
        if (!m_mirror.Apply(change, error)) return false;
    *error = reader.Error();
    if (!error->isEmpty()) return false;
    return m_mirror.EndPart(hasMore, error);
}

void ClientLink::OnEnd(quint64 sequence) {
    if (!IsNext(sequence)) return;
    QString error;
    const bool isGood = m_mirror.IsEstablished() || m_mirror.Finish(&error);
    OnApplied(isGood, error);
}

void ClientLink::OnApplied(bool isGood, const QString& error) {
    if (isGood && HasChanged()) m_host.OnEstablished();
    if (isGood || m_session == nullptr) return;
    m_session->Fail(QStringLiteral("changes of '%1': %2").arg(m_mirror.RemotePath(), error));
}

void ClientLink::OnAnswer(const AnswerMessage& answer) {
    m_mirror.OnAnswer(answer);
    m_host.OnAnswered();
    m_road.OnAnswered();
}

// The shared road ------------------------------------------------------------------------------------------

void ClientLink::OnRoad(const QString& road, quint32 key, const QString& secret) {
    m_road.OnRoad(road, key, secret);
}

void ClientLink::OnRoadWanted() {
    m_session->Join(m_sub);
}

void ClientLink::OnRoadHeard(const QString& road) {
    m_session->TellHeard(m_sub, road);
}

bool ClientLink::OnRoadContent(std::string_view content, quint64 number) {
    const ClientSession::Pause pause(*m_session);
    MessageReader reader(content.data(), static_cast<qint64>(content.size()));
    std::optional<BatchMessage> batch;
    const auto receive = [&batch](const auto& message) {
        if constexpr (std::is_same_v<std::decay_t<decltype(message)>, BatchMessage>) batch = message;
    };
    if (!reader.Read(receive) || !batch || batch->sub != 0 || batch->seq != number) return false;
    QString error;
    if (!Apply(reader, batch->more, &error)) return false;
    if (HasChanged()) m_host.OnEstablished();
    return true;
}

void ClientLink::OnRoadReached() {
    m_session->GoOn(*this);
}

void ClientLink::OnRoadMissing(quint64 from, quint64 to) {
    m_session->AskAgain(m_sub, from, to);
}

// What is shown does not hold until the snapshot is here.
void ClientLink::OnRoadLost(bool wasTaken, std::chrono::microseconds age) {
    m_session->LeaveRoad(m_sub);
    m_session->GoOnLater(*this);
    if (!wasTaken) return;
    Miss(age);
    m_isReceiving = false;
    m_mirror.Lose();
    m_host.OnEstablished();
}

void ClientLink::OnRoadHandled() {
    if (m_session != nullptr) m_session->OnRoadHandled();
}

void ClientLink::OnRoadDeadline() {
    if (m_session != nullptr) m_session->OnRoadDeadline();
}

// What goes ------------------------------------------------------------------------------------------------

void ClientLink::OnEdits(TreeMirror& /*mirror*/) {
    m_host.OnEdits();
}

quint32 ClientLink::SendWrite(TreeMirror& /*mirror*/, WriteMessage* write) {
    return CountRequest(m_session->SendWrite(*this, m_sub, write));
}

quint32 ClientLink::SendCreation(TreeMirror& /*mirror*/, CreateMessage* create,
                                 const values::TreeItem& item) {
    return CountRequest(m_session->SendCreation(*this, m_sub, create, item));
}

quint32 ClientLink::CountRequest(quint32 request) {
    if (request != 0) m_road.OnRequest();
    return request;
}

void ClientLink::OnRootDeleted(TreeMirror& /*mirror*/) {
    Unsubscribe();
    m_host.OnEstablished();
}

}  // namespace vt
