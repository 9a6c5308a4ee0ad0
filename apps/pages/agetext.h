// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <chrono>

/// Times as people read them at a glance.
namespace agetext {

/// How long something takes or lasts, roughly: "12 s", "3 min", "2 h", "4 d"; "0 s" for what is yet to
/// come, where clocks differ.
QString Of(std::chrono::milliseconds age);
/// \a moment in local time: "14:03:21", with the date if that is not the one of \a now. Empty if it is not
/// valid.
QString Moment(const QDateTime& moment, const QDateTime& now = QDateTime::currentDateTime());
/// The same of what the server writes as \a utc (ISO 8601, with "Z").
QString Moment(const QString& utc, const QDateTime& now = QDateTime::currentDateTime());

}  // namespace agetext
