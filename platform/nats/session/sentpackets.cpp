// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/sentpackets.h>

#include <algorithm>

namespace nats {

void SentPackets::Add(quint64 number, std::string_view packet, quint64 end) {
    m_packets.push_back({end, m_bytes.size(), packet.size()});
    m_bytes.append(packet);
    m_last = number;
}

void SentPackets::DropUpTo(quint64 number) {
    const quint64 before = m_last - Count();  // the number before the first
    if (number > before) DropFirst(static_cast<std::size_t>(std::min(number, m_last) - before));
}

void SentPackets::DropConsumed(quint64 consumed) {
    std::size_t count = 0;
    while (count < Count() && m_packets[m_first + count].end <= consumed)
        ++count;
    DropFirst(count);
}

// The bytes move only when most of them are of no use any more, so each of them moves about once.
void SentPackets::DropFirst(std::size_t count) {
    m_first += count;
    if (m_first == m_packets.size()) {
        m_packets.clear();
        m_bytes.clear();
        m_first = 0;
        if (m_bytes.capacity() > KeptRoom) GiveBackRoom();
        return;
    }
    const std::size_t useless = m_packets[m_first].at;
    if (useless < m_bytes.size() - useless) return;
    m_bytes.erase(0, useless);
    m_packets.erase(m_packets.begin(), m_packets.begin() + static_cast<std::ptrdiff_t>(m_first));
    m_first = 0;
    for (Place& place : m_packets)
        place.at -= useless;
}

void SentPackets::Clear() {
    DropFirst(Count());
    GiveBackRoom();
}

void SentPackets::GiveBackRoom() {
    if (Count() != 0) return;
    std::string().swap(m_bytes);
    std::vector<Place>().swap(m_packets);
}

std::string_view SentPackets::Get(std::size_t index) const {
    const Place& place = m_packets[m_first + index];
    return std::string_view(m_bytes).substr(place.at, place.size);
}

}  // namespace nats
