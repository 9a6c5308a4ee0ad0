// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <cstddef>
#include <cstring>

namespace vt {

/// Bytes that are appended one by one and taken away in bulk. Grows as it must. When it is emptied it keeps
/// its room for the next time, but gives back what it grew beyond KeptRoom: one large message does not cost
/// its room for ever.
class ByteBuffer {
  public:
    static constexpr int KeptRoom = 64 * 1024;
    static constexpr int FirstRoom = 1024;  ///< most messages fit

    ByteBuffer() = default;
    ~ByteBuffer();
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;

    int Size() const { return static_cast<int>(m_end - m_begin); }
    bool IsEmpty() const { return m_end == m_begin; }
    const char* Data() const { return m_begin; }
    /// How many bytes it holds without growing.
    int Room() const { return static_cast<int>(m_limit - m_begin); }

    /// Where \a size more bytes can be written; Wrote() then counts those that were. Valid until the next
    /// call.
    char* Reserve(int size) {
        if (m_limit - m_end < size) Grow(size);
        return m_end;
    }
    void Wrote(int size) { m_end += size; }
    /// The same, by where they end.
    void WroteTo(char* end) { m_end = end; }
    void Append(const char* data, int size) {
        if (size == 0) return;
        std::memcpy(Reserve(size), data, static_cast<std::size_t>(size));
        m_end += size;
    }

    /// Drops what lies beyond the first \a size bytes.
    void Truncate(int size) { m_end = m_begin + size; }
    /// Drops the first \a size bytes.
    void RemoveFront(int size);
    void Clear() {
        m_end = m_begin;
        if (Room() > KeptRoom) GiveBack();
    }
    /// Gives back its room, but for what most messages take, unless it is in use.
    void GiveBackIfEmpty() {
        if (IsEmpty() && Room() > FirstRoom) Resize(FirstRoom);
    }
    /// The bytes; the buffer is empty afterwards.
    QByteArray Take() {
        QByteArray taken(m_begin, Size());
        Clear();
        return taken;
    }
    /// The same into \a bytes, whose room is used if nobody shares it.
    void TakeInto(QByteArray* bytes) {
        bytes->resize(Size());
        if (Size() != 0) std::memcpy(bytes->data(), m_begin, static_cast<std::size_t>(Size()));
        Clear();
    }

  private:
    void Grow(int size);
    void GiveBack();
    void Resize(std::size_t room);

    char* m_begin = nullptr;
    char* m_end = nullptr;
    char* m_limit = nullptr;
};

}  // namespace vt
