// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/roadkeys.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <iterator>

namespace vt {

void RoadKeys::Restart(const QString& road) {
    m_road = road;
    m_seals.clear();
    m_kept.clear();
    m_keptBytes = 0;
}

bool RoadKeys::Add(quint32 number, const QString& secret) {
    const QByteArray key = QByteArray::fromHex(secret.toLatin1());
    if (key.size() != RoadSeal::KeySize || number == 0) return false;
    const auto isIt = [number](const auto& seal) { return seal->KeyNumber() == number; };
    m_seals.erase(std::remove_if(m_seals.begin(), m_seals.end(), isIt), m_seals.end());
    m_seals.push_back(std::make_unique<RoadSeal>(m_road, number, key));
    if (m_seals.size() > vtlimits::MaxRoadKeys) m_seals.pop_front();
    return true;
}

RoadKeys::EOpened RoadKeys::Open(const RoadEnvelope& envelope, std::string_view whole,
                                 std::string_view* opened) {
    const auto isIts = [&envelope](const auto& seal) { return seal->KeyNumber() == envelope.key; };
    const auto seal = std::find_if(m_seals.rbegin(), m_seals.rend(), isIts);
    if (seal != m_seals.rend()) {
        const std::optional<std::string_view> content = (*seal)->Open(envelope);
        if (!content) return EOpened::Foreign;
        *opened = *content;
        return EOpened::Opened;
    }
    if (m_seals.empty() || envelope.key < m_seals.back()->KeyNumber()) return EOpened::Foreign;
    // The road is quicker than the session, or somebody makes it up: then the oldest goes.
    m_kept.emplace_back(whole.data(), static_cast<int>(whole.size()));
    m_keptBytes += whole.size();
    while (m_keptBytes > vtlimits::MaxRoadSealed || m_kept.size() > vtlimits::MaxRoadSealedMessages) {
        m_keptBytes -= static_cast<std::size_t>(m_kept.front().size());
        m_kept.pop_front();
    }
    return EOpened::Kept;
}

std::vector<QByteArray> RoadKeys::TakeKept() {
    std::vector<QByteArray> taken(std::make_move_iterator(m_kept.begin()),
                                  std::make_move_iterator(m_kept.end()));
    m_kept.clear();
    m_keptBytes = 0;
    return taken;
}

}  // namespace vt
