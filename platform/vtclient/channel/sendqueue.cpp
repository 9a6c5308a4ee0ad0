// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/sendqueue.h>

#include <QtCore/QIODevice>
#include <QtCore/QtEndian>

#include <cstring>

namespace vt {

namespace {

/// Collects pieces as long as there is room, without what has been sent.
class Collector {
  public:
    Collector(SendPiece* pieces, int sent) : m_pieces(pieces), m_toSkip(sent) {}
    /// False once there is no room.
    bool Add(const char* data, int size) {
        if (m_toSkip >= size) {
            m_toSkip -= size;
            return true;
        }
        if (m_count == MaxSendPieces) return false;
        m_pieces[m_count++] = {data + m_toSkip, size - m_toSkip};
        m_size += size - m_toSkip;
        m_toSkip = 0;
        return true;
    }
    int Count() const { return m_count; }
    qint64 Size() const { return m_size; }

  private:
    SendPiece* m_pieces;
    int m_toSkip;
    int m_count = 0;
    qint64 m_size = 0;
};

}  // namespace

void SendQueue::Append(quint32 number, std::string_view bytes) {
    const int size = static_cast<int>(sizeof number + bytes.size());
    char* const at = m_own.Reserve(size);
    qToBigEndian(number, at);
    if (!bytes.empty()) std::memcpy(at + sizeof number, bytes.data(), bytes.size());
    m_own.Wrote(size);
}

void SendQueue::AppendShared(const QByteArray& bytes) {
    if (bytes.size() < MinShared) return m_own.Append(bytes.constData(), bytes.size());
    m_shared.push_back({m_own.Size(), bytes});
    m_sharedSize += bytes.size();
}

int SendQueue::Gather(Pieces* pieces, qint64* size) const {
    Collector collector(pieces->data(), m_sent);
    int at = 0;
    bool hasRoom = true;
    for (const Shared& shared : m_shared) {
        hasRoom = collector.Add(m_own.Data() + at, shared.at - at) &&
                  collector.Add(shared.bytes.constData(), shared.bytes.size());
        if (!hasRoom) break;
        at = shared.at;
    }
    if (hasRoom) collector.Add(m_own.Data() + at, m_own.Size() - at);
    *size = collector.Size();
    return collector.Count();
}

void SendQueue::Forget(qint64 size) {
    m_sent += static_cast<int>(size);
    if (!IsEmpty()) return;
    m_own.Clear();
    m_shared.clear();
    m_sharedSize = m_sent = 0;
}

void SendQueue::SendAtOnce(qintptr descriptor) {
    Pieces pieces;
    while (!IsEmpty()) {
        qint64 size = 0;
        const int count = Gather(&pieces, &size);
        const qint64 sent = vt::SendAtOnce(descriptor, pieces.data(), count);
        Forget(sent);
        if (sent < size) return;
    }
}

void SendQueue::GiveTo(QIODevice& device) {
    Pieces pieces;
    while (!IsEmpty()) {
        qint64 size = 0;
        const int count = Gather(&pieces, &size);
        for (int i = 0; i < count; ++i)
            device.write(pieces[static_cast<std::size_t>(i)].data, pieces[static_cast<std::size_t>(i)].size);
        Forget(size);
    }
}

}  // namespace vt
