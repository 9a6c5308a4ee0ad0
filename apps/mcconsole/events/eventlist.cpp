// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventlist.h>

#include <algorithm>
#include <iterator>
#include <utility>

EventList::Line EventList::ToLine(Event event) {
    QString text = event.Translated();
    QString who = TranslatedWho(event.who);
    return {std::move(event), std::move(text), std::move(who)};
}

int EventList::Append(std::vector<Event> events) {
    for (Event& event : events)
        m_lines.push_back(ToLine(std::move(event)));
    const int gone = std::max(0, Count() - MaxKept);
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

// The server tells a peer as one text, "mcconsole on tower1 (10.0.0.5:50000)".
QString EventList::TranslatedWho(const QString& who) {
    const int address = who.lastIndexOf(QLatin1String(" ("));
    if (address < 0 || !who.endsWith(QLatin1Char(')'))) return who;
    const QString where = who.mid(address + 2, who.size() - address - 3);
    const QString name = who.left(address);
    const QLatin1String on(" on ");
    const QLatin1String nobody("a client");
    const int machine = name.indexOf(on);
    const QString application = machine < 0 ? name : name.left(machine);
    const QString host = machine < 0 ? QString() : name.mid(machine + on.size());
    if (application == nobody)
        return (host.isEmpty() ? CodedText(ECode::NamelessPeer, {where})
                               : CodedText(ECode::NamelessPeerOnMachine, {host, where}))
            .Translated();
    return host.isEmpty() ? who : CodedText(ECode::PeerOnMachine, {application, host, where}).Translated();
}
