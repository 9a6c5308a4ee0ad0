// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/events/eventhistory.h>

#include <apps/mcserver/events/eventjournal.h>
#include <apps/pages/serverkeys.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/valueaccess.h>

#include <algorithm>

EventHistory::EventHistory(const EventJournal& journal) : m_journal(journal) {
    values::ProvideValue<values::Value<int>>(
        mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), serverkeys::EventHistory),
        EventJournal::MaxKept, true, nullptr);
}

void EventHistory::Recall(const VtHistoryQuestion& question, const Answer& answer) {
    if (question.path != EventJournal::Path())
        return answer({QStringLiteral("nothing is kept of '%1'").arg(question.path), {}, 0});
    const auto& entries = m_journal.GetEntries();
    auto entry = entries.end();
    if (question.before != 0)
        entry = std::lower_bound(entries.begin(), entries.end(), question.before,
                                 [](const EventJournal::Entry& one, quint64 number) {
                                     return static_cast<quint64>(one.number) < number;
                                 });
    VtHistoryPage page;
    int room = question.length;
    while (entry != entries.begin() && page.texts.size() < question.count) {
        room -= std::prev(entry)->json.size();
        if (room < 0) break;
        page.texts.prepend((--entry)->json);
    }
    if (entry != entries.begin() && entry != entries.end()) page.next = static_cast<quint64>(entry->number);
    answer(page);
}
