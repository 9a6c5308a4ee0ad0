// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/iclock.h>

#include <chrono>
#include <map>
#include <utility>

/// Time that passes when a test says so. Starts at 14:03:21 on 22 November 2026, which is UTC too.
class ManualClock : public IClock {
  public:
    std::chrono::milliseconds Now() const override { return m_now; }
    QTime TimeOfDay() const override { return QTime(14, 3, 21).addMSecs(static_cast<int>(m_now.count())); }
    QDateTime Utc() const override {
        return QDateTime(QDate(2026, 11, 22), QTime(14, 3, 21), Qt::UTC).addMSecs(m_now.count());
    }
    int After(std::chrono::milliseconds delay, Action action) override {
        m_due.emplace(std::make_pair(m_now + delay, ++m_last), std::move(action));
        return m_last;
    }
    void Cancel(int number) override {
        for (auto due = m_due.begin(); due != m_due.end(); ++due) {
            if (due->first.second != number) continue;
            m_due.erase(due);
            return;
        }
    }

    /// Lets \a time pass and does what becomes due, in order.
    void Advance(std::chrono::milliseconds time) {
        const std::chrono::milliseconds end = m_now + time;
        while (!m_due.empty() && m_due.begin()->first.first <= end) {
            m_now = m_due.begin()->first.first;
            const Action action = std::move(m_due.begin()->second);
            m_due.erase(m_due.begin());
            action();
        }
        m_now = end;
    }
    /// What a turn of the event loop does.
    void Turn() { Advance(std::chrono::milliseconds::zero()); }

  private:
    std::chrono::milliseconds m_now{};
    int m_last = 0;
    std::map<std::pair<std::chrono::milliseconds, int>, Action> m_due;
};
