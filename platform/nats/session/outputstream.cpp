// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/outputstream.h>

#include <QtCore/QtEndian>

#include <array>

namespace nats {

void OutputStream::Append(std::string_view head, std::string_view middle, std::string_view tail) {
    if (IsEmpty()) Clear();
    if (m_sent > KeptRoom && m_sent > Size()) ForgetSent();
    std::array<char, sizeof(quint32)> length{};
    qToBigEndian(static_cast<quint32>(head.size() + middle.size() + tail.size()), length.data());
    m_bytes.append(length.data(), length.size());
    m_bytes.append(head);
    m_bytes.append(middle);
    m_bytes.append(tail);
}

std::string_view OutputStream::TakePacket(const Packet& packet, std::size_t size) {
    char* const head = m_bytes.data() + m_sent - Packet::HeadSize;
    packet.WriteHead(head);
    m_sent += size;
    return {head, Packet::HeadSize + size};
}

// Who always has something more to send never comes to an empty one.
void OutputStream::ForgetSent() {
    m_bytes.erase(0, m_sent - Packet::HeadSize);
    m_sent = Packet::HeadSize;
}

void OutputStream::Clear() {
    if (m_bytes.capacity() > KeptRoom) m_bytes = std::string();
    m_bytes.assign(Packet::HeadSize, '\0');
    m_sent = Packet::HeadSize;
}

void OutputStream::GiveBackRoom() {
    if (!IsEmpty()) return;
    m_bytes = std::string();
    Clear();
}

}  // namespace nats
