// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/reconnectdelay.h>

#include <platform/app/backoff.h>

void ReconnectDelay::OnError(Time now) {
    m_delay = backoff::WaitAfter(++m_failures, First, Last);
    m_since = now;
}
