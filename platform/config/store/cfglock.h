// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <cstdint>
#include <utility>

/// One process at a time: a file that the system keeps for whoever holds it, and gives free when that process
/// ends, however it ends. It says who holds it, and since when. Main thread.
class CfgLock {
  public:
    enum class EOutcome {
        Held,       ///< by this object
        Taken,      ///< by somebody else
        Impossible  ///< the file cannot be made
    };

    /// \a name is the file's. It is there while the lock is held, and after a process that was killed.
    explicit CfgLock(QString name) : m_name(std::move(name)) {}
    ~CfgLock() { Release(); }
    CfgLock(const CfgLock&) = delete;
    CfgLock& operator=(const CfgLock&) = delete;

    EOutcome Try();
    /// Tries until it is held, impossible, or \a patience is over.
    EOutcome Wait(std::chrono::milliseconds patience);
    void Release();
    bool IsHeld() const { return m_native != None; }

    /// Who holds it, for people; "another process" if that cannot be told.
    QString GetHolder() const;
    /// Why it is impossible.
    QString GetReason() const { return m_reason; }

  private:
    using Native = std::intptr_t;  // what the system calls an open file
    static constexpr Native None = -1;

    static constexpr qint64 MaxHolderBytes = 1024;
    /// What the file says while this process holds it.
    static QByteArray OwnLine();
    /// As much of the file as says who holds it; anything, also nothing, if that cannot be read.
    QByteArray ReadHolder() const;

    QString m_name;
    QString m_reason;
    Native m_native = None;
};
