// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace nats {

/// Packets that were sent, as they were sealed, until the peer is known to have them: so what NATS has lost
/// is said once more, byte by byte the same. Numbers rise by one.
class SentPackets {
  public:
    static constexpr std::size_t KeptRoom = 16 * 1024;

    static constexpr quint64 NeverConsumed = std::numeric_limits<quint64>::max();

    /// \a end is where the stream is behind it, by which it is known to have arrived; NeverConsumed if only
    /// its number tells.
    void Add(quint64 number, std::string_view packet, quint64 end);
    /// All with numbers up to this one have arrived.
    void DropUpTo(quint64 number);
    /// The stream up to there has arrived.
    void DropConsumed(quint64 consumed);
    void Clear();
    void GiveBackRoom();

    std::size_t Count() const { return m_packets.size() - m_first; }
    /// The \a index-th of those that are left. Valid until the next call.
    std::string_view Get(std::size_t index) const;
    std::size_t Room() const { return m_bytes.capacity(); }

  private:
    struct Place {
        quint64 end;
        std::size_t at;  ///< in the bytes
        std::size_t size;
    };

    void DropFirst(std::size_t count);

    std::string m_bytes;
    std::vector<Place> m_packets;
    std::size_t m_first = 0;  ///< of the packets; those before it have arrived
    quint64 m_last = 0;       ///< number of the last that was added
};

}  // namespace nats
