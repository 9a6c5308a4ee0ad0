// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventlist.h>

#include <apps/common/whotext.h>

#include <iterator>
#include <utility>

EventList::Line EventList::ToLine(Event event) {
    QString text = event.Translated();
    QString who = whotext::Translated(event.who);
    return {std::move(event), std::move(text), std::move(who)};
}

int EventList::Append(std::vector<Event> events) {
    for (Event& event : events)
        m_lines.push_back(ToLine(std::move(event)));
    const int spare = Count() - MaxKept;
    const int gone = spare >= GoAtOnce ? spare : 0;
    m_lines.erase(m_lines.begin(), std::next(m_lines.begin(), gone));
    m_first += gone;
    return gone;
}

void EventList::Prepend(std::vector<Event> events) {
    for (auto event = events.rbegin(); event != events.rend() && !IsFull(); ++event) {
        m_lines.push_front(ToLine(std::move(*event)));
        --m_first;
    }
}

void EventList::Clear() {
    m_first = End();
    m_lines.clear();
}
