// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// Times of the server as people read them.
namespace momenttext {

/// What the server writes as \a utc, in local time, with the date if that is another day; empty for none.
QString Of(const QString& utc);
/// "3 s", "5 min", "2 h", "4 d".
QString OfAge(qint64 ageMs);

}  // namespace momenttext
