// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/serverhub.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vt {

namespace {

constexpr std::chrono::milliseconds CheckSessionsEvery(250);

/// Of an address that ends with a port.
QString HostOf(const QString& address) {
    return address.left(address.lastIndexOf(QLatin1Char(':')));
}

template <class List, class T>
void Remove(List& list, const T& element) {
    list.erase(std::remove(list.begin(), list.end(), element), list.end());
}

}  // namespace

ServerHub::ServerHub(IVtAccess& access, IEventLoop& loop, const Settings& settings)
    : m_access(access),
      m_loop(loop),
      m_settings(settings),
      m_epoch(QRandomGenerator::system()->generate64() >> 1U),
      m_now(loop.Now()) {
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
    m_waitingRoom.Enter(&session, HostOf(session.Peer().address));
}

bool ServerHub::IsFull() const {
    const auto isThere = [](const std::unique_ptr<ServerSession>& session) {
        return session->IsAdmitted() && !session->IsEnded();
    };
    return std::count_if(m_sessions.begin(), m_sessions.end(), isThere) >= vtlimits::MaxSessions;
}

void ServerHub::EndAll(const QString& reason) {
    for (std::size_t i = 0; i < m_sessions.size(); ++i)
        m_sessions[i]->End(EBye::ServerEnds, reason);
    FlushChannels();
    RequestTurn();
}

void ServerHub::EndSession(int session, const QString& reason) {
    for (std::size_t i = 0; i < m_sessions.size(); ++i)
        if (m_sessions[i]->Peer().session == session) m_sessions[i]->End(EBye::ServerEnds, reason);
}

std::vector<VtPeer> ServerHub::GetPeers() const {
    std::vector<VtPeer> peers;
    for (const auto& session : m_sessions)
        if (session->IsAdmitted() && !session->IsEnded()) peers.push_back(session->Peer());
    return peers;
}

void ServerHub::OnAdmitted(ServerSession& session) {
    m_waitingRoom.Leave(&session);
    m_access.SessionStarted(session.Peer());
}

