// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/subscription.h>

#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <utility>

namespace vt {

namespace {

unsigned BitOf(EChange change) {
    return 1U << static_cast<unsigned>(change);
}

/// Less is not worth looking through for what has become void.
constexpr std::size_t MinCompaction = 4096;

/// What an occurrence costs beyond its bytes.
constexpr std::size_t OccurrenceOverhead = 64;

/// What a path costs in a set: the node and the text.
std::size_t BytesOf(const QString& path) {
    constexpr std::size_t nodeBytes = 96;
    return nodeBytes + sizeof(QChar) * static_cast<std::size_t>(path.size());
}

}  // namespace

Subscription::Subscription(ServerSession& session, quint32 number, QString path, bool isLook)
    : m_session(session), m_number(number), m_path(std::move(path)), m_isLook(isLook) {}

bool Subscription::Want(const QString& path) {
    if (m_wanted.count(path) != 0) return false;
    if (m_wanted.size() < vtlimits::MaxCreatedPerSession) {
        m_wanted.insert(path);
        m_wantedBytes += BytesOf(path);
    }
    return true;
}

void Subscription::Restart(TreeWatcher* watcher) {
    m_watcher = watcher;
    m_cursor = 0;
    m_sequence = 0;
    m_isLive = false;
    road = Road{road.isWanted};
    m_compactAt = MinCompaction;
    Forget();
}

void Subscription::Forget() {
    std::deque<Waiting>().swap(m_waiting);
    m_dirty.clear();
    m_queuedBytes = 0;
}

std::size_t Subscription::HeldBytes() const {
    constexpr std::size_t nodeBytes = 48;  // of a hash table
    constexpr std::size_t ownBytes = 1024;
    return ownBytes + BytesOf(m_path) + m_wantedBytes + m_queuedBytes + m_waiting.size() * sizeof(Waiting) +
           m_dirty.size() * nodeBytes;
}

void Subscription::Absorb(const TreeWatcher::Part& part) {
    const char* occurrence = part.occurrences.constData();
    for (const TreeWatcher::Entry& entry : part.entries) {
        if (entry.isOccurrence) {
            AbsorbOccurrence(entry, occurrence);
            occurrence += entry.size;
        } else if (entry.id < m_cursor) {
            AbsorbChange(entry);
        }
    }
    if (m_waiting.size() > m_compactAt) Compact();
}

// Before the client has its first look there is nobody whom an occurrence could reach.
void Subscription::AbsorbOccurrence(const TreeWatcher::Entry& entry, const char* bytes) {
    const bool isNew = entry.id >= m_cursor;
    if (isNew && !m_isLive) return;
    m_waiting.push_back(
        {EChange::Changed, true, isNew, entry.id, QByteArray(bytes, static_cast<int>(entry.size))});
    m_queuedBytes += entry.size + OccurrenceOverhead;
}

void Subscription::AbsorbChange(const TreeWatcher::Entry& entry) {
    if (entry.change == EChange::Removed) {
        m_dirty.erase(entry.id);
    } else {
        unsigned& bits = m_dirty[entry.id];
        if ((bits & BitOf(entry.change)) != 0) return;
        bits |= BitOf(entry.change);
    }
    m_waiting.push_back({entry.change, false, false, entry.id, QByteArray()});
}

// Drops what was to be told of items that have gone since. What remains is bounded by the number of items.
void Subscription::Compact() {
    const auto isVoid = [this](const Waiting& waiting) {
        return !waiting.isOccurrence && waiting.change != EChange::Removed &&
               m_watcher->Find(waiting.id) == nullptr;
    };
    m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(), isVoid), m_waiting.end());
    m_compactAt = std::max(MinCompaction, 2 * m_waiting.size());
}

void Subscription::WriteNextNew(ChangeWriter* writer) {
    m_watcher->WriteAdded(m_cursor, writer);
    ++m_cursor;
}

void Subscription::WriteFront(ChangeWriter* writer) {
    // What is new goes before what happened to it: one item at a time, there may be many.
    const Waiting& front = m_waiting.front();
    if (front.isOccurrence && m_cursor <= front.id && m_watcher->Find(front.id) != nullptr)
        return WriteNextNew(writer);
    const Waiting waiting = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (!waiting.isOccurrence) {
        const auto dirty = m_dirty.find(waiting.id);
        if (dirty != m_dirty.end() && (dirty->second &= ~BitOf(waiting.change)) == 0) m_dirty.erase(dirty);
        m_watcher->WriteNow(waiting.change, waiting.id, writer);
        return;
    }
    m_queuedBytes -= static_cast<std::size_t>(waiting.bytes.size()) + OccurrenceOverhead;
    if (waiting.isNew && m_watcher->Find(waiting.id) == nullptr) return;  // the client never hears of it
    writer->AppendRaw(waiting.bytes.constData(), waiting.bytes.size());
}

void Subscription::WriteBacklog(ChangeWriter* writer, const std::function<bool()>& isTimeUp) {
    int untilCheck = vtlimits::CheckInterval;
    while (writer->Size() < vtlimits::BatchTarget) {
        if (!m_waiting.empty())
            WriteFront(writer);
        else if (m_cursor < m_watcher->EndOfNumbers())
            WriteNextNew(writer);
        else
            return;
        if (--untilCheck == 0) {
            if (isTimeUp()) return;
            untilCheck = vtlimits::CheckInterval;
        }
    }
}

}  // namespace vt
