// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/roadpublisher.h>

#include <platform/vtclient/wire/messagewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

RoadPublisher::RoadPublisher(IRoads& roads, QString name) : m_roads(roads), m_name(std::move(name)) {
    ChangeKey();
}

bool RoadPublisher::Describe(quint32 sub, RoadMessage* road) const {
    *road = {sub, m_name, m_keyNumber, QString::fromLatin1(m_key.toHex())};
    return !m_key.isEmpty();
}

void RoadPublisher::ChangeKey() {
    m_key = RoadSeal::NewKey();
    m_seal = std::make_unique<RoadSeal>(RoadPlace(m_roads, m_name), ++m_keyNumber, m_key);
}

// What the bus does not take is missed by all, and told by its number.
void RoadPublisher::Publish(const QByteArray& changes, bool hasMore, std::chrono::microseconds now) {
    const BatchMessage batch{0, ++m_number, hasMore};
    const std::string_view sealed = m_seal->Seal(
        m_number,
        {EncodeHead(batch), {changes.constData(), static_cast<std::size_t>(changes.size())}, ChangesEnd});
    m_publishedAt = now;
    m_hasMore = hasMore;
    m_isMarked = changes.isEmpty();
    if (!sealed.empty()) m_roads.Publish(m_name, sealed);
}

void RoadPublisher::MarkIfDue(std::chrono::microseconds now, std::chrono::milliseconds interval,
                              bool isWanted) {
    if (!m_isMarked) interval = std::min(interval, vtlimits::RoadMarkAfter);
    if (isWanted) interval = std::min(interval, vtlimits::RoadMarkWanted);
    if (m_number == 0 || now - m_publishedAt >= interval) Publish(QByteArray(), m_hasMore, now);
}

}  // namespace vt
