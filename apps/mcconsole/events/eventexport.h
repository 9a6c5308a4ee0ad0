// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventmodel.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Events as they stand in a file. GUI thread.
namespace eventexport {

enum class EFormat { Csv, Text };

/// What stands above the events: the titles of a table, or \a server and the time above lines. UTF-8.
QByteArray Head(const EventModel& model, EFormat format, const QString& server, const QDateTime& now);
/// One event: of a table with CRLF (fields with commas, quotes and line ends are quoted), or as a line.
QByteArray ToBytes(const EventList::Line& event, EFormat format);
/// "events-tower1-2026-11-22.csv": what file names cannot hold in \a server becomes "-".
QString ProposedName(const QString& server, const QDate& date, EFormat format);

}  // namespace eventexport
