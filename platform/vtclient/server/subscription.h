// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/server/treewatcher.h>

#include <QtCore/QString>

#include <deque>
#include <set>
#include <unordered_map>

namespace vt {

class ServerSession;

/// What one client has been told of one watched subtree, and what it still has to be told.
///
/// A client is in step when it has been told everything: then it gets the parts that the watcher writes once
/// for all in step. Otherwise its changes wait here: of each value that something changed, and all
/// occurrences in order. What it lacks of the structure is the numbers from its cursor on.
class Subscription {
  public:
    /// \a isLook: the client uses nothing of what it asks for.
    Subscription(ServerSession& session, quint32 number, QString path, bool isLook);
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    ServerSession& Session() const { return m_session; }
    quint32 Number() const { return m_number; }
    const QString& Path() const { return m_path; }  ///< normalised
    bool IsLook() const { return m_isLook; }
    TreeWatcher* Watcher() const { return m_watcher; }
    /// What the client wanted to be created within this, up to a limit of paths; beyond it they are
    /// forgotten.
    const std::set<QString>& Wanted() const { return m_wanted; }
    /// Adds \a path to that. False if it is there already.
    bool Want(const QString& path);
    quint64 NextSequence() { return ++m_sequence; }

    /// Starts from nothing on \a watcher; null: the item is absent. It is on no road then.
    void Restart(TreeWatcher* watcher);

    bool IsLive() const { return m_isLive; }  ///< the first look is complete
    void SetLive() { m_isLive = true; }
    bool IsInStep() const { return road.isTaken || (m_isLive && IsUpToDate()); }
    /// Everything that the watcher has announced was told.
    bool IsUpToDate() const { return m_waiting.empty() && m_cursor == m_watcher->EndOfNumbers(); }
    /// What is new is not complete yet.
    bool LacksStructure() const {
        return (!road.isTaken && m_cursor != m_watcher->EndOfNumbers()) || !m_watcher->IsTakenIn();
    }

    /// How it stands with the shared road of the subtree.
    struct Road {
        bool isWanted = false;  ///< the client can follow one
        bool isHeard = false;   ///< something has come to it by this one
        bool isTaken = false;   ///< it is told of nothing else any more
        quint64 told = 0;       ///< the number that the client was told last
    };
    Road road;

    void WentWith(const TreeWatcher::Part& part) { m_cursor = part.endNew; }
    void Absorb(const TreeWatcher::Part& part);
    /// Writes what the client lacks, until about vtlimits::BatchTarget bytes or \a isTimeUp.
    void WriteBacklog(ChangeWriter* writer, const std::function<bool()>& isTimeUp);
    std::size_t QueuedBytes() const { return m_queuedBytes; }
    /// What it costs in all, about.
    std::size_t HeldBytes() const;
    /// Drops what waits: the client will not be told any more.
    void Forget();

  private:
    struct Waiting {
        EChange change;
        bool isOccurrence;
        bool isNew;  ///< the client had not been told of the item when this happened
        quint32 id;
        QByteArray bytes;  ///< of an occurrence
    };

    void AbsorbOccurrence(const TreeWatcher::Entry& entry, const char* bytes);
    void AbsorbChange(const TreeWatcher::Entry& entry);
    void WriteNextNew(ChangeWriter* writer);
    void WriteFront(ChangeWriter* writer);
    void Compact();

    ServerSession& m_session;
    quint32 m_number;
    QString m_path;
    bool m_isLook;
    std::set<QString> m_wanted;
    std::size_t m_wantedBytes = 0;
    TreeWatcher* m_watcher = nullptr;
    quint32 m_cursor = 0;
    quint64 m_sequence = 0;
    bool m_isLive = false;
    std::deque<Waiting> m_waiting;
    std::unordered_map<quint32, unsigned> m_dirty;  ///< what waits for an item, as bits
    std::size_t m_queuedBytes = 0;
    std::size_t m_compactAt = 0;
};

}  // namespace vt
