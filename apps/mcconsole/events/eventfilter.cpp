// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventfilter.h>

bool EventFilter::Takes(const EventList::Line& line) const {
    const QString& itsSource = line.event.source;
    if (line.event.severity < least) return false;
    if (!source.isEmpty() && itsSource != source && !itsSource.startsWith(source + QLatin1Char(' ')))
        return false;
    if (search.isEmpty()) return true;
    return line.text.contains(search, Qt::CaseInsensitive) ||
           line.who.contains(search, Qt::CaseInsensitive) || itsSource.contains(search, Qt::CaseInsensitive);
}
