// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>

/// Time that stands still until it is told to pass. Turns happen when asked to.
class ManualClock {
  public:
    using Time = std::chrono::microseconds;

    Time Now() const { return m_now; }
    void Pass(Time time) { m_now += time; }
    /// Makes each look at the clock take so long: for what runs out of time.
    void SetCost(Time cost) { m_cost = cost; }
    Time Look() { return m_now += m_cost; }

  private:
    Time m_now = std::chrono::seconds(1);
    Time m_cost{};
};

class ManualLoop final : public vt::IEventLoop {
  public:
    explicit ManualLoop(ManualClock& clock) : m_clock(clock) {}

    void SetTaker(vt::ITurnTaker* taker) override { m_taker = taker; }
    ManualClock::Time Now() const override { return m_clock.Look(); }
    void RequestTurn() override { m_isRequested = true; }
    void SetDeadline(std::optional<std::chrono::milliseconds> delay) override {
        m_deadline.reset();
        if (delay) m_deadline = m_clock.Now() + *delay;
    }
    double Random() override { return 1.0; }

    /// What is due by now. True if there was something.
    bool Run() {
        bool hasRun = false;
        if (m_isRequested && m_taker != nullptr) {
            m_isRequested = false;
            hasRun = true;
            m_taker->OnTurn();
        }
        if (m_deadline && *m_deadline <= m_clock.Now() && m_taker != nullptr) {
            m_deadline.reset();
            hasRun = true;
            m_taker->OnDeadline();
        }
        return hasRun;
    }

  private:
    ManualClock& m_clock;
    vt::ITurnTaker* m_taker = nullptr;
    bool m_isRequested = false;
    std::optional<ManualClock::Time> m_deadline;
};
