// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/serverhub.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/vtclient/vtattemptlimiter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace vt {

namespace {

constexpr std::chrono::milliseconds CheckSessionsEvery(250);

/// Of a number that a client may keep as a double.
constexpr unsigned UnusedBits = 64 - 53;

template <class List, class T>
void Remove(List& list, const T& element) {
    list.erase(std::remove(list.begin(), list.end(), element), list.end());
}

}  // namespace

ServerHub::ServerHub(IVtAccess& access, IEventLoop& loop, const Settings& settings)
    : m_access(access),
      m_loop(loop),
      m_settings(settings),
      m_epoch(QRandomGenerator::system()->generate64() >> UnusedBits),
      m_now(loop.Now()),
      m_budget(settings.memoryBytes),
      m_gaveBackAt(m_now),
      m_subtrees(*this) {
    m_loop.SetTaker(this);
    values::Tree::Instance()->GetRoot()->AddObserver(this);
}

ServerHub::~ServerHub() {
    Shutdown(QStringLiteral("the server ends"));
    Reap();
}

void ServerHub::Shutdown(const QString& reason) {
    if (m_isOver) return;
    EndAll(reason);
    m_isOver = true;
    m_loop.SetTaker(nullptr);
    if (values::Tree* const tree = values::Tree::Instance()) tree->GetRoot()->DeleteObserver(this);
    std::vector<VtPeer> gone;
    for (const auto& session : m_sessions)
        if (session->IsAdmitted()) gone.push_back(session->Peer());
    TellEnded(gone);
}

bool ServerHub::IsIdle() const {
    return !m_isInTurn && std::all_of(m_sessions.begin(), m_sessions.end(),
                                      [](const auto& session) { return session->IsIdle(); });
}

void ServerHub::AddChannel(std::unique_ptr<IChannel> channel) {
    m_now = m_loop.Now();
    if (m_sessions.empty()) m_loop.SetDeadline(CheckSessionsEvery);
    if (m_waitingRoom.Count() >= static_cast<std::size_t>(m_settings.maxPending))
        m_waitingRoom.First()->End(EBye::Limit, QStringLiteral("too many connections wait for their hello"));
    m_sessions.push_back(std::make_unique<ServerSession>(*this, std::move(channel), ++m_lastSession));
    ServerSession& session = *m_sessions.back();
    m_waitingRoom.Enter(&session, VtAttemptLimiter::HostOf(session.Peer().address));
}

int ServerHub::CountAdmitted() const {
    return static_cast<int>(std::count_if(m_sessions.begin(), m_sessions.end(),
                                          [](const std::unique_ptr<ServerSession>& session) {
                                              return session->IsAdmitted() && !session->IsEnded();
                                          }));
}

// Where nobody shows who it is, its host says all.
QString ServerHub::UserOf(const VtPeer& peer) const {
    return m_access.NeedsCredentials() ? peer.user : QString();
}

int ServerHub::CountOf(const VtPeer& peer) const {
    return peer.hasShare ? m_budget.CountOf(UserOf(peer), VtAttemptLimiter::HostOf(peer.address)) : 0;
}

/// The youngest session of the user or host that has most, if those are more than \a share.
ServerSession* ServerHub::FindBeyond(int share) const {
    ServerSession* found = nullptr;
    for (const auto& session : m_sessions) {
        const int count = SessionBudget::CountOf(session->taken);
        if (session->IsEnded() || count <= share) continue;
        if (found == nullptr || count >= SessionBudget::CountOf(found->taken)) found = session.get();
    }
    return found;
}

QString ServerHub::MakePlace(const VtPeer& peer) {
    const int reserved = std::max(1, m_settings.maxSessions / vtlimits::ReservedPart);
    const int open = m_settings.maxSessions - reserved;
    const int count = CountAdmitted();
    if (count < open || (!peer.hasShare && peer.isOperator && count < m_settings.maxSessions))
        return QString();
    const int share = std::max(1, open / vtlimits::ShareOfPlaces);
    const int own = CountOf(peer);
    ServerSession* const beyond = own < share ? FindBeyond(share) : nullptr;
    if (beyond != nullptr) {
        beyond->End(EBye::Limit,
                    QStringLiteral("others need the place: one user or host has %1 of them while "
                                   "there are few")
                        .arg(share));
        return QString();
    }
    // No operator takes all of these places from the others.
    const bool isReservedOpen =
        peer.isOperator && count < m_settings.maxSessions && own < std::max(1, reserved / 2);
    return isReservedOpen ? QString() : QStringLiteral("the server has %1 clients").arg(count);
}

