// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/events/eventmodel.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The events that a table shows, for a file. GUI thread.
namespace eventexport {

enum class EFormat { Csv, Text };

/// All rows of \a model, the oldest first, UTF-8 with CRLF as a table with its titles (fields with commas,
/// quotes and line ends are quoted), or as lines. \a server and the time stand above lines.
QByteArray ToBytes(const EventModel& model, EFormat format, const QString& server, const QDateTime& now);
/// "events-tower1-2026-11-22.csv": what file names cannot hold in \a server becomes "-".
QString ProposedName(const QString& server, const QDate& date, EFormat format);

}  // namespace eventexport
