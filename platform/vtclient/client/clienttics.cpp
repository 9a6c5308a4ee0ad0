// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/clienttics.h>

#include <platform/values/node.h>
#include <platform/vtclient/client/clientsession.h>
#include <platform/vtclient/client/clienttrace.h>
#include <platform/vtclient/client/vttic.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

namespace {

template <class T, class U>
auto FindOwned(std::vector<std::unique_ptr<T>>& owned, const U* object) {
    return std::find_if(owned.begin(), owned.end(),
                        [object](const std::unique_ptr<T>& other) { return other.get() == object; });
}

}  // namespace

ClientTics::ClientTics(Observable& client, CallDepth& depth, TurnRequest& turn)
    : m_client(client), m_depth(depth), m_turn(turn) {}

ClientTics::~ClientTics() = default;

bool ClientTics::Has(const VtTic* tic) const {
    return std::any_of(m_tics.begin(), m_tics.end(), [tic](const auto& other) { return other.get() == tic; });
}

bool ClientTics::Has(const ClientLink* link) const {
    return std::any_of(m_links.begin(), m_links.end(),
                       [link](const auto& other) { return other.get() == link; });
}

template <class Visit>
void ClientTics::ForEachLink(const Visit& visit) {
    // Its room is kept from one time to the next. What is visited may lead here once more.
    std::vector<ClientLink*> links = std::exchange(m_room, {});
    links.clear();
    for (const auto& link : m_links)
        links.push_back(link.get());
    for (ClientLink* link : links)
        if (Has(link)) visit(*link);
    m_room = std::move(links);
}

// Tics come and go -----------------------------------------------------------------------------------------

IVtTic* ClientTics::Add(const QString& spec, bool isLook) {
    const int comma = spec.indexOf(QStringLiteral(",/"));
    const QString local = spec.left(comma);
    const QString remote = spec.mid(comma + 1);
    if (comma < 1 || !local.startsWith(QLatin1Char('/')) || remote.size() > vtlimits::MaxPathLength) {
        TraceClient(QStringLiteral("'%1' is no local path, a comma and a remote path").arg(spec));
        return nullptr;
    }
    ClientLink* const link = LinkFor(NormalisedPath(local), NormalisedPath(remote), isLook);
    if (link == nullptr) return nullptr;
    m_tics.push_back(std::make_unique<VtTic>(local, remote, link->Mirror()));
    VtTic* const tic = m_tics.back().get();
    link->Tics().push_back(tic);
    tic->SetAbsent(link->IsAbsent());
    if (link->Mirror().IsEstablished()) {
        m_newTics.push_back(tic);
        m_turn.Make();
    }
    return tic;
}

ClientLink* ClientTics::LinkFor(const QString& localPath, const QString& remotePath, bool isLook) {
    for (const auto& link : m_links) {
        const TreeMirror& mirror = link->Mirror();
        if (mirror.IsReleased()) continue;
        const bool isSame = mirror.LocalPath() == localPath && mirror.RemotePath() == remotePath;
        if (isSame && (isLook || !link->IsLook())) return link.get();
        if (IsAtOrBelow(localPath, mirror.LocalPath()) || IsAtOrBelow(mirror.LocalPath(), localPath)) {
            TraceClient(QStringLiteral("'%1' cannot be mirrored at '%2': '%3' is mirrored at '%4'")
                            .arg(remotePath, localPath, mirror.RemotePath(), mirror.LocalPath()));
            return nullptr;
        }
    }
    m_links.push_back(
        std::make_unique<ClientLink>(localPath, remotePath, isLook, static_cast<ClientLink::IHost&>(*this)));
    ClientLink* const link = m_links.back().get();
    if (m_session != nullptr) link->Subscribe(*m_session);
    return link;
}

void ClientTics::Remove(IVtTic* tic) {
    const auto found = FindOwned(m_tics, tic);
    if (found == m_tics.end()) return;
    const std::unique_ptr<VtTic> removed = std::move(*found);
    m_tics.erase(found);
    for (const auto& link : m_links) {
        auto& tics = link->Tics();
        const auto its = std::find(tics.begin(), tics.end(), removed.get());
        if (its == tics.end()) continue;
        tics.erase(its);
        if (tics.empty()) Drop(link.get());
        break;
    }
    removed->Detach();
    removed->NotifyObservers(connectioncode::GoingAway);
    m_turn.Make();
}

