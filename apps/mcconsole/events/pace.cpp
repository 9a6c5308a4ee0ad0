// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/pace.h>

#include <platform/app/steadyclock.h>

#include <utility>

using std::chrono::milliseconds;

Pace::Pace(milliseconds interval, std::function<void()> act)
    : m_interval(interval), m_act(std::move(act)), m_lastAct(steadyclock::Now<milliseconds>() - interval) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Pace::Act);
}

void Pace::Ask() {
    if (m_timer.isActive()) return;
    const milliseconds since = steadyclock::Now<milliseconds>() - m_lastAct;
    if (since >= m_interval)
        Act();
    else
        m_timer.start(m_interval - since);
}

void Pace::Act() {
    m_lastAct = steadyclock::Now<milliseconds>();
    m_act();
}
