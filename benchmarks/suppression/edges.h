// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "poller.h"
#include "simulatedmodules.h"

#include <vector>

namespace bench {

/// What a run of edges came to.
struct EdgeFigures {
    std::vector<double> latencies;  ///< seconds from writing the command to knowing, per edge
    double busyShare = 0.0;         ///< of one core
    double heapGrowth = 0.0;        ///< bytes
    QString error;                  ///< empty if all edges were seen
};

/// Keys and releases transmitters of random modules, one at a time and at random moments: the same ones for
/// the same \a seed.
EdgeFigures PlayEdges(SimulatedModules& modules, Poller& poller, int edges, unsigned seed);

}  // namespace bench
