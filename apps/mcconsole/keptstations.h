// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/recentservers.h>

#include <vector>

/// The stations that the console had open, in the order of their tabs, as kept in the configuration for its
/// next start. Tokens are not kept: they are secrets. Main thread.
struct KeptStations {
    static constexpr int MaxStations = 16;  ///< in a window: more are not told apart

    std::vector<RecentServers::Entry> entries;
    int front = 0;

    /// What cannot be right in the configuration is left out.
    void Read(ICfg& cfg);
    void Write(ICfg& cfg) const;
};
