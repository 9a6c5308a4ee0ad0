// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/roadpile.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <iterator>
#include <utility>

namespace vt {

bool RoadPile::IsOver() const {
    return m_bytes > vtlimits::MaxRoadAhead || m_contents.size() > vtlimits::MaxRoadAheadMessages;
}

void RoadPile::Erase(std::map<quint64, Content>::iterator content) {
    m_bytes -= static_cast<std::size_t>(content->second.bytes.size());
    m_contents.erase(content);
}

void RoadPile::Add(quint64 number, std::string_view content, bool isContinued, bool isStartKnown) {
    if (Has(number)) return;
    m_contents[number] = {QByteArray(content.data(), static_cast<int>(content.size())), isContinued};
    m_bytes += content.size();
    while (IsOver())
        Erase(isStartKnown ? std::prev(m_contents.end()) : m_contents.begin());
}

std::optional<RoadPile::Content> RoadPile::Take(quint64 number) {
    const auto found = m_contents.find(number);
    if (found == m_contents.end()) return std::nullopt;
    Content content = std::move(found->second);
    m_bytes -= static_cast<std::size_t>(content.bytes.size());
    m_contents.erase(found);
    return content;
}

void RoadPile::DropUpTo(quint64 number) {
    while (!m_contents.empty() && m_contents.begin()->first <= number)
        Erase(m_contents.begin());
}

void RoadPile::Clear() {
    m_contents.clear();
    m_bytes = 0;
}

}  // namespace vt
