// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <algorithm>
#include <map>

namespace vt {

/// What the sessions of a server make it hold: what has come and cannot be handled yet, what waits to be
/// sent, and what they asked for. Counted by session, by user, by host and in all. Main thread.
class SessionBudget {
  public:
    /// The sessions of one user, or of one host.
    struct Account {
        int sessions = 0;
        qint64 held = 0;  ///< bytes
    };
    /// What one session takes.
    struct Entry {
        qint64 held = 0;  ///< bytes
        std::map<QString, Account>::iterator user, host;
        bool hasUser = false;
        bool hasHost = false;
    };

    /// \a memory: bytes in all.
    explicit SessionBudget(qint64 memory) : m_memory(memory) {}

    /// Counts \a entry for \a user and \a host too, unless they are empty.
    void Join(Entry* entry, const QString& user, const QString& host);
    void Leave(Entry* entry);
    /// From now on the session of \a entry holds \a bytes. True if something is over its bound.
    bool Charge(Entry* entry, qint64 bytes) {
        const qint64 more = bytes - entry->held;
        entry->held = bytes;
        m_held += more;
        if (more < 0) m_freed -= more;
        if (entry->hasUser) entry->user->second.held += more;
        if (entry->hasHost) entry->host->second.held += more;
        return more > 0 && (IsOver() || IsOverShare(*entry));
    }

    /// How many sessions \a user has, or \a host, if those are more.
    int CountOf(const QString& user, const QString& host) const;
    static int CountOf(const Entry& entry) {
        const int user = entry.hasUser ? entry.user->second.sessions : 0;
        return entry.hasHost ? std::max(user, entry.host->second.sessions) : user;
    }

    qint64 Held() const { return m_held; }
    bool IsOver() const { return m_held > m_memory; }
    /// Whether its user, or its host, holds more than one may.
    bool IsOverShare(const Entry& entry) const { return Others(entry) > m_memory / MemoryShare; }
    /// By which those who pay first are found: what its user, or its host, holds.
    static qint64 WeightOf(const Entry& entry) { return std::max(entry.held, Others(entry)); }

    /// \a bytes that were not counted are let go of, too.
    void CountFreed(qint64 bytes) { m_freed += bytes; }
    /// Bytes that were let go of since this was asked last.
    qint64 Freed() const { return m_freed; }
    void ForgetFreed() { m_freed = 0; }

  private:
    /// One user, or one host, holds the second part of the memory at most.
    static constexpr int MemoryShare = 2;

    using Accounts = std::map<QString, Account>;
    static qint64 Others(const Entry& entry) {
        const qint64 user = entry.hasUser ? entry.user->second.held : 0;
        return entry.hasHost ? std::max(user, entry.host->second.held) : user;
    }
    static Accounts::iterator JoinOne(Accounts& accounts, const QString& name, const Entry& entry);
    static void LeaveOne(Accounts& accounts, Accounts::iterator account, const Entry& entry);

    qint64 m_memory;
    qint64 m_held = 0;
    qint64 m_freed = 0;
    Accounts m_users;
    Accounts m_hosts;
};

}  // namespace vt
