// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/event.h>

#include <vector>

/// Events for tests of what shows them.
namespace eventmaker {

inline Event Make(qint64 number, const CodedText& said = ECode::ConfigSaved, const char* source = "config",
                  EEventSeverity severity = EEventSeverity::Info, const char* who = "") {
    Event event;
    event.number = number;
    event.time = QDateTime(QDate(2026, 11, 22), QTime(14, 3, 21), Qt::UTC).addSecs(number);
    event.severity = severity;
    event.source = QString::fromUtf8(source);
    event.who = QString::fromUtf8(who);
    event.said = said;
    if (said.GetCode() != ECode::Count) event.code = QLatin1String(eventcodes::Of(said.GetCode()).code);
    event.text = said.ToEnglish();
    return event;
}

inline std::vector<Event> MakeMany(qint64 first, qint64 last) {
    std::vector<Event> events;
    for (qint64 number = first; number <= last; ++number)
        events.push_back(Make(number));
    return events;
}

}  // namespace eventmaker
