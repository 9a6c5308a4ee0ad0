// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/events/eventjournal.h>

#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

EventJournal::EventJournal(IClock& clock)
    : m_clock(clock),
      m_pEvent(*this, values::ProvideValue<values::Value<QString>>(Path(), QString(), true, nullptr)) {
    if (m_pEvent) m_pEvent->SetDelivery(values::EDelivery::EveryChange);
}

QString EventJournal::Path() {
    return mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::Event);
}

void EventJournal::Add(Event event) {
    event.number = ++m_lastNumber;
    event.time = m_clock.Utc();
    event.text.truncate(MaxTextLength);
    QString json = event.ToJson();
    if (json.size() > MaxJsonLength) {
        event.said = CodedText();
        json = event.ToJson();
    }
    m_entries.push_back({event.number, json});
    if (m_entries.size() > MaxKept) m_entries.pop_front();
    if (m_pEvent) m_pEvent->SetValue(json, nullptr);
}

void EventJournal::Update(Observable* source, TChangeCode code) {
    m_pEvent.EndIfGoingAway(source, code);
}
