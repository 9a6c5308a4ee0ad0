// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/channel/ieventloop.h>

namespace vt {

/// Asks the event loop for a turn, once until it comes.
class TurnRequest {
  public:
    explicit TurnRequest(IEventLoop& loop) : m_loop(loop) {}

    void Make() {
        if (m_isMade) return;
        m_isMade = true;
        m_loop.RequestTurn();
    }
    /// The turn has come.
    void Take() { m_isMade = false; }
    /// None is asked for any more.
    void End() { m_isMade = true; }

  private:
    IEventLoop& m_loop;
    bool m_isMade = false;
};

}  // namespace vt
