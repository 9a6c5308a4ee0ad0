// SPDX-License-Identifier: Apache-2.0
#include "turnmonitor.h"

#include <algorithm>

namespace bench {

TurnMonitor::TurnMonitor() {
    m_heart.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_heart, &QTimer::timeout, &m_heart, [this] { Beat(); });
}

void TurnMonitor::Start() {
    m_longest = m_longestBusy = 0.0;
    m_sinceBeat.Start();
    m_heart.start(1);
}

void TurnMonitor::Beat() {
    m_longest = std::max(m_longest, m_sinceBeat.Seconds());
    m_longestBusy = std::max(m_longestBusy, m_sinceBeat.BusySeconds());
    m_sinceBeat.Start();
}

}  // namespace bench
