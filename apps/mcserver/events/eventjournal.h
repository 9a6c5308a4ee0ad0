// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/event.h>
#include <apps/common/iclock.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <deque>

/// The last events of the server: tells each in the status value "Event", and keeps the last of them for
/// whoever comes later. Main thread; needs the tree.
class EventJournal : public IObserver {
  public:
    static constexpr int MaxKept = 2000;
    static constexpr int MaxTextLength =
        4096;  ///< UTF-16 code units of the English line; the rest is cut off
    static constexpr int MaxJsonLength = 16384;  ///< UTF-16 code units; of a longer one only the line is told

    struct Entry {
        qint64 number;
        QString json;
    };

    /// The clock outlives the journal.
    explicit EventJournal(IClock& clock);

    /// Gives \a event its number and its time, keeps it and tells it.
    void Add(Event event);

    /// The kept ones, the oldest first; their numbers rise by one.
    const std::deque<Entry>& GetEntries() const { return m_entries; }

    static QString Path();

    void Update(Observable* source, TChangeCode code) override;

  private:
    IClock& m_clock;
    qint64 m_lastNumber = 0;
    std::deque<Entry> m_entries;
    Observation<values::Value<QString>> m_pEvent;
};
