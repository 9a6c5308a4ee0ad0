// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/bytebuffer.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace vt {

namespace {

constexpr std::size_t MostRoom = std::numeric_limits<int>::max();

}  // namespace

ByteBuffer::~ByteBuffer() {
    std::free(m_begin);
}

void ByteBuffer::RemoveFront(int size) {
    if (size == Size()) return Clear();
    if (size == 0) return;
    const int left = Size() - size;
    std::memmove(m_begin, m_begin + size, static_cast<std::size_t>(left));
    Truncate(left);
}

void ByteBuffer::Grow(int size) {
    const std::size_t needed = static_cast<std::size_t>(Size()) + static_cast<std::size_t>(size);
    if (needed > MostRoom) qBadAlloc();
    const std::size_t doubled = std::min(2 * static_cast<std::size_t>(Room()), MostRoom);
    Resize(std::max({needed, doubled, static_cast<std::size_t>(FirstRoom)}));
}

void ByteBuffer::GiveBack() {
    Resize(KeptRoom);
}

void ByteBuffer::Resize(std::size_t room) {
    const int size = Size();
    auto* const resized = static_cast<char*>(std::realloc(m_begin, room));
    if (resized == nullptr) qBadAlloc();
    m_begin = resized;
    m_end = m_begin + size;
    m_limit = m_begin + room;
}

}  // namespace vt
