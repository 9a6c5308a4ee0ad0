// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scenario.h"

namespace bench {

/// How many changes a contestant is given, so that each takes about a second.
struct StreamSize {
    const char* road;
    int warmUp;
    int changes;                 ///< after the warm-up; both in multiples of 5,000
    int farthestAhead = 100000;  ///< so many changes at most, of the slowest client
    int reportEvery = 5000;      ///< changes: how far a client has come
    int restMilliseconds =
        0;  ///< before it begins: what the server does in rest does not count as of changes
};

/// 1,000 values changed in turn and followed by \a clients in \a processes. Adds the deliveries per second
/// ("rate"), and the CPU seconds per million deliveries of the server ("servercpu") and of the clients
/// ("clientcpu"), and of the server per million changes until the first client has them all ("changecpu"),
/// under "stream<clients>/<road>/". With one client each side has a core to itself.
void PlayStream(const Stage& stage, const StreamSize& size, int clients, int processes);

/// The key of one of these figures.
QString StreamKey(int clients, const char* road, const char* figure);

}  // namespace bench