void ServerHub::EndAll(const QString& reason) {
    for (std::size_t i = 0; i < m_sessions.size(); ++i)
        m_sessions[i]->End(EBye::ServerEnds, reason);
    FlushChannels();
    RequestTurn();
}

void ServerHub::EndSession(int session, const QString& reason) {
    for (std::size_t i = 0; i < m_sessions.size(); ++i) {
        if (m_sessions[i]->Peer().session != session) continue;
        m_sessions[i]->End(EBye::ServerEnds, reason);
        m_subtrees.ChangeRoadKeys(m_sessions[i].get());
    }
}

std::vector<VtPeer> ServerHub::GetPeers() const {
    std::vector<VtPeer> peers;
    for (const auto& session : m_sessions)
        if (session->IsAdmitted() && !session->IsEnded()) peers.push_back(session->Peer());
    return peers;
}

void ServerHub::SetRoads(IRoads* roads) {
    if (roads == m_settings.roads) return;
    m_settings.roads = roads;
    m_subtrees.EndRoads();
}

void ServerHub::OnAdmitted(ServerSession& session) {
    m_waitingRoom.Leave(&session);
    const VtPeer& peer = session.Peer();
    if (peer.hasShare) m_budget.Join(&session.taken, UserOf(peer), VtAttemptLimiter::HostOf(peer.address));
    m_access.SessionStarted(session.Peer());
}

// The turn destroys it, and tells: this may be in the middle of a walk over those who follow a watcher.
void ServerHub::OnSessionEnded(ServerSession& session) {
    m_waitingRoom.Leave(&session);
    m_budget.Leave(&session.taken);
    m_isInInput = false;  // its end may not come
    m_hasEnded = true;
    RequestTurn();
}

void ServerHub::RequestTurn() {
    if (m_isTurnRequested || m_isInInput) return;
    m_isTurnRequested = true;
    m_loop.RequestTurn();
}

void ServerHub::OnInputDone() {
    m_isInInput = false;
    OnTurn();
}

// First whoever acknowledges nothing, since what is kept for it serves nobody. Then who holds most for
// itself, its user or its host, in whatever role: it takes it from all others.
ServerSession* ServerHub::FindHeaviest() const {
    ServerSession* heaviest = nullptr;
    const auto weightOf = [](const ServerSession& session) {
        return std::make_tuple(session.IsStuck(), SessionBudget::WeightOf(session.taken), session.taken.held);
    };
    for (const auto& session : m_sessions) {
        const bool mustGive = m_budget.IsOver() || m_budget.IsOverShare(session->taken);
        if (session->IsEnded() || session->taken.held == 0 || !mustGive) continue;
        if (heaviest == nullptr || weightOf(*heaviest) < weightOf(*session)) heaviest = session.get();
    }
    return heaviest;
}

void ServerHub::RelieveMemory() {
    if (std::exchange(m_isRelieving, true)) return;
    while (ServerSession* const heaviest = FindHeaviest())
        heaviest->End(EBye::Limit,
                      QStringLiteral("too much is kept for this client (%1 bytes), its user or its "
                                     "host: the server has no memory left for it")
                          .arg(heaviest->taken.held));
    m_isRelieving = false;
}

// Those who take much and leave are no reason for the process to stay large.
void ServerHub::GiveMemoryBack() {
    if (m_budget.Freed() < vtlimits::MinFreedToGiveBack || m_now - m_gaveBackAt < vtlimits::GiveBackEvery)
        return;
    m_budget.ForgetFreed();
    m_gaveBackAt = m_now;
    m_settings.giveBack();
}

void ServerHub::OnDeadline() {
    m_now = m_loop.Now();
    for (std::size_t i = 0; i < m_sessions.size(); ++i)
        m_sessions[i]->Check(m_now);
    m_subtrees.RetryLater();  // a renamed value tells nobody above
    m_subtrees.MarkRoads(m_now, m_settings.pingInterval);
    OnTurn();
    GiveMemoryBack();
    const bool isQuiet = m_sessions.empty() && m_budget.Freed() < vtlimits::MinFreedToGiveBack;
    m_loop.SetDeadline(isQuiet ? std::nullopt : std::optional(CheckSessionsEvery));
}

