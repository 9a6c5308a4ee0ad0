// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/recalldesk.h>

#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

RecallDesk::RecallDesk(ServerHub& hub, std::function<void(const RecalledMessage&)> reply)
    : m_hub(hub), m_reply(std::move(reply)) {}

bool RecallDesk::Ask(const VtPeer& peer, const RecallMessage& recall) {
    const QString path = NormalisedPath(recall.path);
    VtHistoryPage page;
    if (!m_hub.Access().MayRead(peer, path))
        page.refusal = QStringLiteral("'%1' may not be read by '%2'").arg(path, peer.user);
    else if (m_hub.History() == nullptr)
        page.refusal = QStringLiteral("nothing is kept of '%1'").arg(path);
    else if (!m_recalls.Add({recall.req, path, recall.before, recall.count}))
        page.refusal = QStringLiteral("%1 questions wait already").arg(vtlimits::MaxRecallsWaiting);
    else
        return true;
    m_reply(Recalls::ToMessage(recall.req, page));
    return false;
}

void RecallDesk::Serve(const std::function<bool()>& mayAsk) {
    while (!m_recalls.IsEmpty() && mayAsk()) {
        const std::optional<RecallMessage> recall = m_recalls.Take(m_hub.Now());
        if (!recall) return;
        const auto most = static_cast<quint64>(vtlimits::MaxRecalledAtOnce);
        const auto answer = [this, isAlive = m_recalls.IsAlive(),
                             req = recall->req](const VtHistoryPage& page) {
            if (*isAlive) m_reply(Recalls::ToMessage(req, page));
        };
        m_hub.History()->Recall(
            {recall->path, recall->before, static_cast<int>(std::min(recall->count, most)),
             vtlimits::MaxRecalledLength},
            answer);
    }
}

}  // namespace vt
