// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/socketcalls.h>
#include <platform/vtclient/wire/bytebuffer.h>

#include <QtCore/QByteArray>

#include <array>
#include <string_view>
#include <vector>

class QIODevice;

namespace vt {

/// What waits to be sent over one connection: bytes of its own, and between them bytes that others send as
/// well, which it does not copy.
class SendQueue {
  public:
    /// Fewer shared bytes are copied: that costs less than to send them as a piece of their own.
    static constexpr int MinShared = 1024;

    int Size() const { return m_own.Size() + m_sharedSize - m_sent; }
    bool IsEmpty() const { return Size() == 0; }

    void Append(std::string_view bytes) { m_own.Append(bytes.data(), static_cast<int>(bytes.size())); }
    /// Appends \a number, the first byte of which counts most, and \a bytes.
    void Append(quint32 number, std::string_view bytes);
    void AppendShared(const QByteArray& bytes);

    /// Sends what the system takes at once over a connected socket, and forgets it.
    void SendAtOnce(qintptr descriptor);
    /// Gives back its room, if nothing waits.
    void GiveBackIfEmpty() { m_own.GiveBackIfEmpty(); }
    /// Writes everything that is left into \a device, and forgets it.
    void GiveTo(QIODevice& device);

  private:
    struct Shared {
        int at;  ///< behind so many of its own bytes
        QByteArray bytes;
    };
    using Pieces = std::array<SendPiece, MaxSendPieces>;

    int Gather(Pieces* pieces, qint64* size) const;
    void Forget(qint64 size);

    ByteBuffer m_own;
    std::vector<Shared> m_shared;
    int m_sharedSize = 0;
    int m_sent = 0;  ///< bytes from the front that have left
};

}  // namespace vt
