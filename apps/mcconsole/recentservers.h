// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/serveraddress.h>

#include <QtCore/QString>

#include <vector>

class ICfg;

/// The servers that the console was connected to, the last one first, as kept in the configuration. Tokens
/// are not kept: they are secrets. Main thread.
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

  private:
    std::vector<Entry> m_entries;
};
