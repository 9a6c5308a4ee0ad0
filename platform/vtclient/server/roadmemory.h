// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace vt {

/// What was published last on a shared road, so that it can be published once more for those who have missed
/// it: where the bus was lost for a moment, nobody else has it. Its bytes are bounded, those of all roads
/// too.
class RoadMemory {
  public:
    /// How much all roads may keep, and do.
    struct Share {
        std::size_t limit;
        std::size_t used = 0;
    };

    /// \a share outlives this.
    RoadMemory(std::size_t limit, Share& share) : m_limit(limit), m_share(share) {}
    ~RoadMemory() { DropFirst(Count()); }
    RoadMemory(const RoadMemory&) = delete;
    RoadMemory& operator=(const RoadMemory&) = delete;

    /// \a number is one more than that of the last one.
    void Keep(quint64 number, std::string_view message);
    /// Message \a number, unless it is not kept, or was taken less than vtlimits::RoadSayAgainEvery before.
    /// Empty then; else valid until the next call.
    std::string_view Take(quint64 number, std::chrono::microseconds now);
    quint64 First() const { return m_last + 1 - Count(); }
    quint64 Last() const { return m_last; }

  private:
    struct Place {
        std::size_t at;  ///< in the bytes
        std::size_t size;
        std::chrono::microseconds takenAt;
    };

    std::size_t Count() const { return m_places.size() - m_first; }
    std::size_t Size() const { return Count() == 0 ? 0 : m_bytes.size() - m_places[m_first].at; }
    void DropFirst(std::size_t count);

    const std::size_t m_limit;
    Share& m_share;
    std::string m_bytes;
    std::vector<Place> m_places;
    std::size_t m_first = 0;  ///< of the places; those before it are dropped
    quint64 m_last = 0;       ///< number of the last message
};

}  // namespace vt
