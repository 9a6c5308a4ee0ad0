// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>

namespace vt {

/// What is done about something that is missing on a shared road, and when: it is waited for, since it may
/// have come another way; fetched from whoever keeps the road; the server is asked to say it once more; all
/// that several times, since the way to either may be lost for a moment; and given up.
class RoadGap {
  public:
    using Time = std::chrono::microseconds;
    enum class EStep { Nothing, Fetch, AskServer, GiveUp };

    bool IsOpen() const { return m_state != EState::Closed; }
    /// Something (else) is missing.
    void Open(Time now);
    /// Nothing is missing.
    void Close() { m_state = EState::Closed; }
    /// When OnDeadline() is due.
    std::optional<Time> Deadline() const;
    EStep OnDeadline(Time now);
    /// The fetch is over, and it is still missing.
    EStep OnFetched(Time now);

  private:
    enum class EState { Closed, Waiting, Fetching };

    EState m_state = EState::Closed;
    Time m_deadline{};
    int m_fetches = 0;
};

}  // namespace vt
