// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/reconnectdelay.h>

#include <algorithm>

void ReconnectDelay::OnError(qint64 now) {
    m_delay = m_delay == 0 ? FirstMs : std::min(2 * m_delay, LastMs);
    m_since = now;
}
