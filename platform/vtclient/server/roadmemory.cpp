// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/roadmemory.h>

#include <platform/vtclient/wire/vtlimits.h>

namespace vt {

void RoadMemory::Keep(quint64 number, std::string_view message) {
    m_last = number;
    if (message.size() > m_limit) return DropFirst(Count());
    m_places.push_back({m_bytes.size(), message.size(), std::chrono::microseconds::min()});
    m_bytes.append(message);
    m_share.used += message.size();
    std::size_t useless = 0;
    std::size_t size = Size();
    while (useless < Count() && (size > m_limit || m_share.used - (Size() - size) > m_share.limit))
        size -= m_places[m_first + useless++].size;
    DropFirst(useless);
}

// The bytes move only when most of them are of no use any more, so each of them moves about once.
void RoadMemory::DropFirst(std::size_t count) {
    const std::size_t before = Size();
    m_first += count;
    m_share.used -= before - Size();
    if (Count() == 0) {
        m_places.clear();
        m_bytes.clear();
        m_first = 0;
        return;
    }
    const std::size_t useless = m_places[m_first].at;
    if (useless < m_bytes.size() - useless) return;
    m_bytes.erase(0, useless);
    m_places.erase(m_places.begin(), m_places.begin() + static_cast<std::ptrdiff_t>(m_first));
    m_first = 0;
    for (Place& place : m_places)
        place.at -= useless;
}

std::string_view RoadMemory::Take(quint64 number, std::chrono::microseconds now) {
    if (number < First() || number > m_last) return {};
    Place& place = m_places[m_first + static_cast<std::size_t>(number - First())];
    const bool isTooSoon = place.takenAt != std::chrono::microseconds::min() &&
                           now - place.takenAt < vtlimits::RoadSayAgainEvery;
    if (isTooSoon) return {};
    place.takenAt = now;
    return std::string_view(m_bytes).substr(place.at, place.size);
}

}  // namespace vt
