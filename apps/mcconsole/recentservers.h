// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

class ICfg;

/// The servers that the console was connected to, and where NATS was, the last one first, as kept in the
/// configuration. Tokens are not kept: they are secrets. Main thread.
class RecentServers {
  public:
    struct Entry {
        ServerAddress server;
        QString user;
        QString caFile;
    };

    static constexpr int MaxEntries = 10;

    /// What cannot be right in the configuration is left out.
    void Read(ICfg& cfg);
    void Write(ICfg& cfg) const;

    /// Puts \a entry first, once.
    void Add(const Entry& entry);
    const std::vector<Entry>& GetEntries() const { return m_entries; }

    /// Puts \a place, an address of NATS, first, once. False if it stood there already.
    bool AddNats(const QString& place);
    /// Takes where NATS was from \a other. False if that is the same.
    bool TakeNats(const RecentServers& other);
    const QStringList& GetNats() const { return m_nats; }

  private:
    std::vector<Entry> m_entries;
    QStringList m_nats;
};
