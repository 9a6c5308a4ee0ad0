// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include <QtCore/QtGlobal>

namespace nats {

/// Bytes that come in packets and are taken as frames: 4 bytes of length, big endian, and as many bytes.
class InputStream {
  public:
    static constexpr std::size_t LengthSize = 4;
    static constexpr std::size_t KeptRoom = 64 * 1024;

    void Append(std::string_view bytes) { m_bytes.append(bytes); }
    /// The length of the frame that comes next, which may not be there yet. False if not even that is.
    bool GetLength(quint32* length) const;
    /// Whether the whole of that is there.
    bool HasFrame() const;
    /// What is in it; valid until the next call.
    std::string_view TakeFrame();
    std::size_t Size() const { return m_bytes.size() - m_taken; }
    std::size_t Room() const { return m_bytes.capacity(); }
    /// Forgets what was taken.
    void Tidy();
    void GiveBackRoom();

  private:
    std::string m_bytes;
    std::size_t m_taken = 0;
};

}  // namespace nats
