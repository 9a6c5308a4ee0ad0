// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivthistory.h>

class EventJournal;

/// Gives clients the events that the journal keeps, so that they learn what happened before they came. Main
/// thread.
class EventHistory : public IVtHistory {
  public:
    /// Says in the status value "EventHistory" how many events are kept, by which clients know that they may
    /// ask. The journal outlives this.
    explicit EventHistory(const EventJournal& journal);

    void Recall(const VtHistoryQuestion& question, const Answer& answer) override;

  private:
    const EventJournal& m_journal;
};