void ServerHub::Update(Observable* /*source*/, TChangeCode code) {
    if (code == changecode::StructureChanged && m_subtrees.RetryLater()) RequestTurn();
}

void ServerHub::ServeLater(ServerSession& session) {
    if (!std::exchange(session.listed.isToServe, true)) m_toServe.push_back(&session);
    RequestTurn();
}

void ServerHub::FlushLater(ServerSession& session) {
    if (!std::exchange(session.listed.isToFlush, true)) m_toFlush.push_back(&session);
    RequestTurn();
}

void ServerHub::OnTurn() {
    if (m_isInTurn || m_isOver) return;
    m_isInTurn = true;
    m_isTurnRequested = true;  // what is asked for meanwhile is done here
    m_now = m_loop.Now();
    const TurnBudget budget(m_loop, m_now, vtlimits::TurnTime);
    m_subtrees.RetryWaiting();
    const bool hasChanges = m_subtrees.HasWork();
    bool isDone = m_subtrees.Serve(budget);
    if (isDone && !m_toServe.empty()) {
        if (hasChanges) FlushChanges();
        isDone = ServeBacklogs(TurnBudget(m_loop, m_loop.Now(), vtlimits::BacklogTime));
    }
    FlushChannels();
    Reap();
    m_isInTurn = false;
    m_isTurnRequested = false;
    // Whoever was told that a session is over may have ended others, or changed the tree.
    if (!isDone || m_subtrees.HasWork() || !m_toFlush.empty()) RequestTurn();
}

// What those hear who are in step does not wait for what others lack.
void ServerHub::FlushChanges() {
    FlushChannels();
    if (m_settings.roads != nullptr) m_settings.roads->Flush();
}

bool ServerHub::ServeBacklogs(const TurnBudget& budget) {
    const auto isTimeUp = [&budget] { return budget.IsUp(); };
    while (!m_toServe.empty()) {
        ServerSession* const session = m_toServe.front();
        m_toServe.pop_front();
        session->listed.isToServe = false;
        const bool hasMore = !session->IsEnded() && session->SendBacklog(isTimeUp);
        if (hasMore) ServeLater(*session);
        session->Roads().Take();
        session->SendLateAnswers();
        if (!hasMore) session->Recall();
        if (budget.IsUp()) return m_toServe.empty();
    }
    return true;
}

void ServerHub::FlushChannels() {
    for (ServerSession* session : m_toFlush) {
        session->listed.isToFlush = false;
        session->Flush();
    }
    m_toFlush.clear();
}

// Not before the turn is over: a session or a watcher may be what called us. A session may also be in the
// middle of a message, under a dialog that this opened; it asks for another turn when that is done.
void ServerHub::Reap() {
    std::vector<VtPeer> gone;
    if (std::exchange(m_hasEnded, false)) gone = DestroyEnded();
    m_subtrees.DestroyDead();
    TellEnded(gone);
}

void ServerHub::TellEnded(const std::vector<VtPeer>& peers) {
    for (const VtPeer& peer : peers)
        m_access.SessionEnded(peer);
}

/// Returns the peers of those that were admitted.
std::vector<VtPeer> ServerHub::DestroyEnded() {
    const auto isNeeded = [](const std::unique_ptr<ServerSession>& session) {
        return !session->IsEnded() || !session->IsIdle();
    };
    const auto firstEnded = std::stable_partition(m_sessions.begin(), m_sessions.end(), isNeeded);
    // They are destroyed when they are in no list any more.
    const std::vector<std::unique_ptr<ServerSession>> ended(std::make_move_iterator(firstEnded),
                                                            std::make_move_iterator(m_sessions.end()));
    m_sessions.erase(firstEnded, m_sessions.end());
    std::vector<VtPeer> gone;
    for (const auto& session : ended) {
        m_budget.CountFreed(session->Peer().isEncrypted ? vtlimits::TlsConnection
                                                        : vtlimits::PlainConnection);
        if (session->IsAdmitted() && !m_isOver) gone.push_back(session->Peer());
        if (session->listed.isToServe) Remove(m_toServe, session.get());
        if (session->listed.isToFlush) Remove(m_toFlush, session.get());
    }
    return gone;
}

}  // namespace vt