void ClientTics::RemoveAll() {
    while (!m_tics.empty())
        Remove(m_tics.front().get());
}

void ClientTics::Drop(ClientLink* link) {
    const auto found = FindOwned(m_links, link);
    m_deadLinks.push_back(std::move(*found));
    m_links.erase(found);
    if (m_session != nullptr) m_session->Forget(*link);
    link->Unsubscribe();
    link->Mirror().Release(nullptr);
}

// Whoever releases a node is in the middle of something that their observers had better find done.
void ClientTics::Release(const values::TreeItem* node) {
    ForEachLink([node](ClientLink& link) {
        link.Mirror().Release(node);
        if (link.Mirror().IsReleased()) link.Unsubscribe();
    });
    m_hasReleased = true;
    m_turn.Make();
}

// The session ----------------------------------------------------------------------------------------------

void ClientTics::Subscribe(ClientSession& session) {
    m_session = &session;
    for (const auto& link : m_links)
        if (!link->Mirror().IsReleased()) link->Subscribe(session);
}

void ClientTics::Lose() {
    m_session = nullptr;
    ForEachLink([](ClientLink& link) { link.Lose(); });
}

void ClientTics::SendEdits() {
    const auto hasEdits = [](const auto& link) { return link->Mirror().HasEdits(); };
    if (std::any_of(m_links.begin(), m_links.end(), hasEdits))
        ForEachLink([](ClientLink& link) { link.Mirror().SendEdits(); });
    TellAnswered();  // what was taken back, or need not be sent, is answered
}

// While input is handled they are sent at the end of that.
void ClientTics::OnEdits() {
    m_hadUnanswered = true;
    if (m_depth.IsIdle()) m_turn.Make();
}

bool ClientTics::HasUnanswered() const {
    return std::any_of(m_links.begin(), m_links.end(),
                       [](const auto& link) { return link->Mirror().HasUnanswered(); });
}

// Telling --------------------------------------------------------------------------------------------------

bool ClientTics::AreAllEstablished() const {
    return std::all_of(m_tics.begin(), m_tics.end(), [](const auto& tic) { return tic->IsEstablished(); });
}

void ClientTics::TellAnswered() {
    if (!m_hadUnanswered || HasUnanswered()) return;
    m_hadUnanswered = false;
    m_client.NotifyObservers(connectioncode::WritesAnswered);
}

// What was sent because of it leaves in the next turn at the latest.
void ClientTics::OnEstablished() {
    m_turn.Make();
    TellEstablished();
}

void ClientTics::TellEstablished() {
    bool hasChanged = false;
    ForEachLink([this, &hasChanged](ClientLink& link) {
        if (!link.TakeChange()) return;
        hasChanged = true;
        TellTicsOf(link);
    });
    if (!hasChanged) return;
    m_client.NotifyObservers(connectioncode::TicsChanged);
    TellLosses();
}

void ClientTics::TellLosses() {
    ForEachLink([this](ClientLink& link) {
        std::optional<VtLoss> loss = link.TakeLoss();
        if (!loss) return;
        m_lastLoss = std::move(*loss);
        m_client.NotifyObservers(connectioncode::ChangesLost);
    });
}

void ClientTics::TellTicsOf(ClientLink& link) {
    const std::vector<VtTic*> tics = link.Tics();
    for (VtTic* tic : tics)
        if (Has(tic)) tic->NotifyObservers(connectioncode::TicsChanged);
}

void ClientTics::TellNewTics() {
    const std::vector<VtTic*> tics = std::move(m_newTics);
    m_newTics.clear();
    for (VtTic* tic : tics)
        if (Has(tic) && tic->IsEstablished()) tic->NotifyObservers(connectioncode::TicsChanged);
    if (!tics.empty()) m_client.NotifyObservers(connectioncode::TicsChanged);
}

void ClientTics::OnTurn() {
    if (m_depth.IsOutermost()) m_deadLinks.clear();
    if (std::exchange(m_hasReleased, false)) TellEstablished();
    TellNewTics();
}

}  // namespace vt
