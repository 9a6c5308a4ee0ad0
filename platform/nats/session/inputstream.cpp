// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/inputstream.h>

#include <QtCore/QtEndian>

namespace nats {

bool InputStream::GetLength(quint32* length) const {
    if (Size() < LengthSize) return false;
    *length = qFromBigEndian<quint32>(m_bytes.data() + m_taken);
    return true;
}

bool InputStream::HasFrame() const {
    quint32 length = 0;
    return GetLength(&length) && Size() - LengthSize >= length;
}

std::string_view InputStream::TakeFrame() {
    quint32 length = 0;
    GetLength(&length);
    const std::string_view frame(m_bytes.data() + m_taken + LengthSize, length);
    m_taken += LengthSize + length;
    return frame;
}

// A string that is assigned an empty one keeps its room.
void InputStream::Tidy() {
    m_bytes.erase(0, m_taken);
    m_taken = 0;
    if (m_bytes.empty() && m_bytes.capacity() > KeptRoom) std::string().swap(m_bytes);
}

void InputStream::GiveBackRoom() {
    if (m_bytes.empty()) std::string().swap(m_bytes);
}

}  // namespace nats
