// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/event.h>

#include <QtCore/QString>

#include <deque>
#include <vector>

/// The events that the console keeps, the oldest first: a ring. Each has a place, which stays its own while
/// others come at both ends. Main thread.
class EventList {
  public:
    static constexpr int MaxKept = 20000;
    /// The oldest go so many at once: each time all that is in sight is drawn anew.
    static constexpr int GoAtOnce = 100;

    /// An event as it is shown, made once: a filter looks at all of them.
    struct Line {
        Event event;
        QString text;  ///< in the language of the application
        QString who;   ///< likewise
    };

    /// Behind all others. \return how many of the oldest went for them.
    int Append(std::vector<Event> events);
    /// Before all others, as far as there is room; of those without, the newest stay.
    void Prepend(std::vector<Event> events);
    void Clear();

    /// The places that there are: from First() to End() - 1. Places before others may be negative.
    qint64 First() const { return m_first; }
    qint64 End() const { return m_first + Count(); }
    int Count() const { return static_cast<int>(m_lines.size()); }
    bool IsFull() const { return Count() >= MaxKept; }
    const Line& At(qint64 place) const { return m_lines[static_cast<std::size_t>(place - m_first)]; }

  private:
    static Line ToLine(Event event);

    std::deque<Line> m_lines;
    qint64 m_first = 0;
};
