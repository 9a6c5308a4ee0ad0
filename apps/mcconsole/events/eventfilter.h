// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventlist.h>

/// Which events are wanted.
struct EventFilter {
    EEventSeverity least = EEventSeverity::Info;
    QString source;  ///< empty: all; "MpxORV": those of all MpxORVs
    QString search;  ///< in the text, the source and who it was, without regard to case; empty: all

    bool Takes(const EventList::Line& line) const;

    friend bool operator==(const EventFilter& a, const EventFilter& b) {
        return a.least == b.least && a.source == b.source && a.search == b.search;
    }
};
