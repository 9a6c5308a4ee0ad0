// SPDX-License-Identifier: Apache-2.0
// The tics of a client, and the mirrors that they share.
#include <platform/vtclient/client/vtclient.h>

#include <platform/values/node.h>
#include <platform/vtclient/client/vtclientdetail.h>
#include <platform/vtclient/client/vttic.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>

namespace vt {

using vtclientdetail::Trace;

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

// The tics that end with this are told of it in the next turn, if they still are there by then: whoever
// releases a node is in the middle of something that their observers had better find done.
void VtClient::ReleaseNode(values::Node* node) {
    if (node == nullptr) return;
    const Busy busy(*this);
    ForEachLink([this, node](Link& link) {
        link.mirror->Release(node);
        if (link.mirror->IsReleased()) Unsubscribe(link);
    });
    m_hasReleased = true;
    RequestTurn();
}

bool VtClient::AreAllTicsEstablished() const {
    return IsConnected() &&
           std::all_of(m_tics.begin(), m_tics.end(), [](const auto& tic) { return tic->IsEstablished(); });
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
