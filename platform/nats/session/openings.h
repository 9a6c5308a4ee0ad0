// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/session/packet.h>
#include <platform/nats/session/subjects.h>

#include <cstddef>
#include <deque>
#include <map>
#include <optional>

namespace nats {

/// Who wants to begin a session and has to wait. Those of different users take turns, so that nobody holds up
/// others by coming often; where room is short whoever has most of it gives way, and of its own the one that
/// has waited longest.
class Openings {
  public:
    struct Opening {
        SessionName name;
        Greeting greeting;
    };

    /// Beyond, some go, who come again by themselves.
    static constexpr std::size_t MaxWaiting = 4096;

    void Add(Opening opening);
    /// Whose turn it is; none if nobody waits.
    std::optional<Opening> Take();
    std::size_t Count() const { return m_count; }

  private:
    using Waiting = std::map<QByteArray, std::deque<Opening>>;  ///< by who; none is empty

    void DropOne();
    Opening TakeFrom(Waiting::iterator user);

    Waiting m_waiting;
    QByteArray m_last;  ///< who had a turn
    std::size_t m_count = 0;
};

}  // namespace nats
