// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/outputstream.h>

#include <QtCore/QtEndian>

#include <array>

namespace nats {

void OutputStream::Append(std::string_view head, std::string_view middle, std::string_view tail) {
    if (IsEmpty()) Clear();
    // Who always has something more to send never comes to an empty one.
    if (m_taken > KeptRoom && m_taken > Size()) {
        m_bytes.erase(0, m_taken);
        m_taken = 0;
    }
    std::array<char, sizeof(quint32)> length{};
    qToBigEndian(static_cast<quint32>(head.size() + middle.size() + tail.size()), length.data());
    m_bytes.append(length.data(), length.size());
    m_bytes.append(head);
    m_bytes.append(middle);
    m_bytes.append(tail);
}

std::string_view OutputStream::Take(std::size_t size) {
    const std::string_view taken(m_bytes.data() + m_taken, size);
    m_taken += size;
    return taken;
}

void OutputStream::Clear() {
    m_taken = 0;
    if (m_bytes.capacity() > KeptRoom)
        std::string().swap(m_bytes);
    else
        m_bytes.clear();
}

void OutputStream::GiveBackRoom() {
    if (IsEmpty()) {
        m_taken = 0;
        std::string().swap(m_bytes);
    }
}

}  // namespace nats
