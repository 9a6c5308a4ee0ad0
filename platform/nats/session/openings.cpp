// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/openings.h>

#include <algorithm>
#include <utility>

namespace nats {

void Openings::Add(Opening opening) {
    if (m_count >= MaxWaiting) DropOne();
    const QByteArray who = opening.name.who;
    m_waiting[who].push_back(std::move(opening));
    ++m_count;
}

std::optional<Openings::Opening> Openings::Take() {
    if (m_waiting.empty()) return std::nullopt;
    auto next = m_waiting.upper_bound(m_last);
    if (next == m_waiting.end()) next = m_waiting.begin();
    m_last = next->first;
    return TakeFrom(next);
}

void Openings::DropOne() {
    TakeFrom(std::max_element(m_waiting.begin(), m_waiting.end(), [](const auto& a, const auto& b) {
        return a.second.size() < b.second.size();
    }));
}

Openings::Opening Openings::TakeFrom(Waiting::iterator user) {
    Opening first = std::move(user->second.front());
    user->second.pop_front();
    if (user->second.empty()) m_waiting.erase(user);
    --m_count;
    return first;
}

}  // namespace nats
