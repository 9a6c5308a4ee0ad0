// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/qglobal.h>

namespace vt {

/// Has its turn when it asked for one.
class MCS_CONNECTION_EXPORT ITurnTaker {
  public:
    virtual ~ITurnTaker();
    virtual void OnTurn() = 0;
    virtual void OnDeadline() = 0;
};

/// Time and turns, as the protocol needs them, so that tests can have their own. Main thread.
class MCS_CONNECTION_EXPORT IEventLoop {
  public:
    virtual ~IEventLoop();
    virtual void SetTaker(ITurnTaker* taker) = 0;
    /// Microseconds, monotonic.
    virtual qint64 Now() const = 0;
    /// Calls OnTurn() once from the event loop, as soon as it comes round.
    virtual void RequestTurn() = 0;
    /// Calls OnDeadline() in \a milliseconds, replacing the deadline before; negative for none.
    virtual void SetDeadline(int milliseconds) = 0;
    /// A random number in [0, 1).
    virtual double Random() = 0;
};

/// A share of the event loop's time: when it is up, others have their turn.
class TurnBudget {
  public:
    TurnBudget(const IEventLoop& loop, qint64 microseconds)
        : m_loop(loop), m_end(loop.Now() + microseconds) {}
    bool IsUp() const { return m_loop.Now() >= m_end; }

  private:
    const IEventLoop& m_loop;
    qint64 m_end;
};

}  // namespace vt
