// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/momenttext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

QString momenttext::Of(const QString& utc) {
    const QDateTime moment = QDateTime::fromString(utc, Qt::ISODateWithMs).toLocalTime();
    if (!moment.isValid()) return QString();
    const QString time = moment.time().toString(QStringLiteral("HH:mm:ss"));
    if (moment.date() == QDate::currentDate()) return time;
    return QLocale().toString(moment.date(), QLocale::ShortFormat) + QLatin1Char(' ') + time;
}

QString momenttext::OfAge(qint64 ageMs) {
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 seconds = qMax<qint64>(0, ageMs) / 1000;
    if (seconds < minute) return QCoreApplication::translate("MomentText", "%1 s").arg(seconds);
    if (seconds < hour) return QCoreApplication::translate("MomentText", "%1 min").arg(seconds / minute);
    if (seconds < 2 * day) return QCoreApplication::translate("MomentText", "%1 h").arg(seconds / hour);
    return QCoreApplication::translate("MomentText", "%1 d").arg(seconds / day);
}
