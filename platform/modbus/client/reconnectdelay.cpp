// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/reconnectdelay.h>

#include <algorithm>

void ReconnectDelay::OnError(Time now) {
    m_delay = m_delay == Time::zero() ? First : std::min(2 * m_delay, Last);
    m_since = now;
}
