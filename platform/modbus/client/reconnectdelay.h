// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

/// When to try again after errors: each error in a row doubles the delay. The first ones are short, since a
/// module that is lost tells nothing of its transmitters; the last ones spare it, and the operator.
class ReconnectDelay {
  public:
    using Time = std::chrono::milliseconds;

    static constexpr Time First{100};
    static constexpr Time Last{10'000};

    /// Times are of any clock that never goes back.
    bool IsOver(Time now) const { return m_delay == Time::zero() || now - m_since >= m_delay; }
    void OnError(Time now);
    void OnSuccess() { *this = ReconnectDelay(); }

  private:
    int m_failures = 0;  ///< in a row
    Time m_delay{};      ///< 0: no error
    Time m_since{};
};
