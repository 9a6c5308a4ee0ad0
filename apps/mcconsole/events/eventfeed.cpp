// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventfeed.h>

#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/value.h>
#include <platform/vtclient/ivtclient.h>

#include <QtCore/QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

template <class V>
bool IsOfType(const values::ValueBase& value) {
    return dynamic_cast<const V*>(&value) != nullptr;
}

std::vector<Event> EventsOf(const QStringList& texts) {
    std::vector<Event> events;
    for (const QString& text : texts)
        if (std::optional<Event> event = Event::FromJson(text)) events.push_back(std::move(*event));
    return events;
}

}  // namespace

EventFeed::EventFeed(std::function<IVtClient*()> client, QObject* parent)
    : QObject(parent),
      m_client(std::move(client)),
      m_event(*this, IsOfType<values::Value<QString>>),
      m_offer(*this, IsOfType<values::Value<int>>),
      m_eventPath(mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::Event)),
      m_pace(BatchTime, [this] { TellBatch(); }) {}

void EventFeed::Bind(const QString& path) {
    TellBatch();
    m_event.SetPath(path.isEmpty() ? QString() : mcskeys::Join(path, serverkeys::Event));
    m_offer.SetPath(path.isEmpty() ? QString() : mcskeys::Join(path, serverkeys::EventHistory));
    Begin();
}

bool EventFeed::IsOffered() const {
    return m_event.GetValue() != nullptr;
}

void EventFeed::OnBindingChanged(PathBinding& binding, TChangeCode code) {
    if (&binding == &m_event && code == changecode::ContentChanged) return Take();
    if (code == changecode::ContentChanged) return;
    Begin();
    Q_EMIT StateChanged();
}

// The last content of a connection that was lost was told.
void EventFeed::Take() {
    if (m_event.GetState() != EBindingState::Live) return;
    m_batch << static_cast<values::Value<QString>*>(m_event.GetValue())->GetValue();
    m_pace.Ask();
}

quint64 EventFeed::EpochOfNow() const {
    const IVtClient* const client = m_client();
    return client != nullptr ? client->GetServerEpoch() : 0;
}

/// Once per connection, when the server's status is there.
void EventFeed::Begin() {
    const bool isThere = m_event.GetState() == EBindingState::Live &&
                         m_offer.GetState() == EBindingState::Live && EpochOfNow() != 0;
    if (!isThere) {
        ++m_run;
        m_isBegun = m_isFirst = m_isAsking = false;
        return;
    }
    if (std::exchange(m_isBegun, true)) return;
    NoteEpoch();
    m_isFirst = true;
    m_before.clear();
    Ask(0, &EventFeed::OnFirst);
}

/// The numbers of another start of a server say nothing of those before.
void EventFeed::NoteEpoch() {
    const quint64 epoch = EpochOfNow();
    if (epoch == 0 || epoch == m_epoch) return;
    m_epoch = epoch;
    m_last = 0;
    m_older = 0;
}

void EventFeed::Ask(quint64 before, void (EventFeed::*answered)(const VtHistoryPage&)) {
    IVtClient* const client = m_client();
    const auto answer = [self = QPointer<EventFeed>(this), run = m_run, answered](const VtHistoryPage& page) {
        if (self == nullptr || self->m_run != run) return;
        self->m_isAsking = false;
        (self->*answered)(page);
        if (self != nullptr) Q_EMIT self->StateChanged();
    };
    m_isAsking = client != nullptr && client->Recall(m_eventPath, before, PageCount, answer);
    if (!m_isAsking) m_isFirst = false;
}

void EventFeed::OnFirst(const VtHistoryPage& page) {
    std::vector<Event> found = EventsOf(page.texts);
    const bool reachesTold = !found.empty() && found.front().number <= m_last + 1;
    found.erase(found.begin(), std::find_if(found.begin(), found.end(),
                                            [this](const Event& event) { return event.number > m_last; }));
    m_before.insert(m_before.begin(), std::make_move_iterator(found.begin()),
                    std::make_move_iterator(found.end()));
    const bool isWhole = page.next == 0 || (m_last != 0 && reachesTold);
    const int wanted = m_last == 0 ? FirstCount : MissedCount;
    if (!isWhole && static_cast<int>(m_before.size()) < wanted) return Ask(page.next, &EventFeed::OnFirst);
    m_isFirst = false;
    // Where something is missing between what was told and this, older ones find no place before this.
    if (!isWhole && m_hasTold) Q_EMIT Restarted();
    if (m_last == 0 || !isWhole) m_older = page.next;
    if (isWhole) MarkMissing();
    Tell(std::exchange(m_before, {}));
    TellBatch();
}

// Between the last one that was told and those that were found.
void EventFeed::MarkMissing() {
    if (m_last == 0 || m_before.empty() || m_before.front().number == m_last + 1) return;
    Event event;
    event.number = m_before.front().number - 1;
    event.time = m_before.front().time;
    event.severity = EEventSeverity::Warning;
    event.source = QStringLiteral("server");
    const qint64 missing = m_before.front().number - m_last - 1;
    event.text = missing == 1
                     ? tr("One event is missing here: the server does not keep so many")
                     : tr("%1 events are missing here: the server does not keep so many").arg(missing);
    m_before.insert(m_before.begin(), event);
}

void EventFeed::Tell(const std::vector<Event>& events) {
    if (events.empty()) return;
    m_last = events.back().number;
    m_hasTold = true;
    Q_EMIT Came(events);
}

void EventFeed::TellBatch() {
    // What was missed comes before it.
    if (m_isFirst ||
        (!m_isBegun && m_offer.GetValue() != nullptr && m_event.GetState() == EBindingState::Live))
        return;
    NoteEpoch();
    std::vector<Event> events;
    qint64 last = m_last;
    for (Event& event : EventsOf(std::exchange(m_batch, {}))) {
        if (event.number <= last) continue;
        last = event.number;
        events.push_back(std::move(event));
    }
    Tell(events);
}

void EventFeed::AskForOlder() {
    if (HasOlder()) Ask(m_older, &EventFeed::OnOlder);
    Q_EMIT StateChanged();
}

void EventFeed::OnOlder(const VtHistoryPage& page) {
    if (!page.refusal.isEmpty()) return;
    m_older = page.next;
    Q_EMIT OlderCame(EventsOf(page.texts));
}

void EventFeed::Forget() {
    ++m_run;
    m_isBegun = m_isFirst = m_isAsking = m_hasTold = false;
    m_epoch = m_older = 0;
    m_last = 0;
    m_batch.clear();
}
