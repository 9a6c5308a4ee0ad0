// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace nats {

/// Frames that wait to be sent, as bytes that are taken from the front.
class OutputStream {
  public:
    static constexpr std::size_t KeptRoom = 64 * 1024;

    /// Appends one frame, in parts.
    void Append(std::string_view head, std::string_view middle, std::string_view tail);
    std::size_t Size() const { return m_bytes.size() - m_taken; }
    bool IsEmpty() const { return Size() == 0; }
    /// The next \a size bytes. Valid until the next call.
    std::string_view Take(std::size_t size);
    void Clear();
    void GiveBackRoom();

  private:
    std::string m_bytes;
    std::size_t m_taken = 0;
};

}  // namespace nats
