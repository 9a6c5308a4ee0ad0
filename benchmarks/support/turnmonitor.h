// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "stopwatch.h"

#include <QtCore/QTimer>

namespace bench {

/// The longest time for which this process's event loop served nobody else: a heartbeat of 1 ms, and what lay
/// between two beats.
class TurnMonitor {
  public:
    TurnMonitor();
    void Start();

    /// By the clock: also while others had the processor.
    double LongestSeconds() const { return m_longest; }
    /// By the processor: what this process did in one turn.
    double LongestBusySeconds() const { return m_longestBusy; }

  private:
    void Beat();

    QTimer m_heart;
    Stopwatch m_sinceBeat;
    double m_longest = 0.0;
    double m_longestBusy = 0.0;
};

}  // namespace bench
