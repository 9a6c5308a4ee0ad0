// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ieventloop.h>

/// Time that stands still until it is told to pass. Turns happen when asked to.
class ManualClock {
  public:
    qint64 Now() const { return m_now; }
    void Pass(int milliseconds) { m_now += qint64{milliseconds} * 1000; }
    /// Makes each look at the clock take so long, in microseconds: for what runs out of time.
    void SetCost(qint64 cost) { m_cost = cost; }
    qint64 Look() { return m_now += m_cost; }

  private:
    qint64 m_now = 1000000;
    qint64 m_cost = 0;
};

class ManualLoop final : public vt::IEventLoop {
  public:
    explicit ManualLoop(ManualClock& clock) : m_clock(clock) {}

    void SetTaker(vt::ITurnTaker* taker) override { m_taker = taker; }
    qint64 Now() const override { return m_clock.Look(); }
    void RequestTurn() override { m_isRequested = true; }
    void SetDeadline(int milliseconds) override {
        m_deadline = milliseconds < 0 ? -1 : m_clock.Now() + qint64{milliseconds} * 1000;
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
        if (m_deadline >= 0 && m_deadline <= m_clock.Now() && m_taker != nullptr) {
            m_deadline = -1;
            hasRun = true;
            m_taker->OnDeadline();
        }
        return hasRun;
    }

  private:
    ManualClock& m_clock;
    vt::ITurnTaker* m_taker = nullptr;
    bool m_isRequested = false;
    qint64 m_deadline = -1;
};