// The turn destroys it, and tells: this may be in the middle of a walk over those who follow a watcher.
void ServerHub::OnSessionEnded(ServerSession& session) {
    m_waitingRoom.Leave(&session);
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

void ServerHub::OnDeadline() {
    m_now = m_loop.Now();
    for (std::size_t i = 0; i < m_sessions.size(); ++i)
        m_sessions[i]->Check(m_now);
    m_hasStructureChanged =
        m_hasStructureChanged || !m_waiting.empty();  // a renamed value tells nobody above
    OnTurn();
    m_loop.SetDeadline(m_sessions.empty() ? std::nullopt : std::optional(CheckSessionsEvery));
}

void ServerHub::Update(Observable* /*source*/, TChangeCode code) {
    if (code != changecode::StructureChanged || m_waiting.empty()) return;
    m_hasStructureChanged = true;
    RequestTurn();
}

void ServerHub::Join(Subscription& subscription) {
    values::TreeItem* const item = values::Tree::Instance()->FindItem(subscription.Path());
    if (item != nullptr) return Watch(subscription, item);
    m_waiting.push_back(&subscription);
    subscription.Session().TellAbsent(subscription, QString());
}

void ServerHub::Watch(Subscription& subscription, values::TreeItem* item) {
    std::shared_ptr<Watched>& watched = m_watched[subscription.Path()];
    if (!watched) {
        watched = std::make_shared<Watched>(*this);
        watched->path = subscription.Path();
        watched->watcher = std::make_unique<TreeWatcher>(item, *watched);
        m_changed.push_back(watched);
    }
    watched->members.push_back(&subscription);
    subscription.Restart(watched->watcher.get());
    subscription.Session().Subscribe(subscription);
    ServeLater(subscription.Session());
}

void ServerHub::Leave(Subscription& subscription) {
    Remove(m_waiting, &subscription);
    const auto found = m_watched.find(subscription.Path());
    if (found == m_watched.end() || subscription.Watcher() == nullptr) return;
    Remove((*found)->members, &subscription);
    if ((*found)->members.empty()) Unwatch(subscription.Path());
}

void ServerHub::Unwatch(const QString& path) {
    const std::shared_ptr<Watched> watched = m_watched.take(path);
    watched->isDead = true;
    m_dead.push_back(watched);
    RequestTurn();
}

void ServerHub::OnChanges(Watched& watched) {
    if (watched.isChanged || watched.isDead) return;
    watched.isChanged = true;
    m_changed.push_back(watched.shared_from_this());
    RequestTurn();
}

void ServerHub::OnRootGone(Watched& watched) {
    if (watched.isDead) return;
    const std::vector<Subscription*> members = std::move(watched.members);
    watched.members.clear();
    Unwatch(watched.path);
    for (Subscription* member : members) {
        member->Restart(nullptr);
        m_waiting.push_back(member);
        member->Session().TellAbsent(*member, QString());
    }
    m_hasStructureChanged = true;  // it may be there again already
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
    RetryWaiting();
    const bool isDone = ServeWatchers(budget) && ServeBacklogs(budget);
    FlushChannels();
    Reap();
    m_isInTurn = false;
    m_isTurnRequested = false;
    // Whoever was told that a session is over may have ended others, or changed the tree.
    if (!isDone || m_hasStructureChanged || !m_changed.empty() || !m_dead.empty() || !m_toFlush.empty())
        RequestTurn();
}

void ServerHub::RetryWaiting() {
    if (!m_hasStructureChanged) return;
    m_hasStructureChanged = false;
    const std::vector<Subscription*> waiting = std::move(m_waiting);
    m_waiting.clear();
    for (Subscription* subscription : waiting) {
        values::TreeItem* const item = values::Tree::Instance()->FindItem(subscription->Path());
        if (item != nullptr)
            Watch(*subscription, item);
        else
            m_waiting.push_back(subscription);
    }
}

bool ServerHub::ServeWatchers(const TurnBudget& budget) {
    while (!m_changed.empty()) {
        const std::shared_ptr<Watched> watched = m_changed.front();
        m_changed.pop_front();
        watched->isChanged = false;
        if (watched->members.empty() || ServeWatched(*watched, budget)) continue;
        watched->isChanged = true;
        m_changed.push_back(watched);
        return false;
    }
    return true;
}

bool ServerHub::ServeWatched(Watched& watched, const TurnBudget& budget) {
    const auto isTimeUp = [&budget] { return budget.IsUp(); };
    const bool isTakenIn = watched.watcher->TakeIn(isTimeUp);
    while (watched.watcher->HasChanges()) {
        const bool hasAudience =
            std::any_of(watched.members.begin(), watched.members.end(), [](const Subscription* member) {
                return member->IsInStep() && member->Session().MaySendChanges();
            });
        watched.watcher->NextPart(hasAudience, &m_part);
        Deliver(watched, m_part);
        m_part.Clear();
        if (budget.IsUp()) return false;
    }
    for (Subscription* member : watched.members)
        if (!member->IsInStep()) ServeLater(member->Session());
    return isTakenIn;
}

void ServerHub::Deliver(Watched& watched, const TreeWatcher::Part& part) {
    for (Subscription* member : watched.members) {
        ServerSession& session = member->Session();
        if (member->IsInStep() && session.MaySendChanges()) {
            if (!part.changes.isEmpty()) session.SendChanges(*member, part.changes, part.hasMore);
            member->WentWith(part);
        } else {
            member->Absorb(part);
            session.CheckQueue();
        }
    }
}

bool ServerHub::ServeBacklogs(const TurnBudget& budget) {
    const auto isTimeUp = [&budget] { return budget.IsUp(); };
    while (!m_toServe.empty()) {
        ServerSession* const session = m_toServe.front();
        m_toServe.pop_front();
        session->listed.isToServe = false;
        if (!session->IsEnded() && session->SendBacklog(isTimeUp)) ServeLater(*session);
        session->SendLateAnswers();
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
    m_dead.clear();
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
        if (session->IsAdmitted() && !m_isOver) gone.push_back(session->Peer());
        if (session->listed.isToServe) Remove(m_toServe, session.get());
        if (session->listed.isToFlush) Remove(m_toFlush, session.get());
    }
    return gone;
}

}  // namespace vt
