// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/roadpublisher.h>

#include <platform/vtclient/wire/messagewriter.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <string>
#include <utility>

namespace vt {

RoadPublisher::RoadPublisher(IRoads& roads, QString name, RoadMemory::Share& share)
    : m_roads(roads), m_name(std::move(name)), m_memory(vtlimits::RoadMemory, share) {
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

void RoadPublisher::Publish(const QByteArray& changes, bool hasMore, std::chrono::microseconds now) {
    const BatchMessage batch{0, m_number + 1, hasMore};
    const std::string_view head = EncodeHead(batch);
    const std::string_view body(changes.constData(), static_cast<std::size_t>(changes.size()));
    m_publishedAt = now;
    m_hasMore = hasMore;
    m_isMarked = changes.isEmpty();
    if (head.size() + body.size() + ChangesEnd.size() <= MostAtOnce())
        PublishOne({head, body, ChangesEnd}, false);
    else
        PublishInPieces({head, body, ChangesEnd});
}

/// Of a batch, what one message may have.
std::size_t RoadPublisher::MostAtOnce() const {
    constexpr int Around = RoadEnvelope::HeadSize + RoadEnvelope::TagSize;
    return static_cast<std::size_t>(std::max(m_roads.MaxMessage() - Around, Around));
}

// What the bus does not take is missed by all, and said once more when they ask.
void RoadPublisher::PublishOne(std::initializer_list<std::string_view> parts, bool isContinued) {
    const std::string_view sealed = m_seal->Seal(++m_number, parts, isContinued);
    m_memory.Keep(m_number, sealed);
    if (!sealed.empty()) m_roads.Publish(m_name, sealed);
}

// Seldom: one content is that long, or the bus takes little.
void RoadPublisher::PublishInPieces(std::initializer_list<std::string_view> parts) {
    std::string whole;
    for (const std::string_view part : parts)
        whole.append(part);
    const std::size_t most = MostAtOnce();
    for (std::string_view rest = whole; !rest.empty();) {
        const std::string_view piece = rest.substr(0, most);
        rest.remove_prefix(piece.size());
        PublishOne({piece}, !rest.empty());
    }
}

// All who follow hear it, and know what they have had; so do those who keep the road, for whoever asks later.
void RoadPublisher::SayAgain(quint64 from, quint64 to, std::chrono::microseconds now) {
    const quint64 first = std::max(from, m_memory.First());
    const quint64 last = std::min({to, m_memory.Last(), first + vtlimits::MaxRoadAheadMessages});
    std::size_t bytes = 0;
    for (quint64 number = first; number <= last && bytes <= MaxRoadMessage; ++number) {
        const std::string_view message = m_memory.Take(number, now);
        if (message.empty()) continue;
        bytes += message.size();
        if (!m_roads.Publish(m_name, message)) return;
    }
}

void RoadPublisher::MarkIfDue(std::chrono::microseconds now, std::chrono::milliseconds interval,
                              bool isWanted) {
    if (!m_isMarked) interval = std::min(interval, vtlimits::RoadMarkAfter);
    if (isWanted) interval = std::min(interval, vtlimits::RoadMarkWanted);
    if (m_number == 0 || now - m_publishedAt >= interval) Publish(QByteArray(), m_hasMore, now);
}

}  // namespace vt
