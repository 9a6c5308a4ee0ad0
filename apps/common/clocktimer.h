// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>

#include <chrono>
#include <utility>

/// One thing that is to be done later, and is not done if its owner goes first.
class ClockTimer {
  public:
    explicit ClockTimer(IClock& clock) : m_clock(clock) {}
    ~ClockTimer() { Stop(); }
    ClockTimer(const ClockTimer&) = delete;
    ClockTimer& operator=(const ClockTimer&) = delete;

    /// In place of what it was to do before.
    void Start(std::chrono::milliseconds delay, IClock::Action action) {
        Stop();
        m_number = m_clock.After(delay, [this, run = std::move(action)] {
            m_number = 0;
            run();
        });
    }
    void Stop() {
        if (m_number != 0) m_clock.Cancel(m_number);
        m_number = 0;
    }
    bool IsRunning() const { return m_number != 0; }

  private:
    IClock& m_clock;
    int m_number = 0;
};
