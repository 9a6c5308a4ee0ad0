// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/session/packet.h>

#include <string>
#include <string_view>

namespace nats {

/// Frames that wait to be sent, cut into packets. The head of a packet is written where bytes stood that have
/// left, so that each packet lies in one piece without being copied.
class OutputStream {
  public:
    static constexpr std::size_t KeptRoom = 64 * 1024;

    OutputStream() { Clear(); }

    /// Appends one frame, in parts.
    void Append(std::string_view head, std::string_view middle, std::string_view tail);
    std::size_t Size() const { return m_bytes.size() - m_sent; }
    bool IsEmpty() const { return Size() == 0; }
    /// The next \a size bytes as the body of \a packet, in one piece with its head. Valid until the next
    /// call.
    std::string_view TakePacket(const Packet& packet, std::size_t size);
    void Clear();
    void GiveBackRoom();

  private:
    void ForgetSent();

    std::string m_bytes;     ///< with room for a head in front
    std::size_t m_sent = 0;  ///< how many of them
};

}  // namespace nats
