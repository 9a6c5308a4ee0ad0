// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/recalls.h>

#include <algorithm>

namespace vt {

bool Recalls::Add(const RecallMessage& recall) {
    if (m_waiting.size() >= vtlimits::MaxRecallsWaiting) return false;
    m_waiting.push_back(recall);
    return true;
}

std::size_t Recalls::HeldBytes() const {
    std::size_t held = 0;
    for (const RecallMessage& recall : m_waiting)
        held += sizeof(recall) + static_cast<std::size_t>(recall.path.size()) * sizeof(QChar);
    return held;
}

std::optional<RecallMessage> Recalls::Take(std::chrono::microseconds now) {
    if (m_waiting.empty()) return std::nullopt;
    const std::chrono::microseconds fullAt = std::max(now, m_fullAt) + vtlimits::RecallInterval;
    if (fullAt > now + vtlimits::RecallBurst * vtlimits::RecallInterval) return std::nullopt;
    m_fullAt = fullAt;
    RecallMessage recall = std::move(m_waiting.front());
    m_waiting.pop_front();
    return recall;
}

RecalledMessage Recalls::ToMessage(quint32 req, const VtHistoryPage& page) {
    RecalledMessage recalled;
    recalled.req = req;
    recalled.result = page.refusal.isEmpty() ? EResult::Done : EResult::Denied;
    recalled.reason = page.refusal;
    if (!page.refusal.isEmpty()) return recalled;
    recalled.next = page.next;
    // No keeper's mistake ends a session.
    int room = vtlimits::MaxRecalledLength;
    for (const QString& text : page.texts) {
        room -= text.size();
        if (room >= 0) recalled.texts << text;
    }
    return recalled;
}

}  // namespace vt
