// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/pace.h>

#include <utility>

Pace::Pace(std::chrono::milliseconds interval, std::function<void()> act) : m_act(std::move(act)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_isDue) Act();
    });
}

void Pace::Ask() {
    m_isDue = true;
    if (!m_timer.isActive()) Act();
}

void Pace::Act() {
    m_isDue = false;
    m_timer.start();
    m_act();
}
