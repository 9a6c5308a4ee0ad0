// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>

namespace vt {

/// Has its turn when it asked for one.
class ITurnTaker {
  public:
    virtual ~ITurnTaker();
    virtual void OnTurn() = 0;
    virtual void OnDeadline() = 0;
};

/// Time and turns, as the protocol needs them, so that tests can have their own. Main thread.
class IEventLoop {
  public:
    virtual ~IEventLoop();
    virtual void SetTaker(ITurnTaker* taker) = 0;
    /// The time since some moment; never goes back.
    virtual std::chrono::microseconds Now() const = 0;
    /// Calls OnTurn() once from the event loop, as soon as it comes round.
    virtual void RequestTurn() = 0;
    /// Calls OnDeadline() after \a delay, replacing the deadline before. Without a delay there is none.
    virtual void SetDeadline(std::optional<std::chrono::milliseconds> delay) = 0;
    /// A random number in [0, 1).
    virtual double Random() = 0;
};

/// A share of the event loop's time: when it is up, others have their turn.
class TurnBudget {
  public:
    TurnBudget(const IEventLoop& loop, std::chrono::microseconds start, std::chrono::microseconds time)
        : m_loop(loop), m_end(start + time) {}
    bool IsUp() const { return m_loop.Now() >= m_end; }

  private:
    const IEventLoop& m_loop;
    std::chrono::microseconds m_end;
};

}  // namespace vt
